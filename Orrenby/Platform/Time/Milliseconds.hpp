#pragma once

/// @file
/// Dates in milliseconds, as ICU counts them. Not in the umbrella header: for the sources of this room.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cmath>

namespace orrenby::inline ORRENBY_ABI::detail {

/// About five million years. ICU reckons a little further, and fails beyond.
inline constexpr double furthestMilliseconds = 1.8e17;

/// Milliseconds since 1970-01-01T00:00:00Z, within what ICU reckons with; not a number for no moment.
///
/// A `Date` in seconds can hold few fractions exactly: the closest it comes to .678 may lie below that, and
/// rounding down would lose a millisecond. So a date that is the closest one to a whole millisecond is that
/// millisecond, and what was read from a text is printed as the same text.
inline double milliseconds(Date date) noexcept
{
    const auto seconds = date.secondsSince1970();
    const auto exact = seconds * 1'000;
    if (exact > furthestMilliseconds || exact < -furthestMilliseconds)
        return exact > 0 ? furthestMilliseconds : -furthestMilliseconds;
    const auto whole = std::nearbyint(exact);
    return whole / 1'000 == seconds ? whole : exact;
}

/// The date that is closest to `milliseconds`.
inline Date dateFromMilliseconds(double milliseconds) noexcept { return Date(milliseconds / 1'000); }

} // namespace orrenby::inline ORRENBY_ABI::detail
