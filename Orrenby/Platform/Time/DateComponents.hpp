#pragma once

/// @file
/// A date in the units of a calendar.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// What a calendar counts in.
enum class CalendarUnit : std::uint8_t {
    Era,
    Year,
    Month,
    Day,
    Hour,
    Minute,
    Second,
    Millisecond,
    Weekday,
    WeekOfMonth,
    WeekOfYear,
    YearForWeekOfYear,
    DayOfYear
};

/// The name as in C++: `WeekOfYear`.
ORRENBY_EXPORT std::string description(CalendarUnit unit);

/// Some or all units of a date, as a calendar counts them: all from 1, but eras, hours, minutes, seconds and
/// milliseconds from 0.
///
/// What they mean is said by the calendar that they are given to. See `Calendar::components` and
/// `Calendar::date`.
///
/// A plain value. Not synchronised.
struct DateComponents {
    std::optional<std::int32_t> era = {};   ///< In the Gregorian calendar 0 before Christ, 1 after.
    std::optional<std::int32_t> year = {};  ///< Within its era.
    std::optional<std::int32_t> month = {}; ///< The place in the year, from 1.
    /// Whether the month is the additional one of its number, as East Asian calendars have it.
    std::optional<bool> isLeapMonth = {};
    std::optional<std::int32_t> day = {};         ///< Of the month, from 1.
    std::optional<std::int32_t> hour = {};        ///< From 0 to 23.
    std::optional<std::int32_t> minute = {};      ///< From 0 to 59.
    std::optional<std::int32_t> second = {};      ///< From 0 to 59.
    std::optional<std::int32_t> millisecond = {}; ///< Of the second, from 0 to 999.
    std::optional<std::int32_t> weekday = {};     ///< 1 is Sunday in every calendar.
    std::optional<std::int32_t> weekOfMonth = {}; ///< By the calendar's rule of where weeks begin.
    std::optional<std::int32_t> weekOfYear = {};  ///< By the calendar's rule of where weeks begin.
    /// The year that the week belongs to, which around New Year may be another than `year`.
    std::optional<std::int32_t> yearForWeekOfYear = {};
    std::optional<std::int32_t> dayOfYear = {}; ///< From 1; 1 January in the Gregorian calendar.

    /// What is present, in this order: `year: 2026, month: 11, day: 21`.
    ORRENBY_EXPORT std::string description() const;

    friend bool operator==(const DateComponents&, const DateComponents&) = default;
};

} // namespace orrenby
