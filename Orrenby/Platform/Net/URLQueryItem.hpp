#pragma once

/// @file
/// A name, with or without a value, in the query of a URL.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// One piece of a query, between two "&": `{"page", "2"}` is "page=2", `{"sort"}` is "sort", and `{"q", ""}`
/// is "q=".
///
/// A plain value. Not synchronised.
struct URLQueryItem {
    std::string name{}; ///< Decoded, in the items that the library reads.
    /// What stands behind the first "="; nothing when there is no "=".
    std::optional<std::string> value{};

    std::string description() const { return value ? name + "=" + *value : name; }

    friend bool operator==(const URLQueryItem&, const URLQueryItem&) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::URLQueryItem> {
    std::size_t operator()(const orrenby::URLQueryItem& item) const noexcept
    {
        const auto name = std::hash<std::string>()(item.name);
        return name * 31 + (item.value ? std::hash<std::string>()(*item.value) : 1);
    }
};
