#pragma once

/// @file
/// The null marker.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Stands where a list or a dictionary holds "no value". It has one value, and prints `<null>`.
///
/// A plain value without content. Safe to use from several threads.
struct NSNull {
    static constexpr std::string_view printedTypeName = "NSNull";

    std::string description() const { return "<null>"; }
    std::string debugDescription() const { return "<null>"; }
    friend constexpr bool operator==(NSNull, NSNull) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::NSNull> {
    std::size_t operator()(orrenby::NSNull) const noexcept { return 0; }
};
