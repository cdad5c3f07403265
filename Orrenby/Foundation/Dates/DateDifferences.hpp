#pragma once

/// @file
/// How far dates are apart, by the current calendar.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI {

/// Whole days from another date to this one, truncated toward zero; negative when this one is the earlier.
///
/// A day is the current calendar's: from noon to noon of the next day, though the clocks were changed
/// between. 0 when a date is no moment.
///
/// @snippet Tests/Foundation/Dates/DateDifferencesTests.cpp Telling how long ago
///
/// Costs a few microseconds, as do all differences of this page. Safe to use from several threads, as they
/// all are.
ORRENBY_EXPORT std::int64_t days(Date date, Date from);

/// Whole hours, as `days`. An hour is elapsed time: a day on which clocks go forward has 23.
ORRENBY_EXPORT std::int64_t hours(Date date, Date from);

/// Whole minutes, as `hours`.
ORRENBY_EXPORT std::int64_t minutes(Date date, Date from);

/// Whole seconds, as `hours`.
ORRENBY_EXPORT std::int64_t seconds(Date date, Date from);

/// The whole seconds times 1000: what is left of a second does not count, so that 1.9 seconds are 1000
/// milliseconds. More than 64 bits hold end the process; no calendar reckons with moments that far apart.
ORRENBY_EXPORT std::int64_t milliseconds(Date date, Date from);

namespace detail {

/// A difference that still waits for the date it is asked of.
class DifferenceFrom {
public:
    constexpr DifferenceFrom(std::int64_t (*difference)(Date, Date), Date from) noexcept
        : m_difference(difference)
        , m_from(from)
    {}

    friend std::int64_t operator|(Date date, const DifferenceFrom& operation)
    {
        return operation.m_difference(date, operation.m_from);
    }

private:
    std::int64_t (*m_difference)(Date, Date);
    Date m_from;
};

/// Ends the process when they exceed 64 bits.
ORRENBY_EXPORT std::int64_t millisecondsIn(std::int64_t seconds);
ORRENBY_EXPORT std::int64_t toMilliseconds(Date date);
ORRENBY_EXPORT std::int64_t differenceInDays(Date date, Date to);
ORRENBY_EXPORT bool isAtLeastOneDayInThePast(Date date, Date from);

} // namespace detail

/// The same as operations that still wait for their date: `message | days(sent)`.
[[nodiscard]] inline detail::DifferenceFrom days(Date from) { return {days, from}; }
[[nodiscard]] inline detail::DifferenceFrom hours(Date from) { return {hours, from}; }
[[nodiscard]] inline detail::DifferenceFrom minutes(Date from) { return {minutes, from}; }
[[nodiscard]] inline detail::DifferenceFrom seconds(Date from) { return {seconds, from}; }
[[nodiscard]] inline detail::DifferenceFrom milliseconds(Date from) { return {milliseconds, from}; }

/// Milliseconds since 1970-01-01T00:00:00Z, negative before it: `date | toMilliseconds`.
///
/// The seconds are multiplied by 1000 as a floating number, and what is left of a millisecond is cut off. The
/// product may fall just short of the millisecond that was written: that of 1.001 seconds is 1000. No date
/// of the years 2005 to 2037 that was read from a timestamp loses one.
///
/// The ends of time, and more than 64 bits hold, are a programming error and end the process.
///
/// @snippet Tests/Foundation/Dates/DateDifferencesTests.cpp Counting milliseconds
///
/// Safe to use from several threads.
inline constexpr auto toMilliseconds = pipeable<Date>([](Date date) { return detail::toMilliseconds(date); });

/// How many midnights lie between this date and another, whichever is the earlier: a minute before and a
/// minute after midnight are one day apart.
///
/// The days are numbered within their era, so the count makes sense for dates of one era only, which in the
/// Gregorian calendar are all since year 1. 0 when the calendar gives a date no number.
///
/// @snippet Tests/Foundation/Dates/DateDifferencesTests.cpp Counting days of the calendar
///
/// Safe to use from several threads.
inline constexpr auto differenceInDays = pipeable<Date>(
    [](Date date, Date to) { return detail::differenceInDays(date, to); });

/// Whether this date is 24 hours or more before `from`. Elapsed hours, not days of the calendar.
///
/// @snippet Tests/Foundation/Dates/DateDifferencesTests.cpp Asking for a day in the past
///
/// Safe to use from several threads.
inline constexpr auto isAtLeastOneDayInThePast = pipeable<Date>(
    [](Date date, Date from) { return detail::isAtLeastOneDayInThePast(date, from); });

} // namespace orrenby
