#pragma once

/// @file
/// Stretches of text, counted in UTF-16 units.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include <cstddef>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// A stretch of text: where it begins and how long it is, both in UTF-16 units.
///
/// It does not know the text: whether it lies inside one, and at the borders of its characters, is for
/// `UTF16View` to say.
///
/// @snippet Tests/Platform/Text/NSRangeTests.cpp Naming a stretch
///
/// A plain value: `NSRange{.location = 2, .length = 3}`. Not synchronised.
struct ORRENBY_EXPORT NSRange {
    std::size_t location = 0; ///< Where it begins, in UTF-16 units.
    std::size_t length = 0;   ///< How long it is, in UTF-16 units.

    /// The first unit behind it. Wraps when the sum is beyond `std::size_t`.
    constexpr std::size_t upperBound() const noexcept { return location + length; }

    /// Whether it covers nothing; it still has a place.
    constexpr bool isEmpty() const noexcept { return length == 0; }

    /// Whether the unit with this number lies in it.
    constexpr bool contains(std::size_t unit) const noexcept
    {
        return unit >= location && unit - location < length;
    }

    /// What lies in both, or nothing when no unit does.
    constexpr std::optional<NSRange> intersection(const NSRange& other) const noexcept
    {
        const NSRange& first = location <= other.location ? *this : other;
        const NSRange& second = location <= other.location ? other : *this;
        const auto start = second.location - first.location;
        if (start >= first.length || second.length == 0)
            return std::nullopt;
        const auto rest = first.length - start;
        return NSRange{second.location, rest < second.length ? rest : second.length};
    }

    /// `{2, 3}`
    std::string description() const;
    /// `NSRange{2, 3}`
    std::string debugDescription() const { return "NSRange" + description(); }

    friend constexpr bool operator==(const NSRange&, const NSRange&) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::NSRange> {
    std::size_t operator()(const orrenby::NSRange& range) const noexcept
    {
        return range.location * 0x9E3779B97F4A7C15U + range.length;
    }
};
