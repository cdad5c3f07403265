#pragma once

/// @file
/// Version numbers of the operating system.

#include "Orrenby/Platform/Export.hpp"
#include <compare>
#include <cstdint>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// A version such as 13.0.0, ordered by its numbers from left to right.
///
/// What the current one is, is said by the world (`World::operatingSystemVersion`): this platform has no
/// version of its own that features could be bound to, so the application decides. A plain value. Not
/// synchronised.
struct OperatingSystemVersion {
    std::int64_t major = 0; ///< The first number.
    std::int64_t minor = 0; ///< The second number.
    std::int64_t patch = 0; ///< The third number.

    /// `13.0.0`
    std::string description() const
    {
        return std::to_string(major) + '.' + std::to_string(minor) + '.' + std::to_string(patch);
    }

    friend constexpr auto operator<=>(const OperatingSystemVersion&, const OperatingSystemVersion&) = default;
};

} // namespace orrenby
