#pragma once

/// @file
/// The type that has no value, and the type that has just one.

#include "Orrenby/Platform/Export.hpp"
#include <compare>
#include <cstddef>
#include <typeindex>

namespace orrenby::inline ORRENBY_ABI {

/// The type without values: what cannot happen, such as the failure of a stream that never fails.
struct Never {
    Never() = delete;
    friend bool operator==(const Never&, const Never&) = default;
};

/// The type with one value: an event that carries nothing but the fact that it happened.
struct Void {
    friend constexpr auto operator<=>(const Void&, const Void&) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::Void> {
    std::size_t operator()(const orrenby::Void&) const noexcept { return 0; }
};
