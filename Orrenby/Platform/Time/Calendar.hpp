#pragma once

/// @file
/// Days, months and years.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include "Orrenby/Platform/Time/DateComponents.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Orrenby/Platform/Time/TimeZone.hpp"
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// What `Calendar::ordinality` counts, and in what.
struct CalendarOrdinality {
    CalendarUnit of = CalendarUnit::Day; ///< What is counted.
    CalendarUnit in = CalendarUnit::Era; ///< In what it is counted, from 1.
};

/// Divides time into the units that people of a place reckon with.
///
/// Which calendar it is follows from the locale: Gregorian for most, Buddhist for `th_TH`, Persian for
/// `fa_IR`, Japanese for `ja_JP@calendar=japanese`. Days and hours are those of the time zone, with its
/// changes: a day on which clocks go forward has 23 hours. The Gregorian calendar is the Julian one before
/// 1582-10-15.
///
/// @snippet Tests/Platform/Time/CalendarTests.cpp Reckoning with days
///
/// A value of one shared pointer. An operation costs one to a few microseconds; making a calendar costs tens.
/// Safe to use from several threads.
class ORRENBY_EXPORT Calendar {
public:
    /// The units under a shorter name.
    using Unit = CalendarUnit;

    /// The calendar of a locale, with the days and hours of a zone.
    explicit Calendar(Locale locale, TimeZone zone = TimeZone::system());

    /// Of the current locale and the system's time zone, as they are now.
    static Calendar current();

    /// Of the current locale and the system's time zone, as they are whenever it is asked.
    static Calendar autoUpdatingCurrent();

    /// `gregorian`, `buddhist`, `persian`, `japanese`, …
    std::string identifier() const;

    /// What the calendar follows from.
    Locale locale() const;

    /// Whose days and hours it has.
    TimeZone timeZone() const;

    /// Whole units from one date to another, negative when `to` is the earlier one, truncated toward zero.
    ///
    /// Years, months, weeks and days are those of the calendar: from noon to noon of the next day is one day,
    /// though the clock was changed between. Hours and less are elapsed time. Weeks are 7 days, whichever of
    /// the units of weeks is named; a weekday is a day. Nothing for eras, for dates that are no moment, and
    /// for 2^31 days and more.
    ///
    /// @snippet Tests/Platform/Time/CalendarTests.cpp Counting between dates
    std::optional<std::int64_t> difference(Unit unit, Date from, Date to) const;

    /// The number of one unit within another, from 1 on: the day in the era, by default.
    ///
    /// There are the day in the month, the year and the era, the month in the year, the year in the era, the
    /// hour in the day, the minute in the hour and the second in the minute. Nothing for other pairs, for
    /// dates that are no moment, and for the day in an era that has no first day, as before Christ.
    ///
    /// @snippet Tests/Platform/Time/CalendarTests.cpp Numbering days
    std::optional<std::int64_t> ordinality(CalendarOrdinality units, Date date) const;

    /// All units of `date`. Nothing when it is no moment.
    std::optional<DateComponents> components(Date date) const;

    /// The moment that has these components.
    ///
    /// A missing era is the present one, a missing year that in which 1970 began, and other missing units are
    /// their first. What exceeds its unit rolls over: 31 April is 1 May. A weekday says which day of
    /// its week, and counts only where no day of the month or year is given.
    ///
    /// A clock time that is skipped when clocks go forward is taken by the clock before the change, so that
    /// 02:30 is 03:30; one that comes twice is the second of both.
    ///
    /// Nothing beyond five million years, a million months or weeks, or ten million days, each by itself.
    std::optional<Date> date(const DateComponents& components) const;

    /// `date` with so many units more, or less. A day of the month that does not exist becomes the last one:
    /// 31 January and a month is 28 February. Nothing for eras, for dates that are no moment, and for counts
    /// that lead out of the calendar.
    std::optional<Date> adding(std::int32_t count, Unit unit, Date date) const;

    /// The first moment of the day of `date`: midnight, or later where clocks go forward at that time.
    std::optional<Date> startOfDay(Date date) const;

    /// Whether both lie in one day of the calendar's zone.
    bool isSameDay(Date first, Date second) const;

    /// `gregorian, en_US, Europe/Berlin`
    std::string description() const;

    /// Of equal locales and zones. One that updates itself only equals another one that does.
    friend bool operator==(const Calendar& first, const Calendar& second) noexcept
    {
        return first.m_contents == second.m_contents || first.isLike(second);
    }

    std::size_t hash() const noexcept;

private:
    struct Contents;
    explicit Calendar(std::shared_ptr<const Contents> contents) noexcept;
    std::shared_ptr<const Contents> contents() const;
    bool isLike(const Calendar& other) const noexcept;

    std::shared_ptr<const Contents> m_contents; ///< None for the one that updates itself.
};

} // namespace orrenby

template <> struct std::hash<orrenby::Calendar> {
    std::size_t operator()(const orrenby::Calendar& calendar) const noexcept { return calendar.hash(); }
};
