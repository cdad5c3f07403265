#include "Orrenby/Platform/Time/Calendar.hpp"

#include "Orrenby/Platform/Time/Milliseconds.hpp"
#include <cmath>
#include <mutex>
#include <unicode/calendar.h>
#include <unicode/timezone.h>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using detail::milliseconds;

/// A reckoner of one's own, as ICU's calendars hold the moment they reckon with.
using Reckoner = std::unique_ptr<icu::Calendar>;

constexpr double day = 86'400'000;

/// Units that have one length, in milliseconds; 0 for others.
double fixedLength(CalendarUnit unit)
{
    switch (unit) {
    case CalendarUnit::Hour:
        return 3'600'000;
    case CalendarUnit::Minute:
        return 60'000;
    case CalendarUnit::Second:
        return 1'000;
    case CalendarUnit::Millisecond:
        return 1;
    default:
        return 0;
    }
}

/// The unit to count in, and its shortest length in days; nothing for those that cannot be counted.
struct Step {
    UCalendarDateFields field;
    double days;
};
std::optional<Step> stepOf(CalendarUnit unit)
{
    switch (unit) {
    case CalendarUnit::Year:
        return Step{UCAL_YEAR, 353};
    case CalendarUnit::YearForWeekOfYear:
        return Step{UCAL_YEAR_WOY, 350};
    case CalendarUnit::Month:
        return Step{UCAL_MONTH, 5}; // some calendars add a short one at the end of the year
    case CalendarUnit::WeekOfMonth:
    case CalendarUnit::WeekOfYear:
        return Step{UCAL_WEEK_OF_YEAR, 7};
    case CalendarUnit::Day:
    case CalendarUnit::Weekday:
    case CalendarUnit::DayOfYear:
        return Step{UCAL_DATE, 1};
    default:
        return std::nullopt;
    }
}

/// In ICU's counts months and leap months are 0 at first.
std::int32_t valueOf(const icu::Calendar& reckoner, UCalendarDateFields field)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto value = reckoner.get(field, status);
    return U_FAILURE(status) ? 0 : value;
}

std::optional<Date> dateOf(const icu::Calendar& reckoner)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto moment = reckoner.getTime(status);
    if (U_FAILURE(status) || !(std::abs(moment) <= detail::furthestMilliseconds))
        return std::nullopt;
    return detail::dateFromMilliseconds(moment);
}

void set(icu::Calendar& reckoner, UCalendarDateFields field, std::optional<std::int32_t> value, int first = 0)
{
    if (value)
        reckoner.set(field, *value - first);
}

/// ICU reckons in 32 bits and does not notice when they overflow. What is within these bounds cannot, all
/// units taken together.
bool isTooFar(const DateComponents& components)
{
    const auto isBeyond = [](std::optional<std::int32_t> value, std::int32_t bound) {
        return value && (*value > bound || *value < -bound);
    };
    constexpr std::int32_t years = 5'000'000;
    constexpr std::int32_t eras = 1'000; // of 60 years, in East Asia
    constexpr std::int32_t months = 1'000'000;
    constexpr std::int32_t days = 10'000'000;
    return isBeyond(components.era, eras) || isBeyond(components.year, years)
        || isBeyond(components.yearForWeekOfYear, years) || isBeyond(components.month, months)
        || isBeyond(components.weekOfMonth, months) || isBeyond(components.weekOfYear, months)
        || isBeyond(components.day, days) || isBeyond(components.weekday, days)
        || isBeyond(components.dayOfYear, days);
}

/// The first day of the year of that number in the era of `reckoner`, counted from 4713 B.C.
std::int32_t firstDayOfYear(const icu::Calendar& reckoner, std::int32_t era, std::int32_t year)
{
    const Reckoner start(reckoner.clone());
    start->clear();
    start->set(UCAL_ERA, era);
    start->set(UCAL_YEAR, year);
    return valueOf(*start, UCAL_JULIAN_DAY);
}

std::optional<std::int64_t> dayInEra(const icu::Calendar& reckoner)
{
    const auto era = valueOf(reckoner, UCAL_ERA);
    const auto first = firstDayOfYear(reckoner, era, 1);
    if (firstDayOfYear(reckoner, era, 2) < first)
        return std::nullopt; // its years are counted backward, for ever
    const auto number = std::int64_t(valueOf(reckoner, UCAL_JULIAN_DAY)) - first + 1;
    return number < 1 ? std::nullopt : std::optional(number);
}

struct Place {
    CalendarUnit of;
    CalendarUnit in;
    UCalendarDateFields field;
    std::int32_t first; ///< What ICU calls the first one.
};
constexpr Place places[] = {
    {CalendarUnit::Day, CalendarUnit::Month, UCAL_DATE, 1},
    {CalendarUnit::Day, CalendarUnit::Year, UCAL_DAY_OF_YEAR, 1},
    {CalendarUnit::Month, CalendarUnit::Year, UCAL_MONTH, 0},
    {CalendarUnit::Year, CalendarUnit::Era, UCAL_YEAR, 1},
    {CalendarUnit::Hour, CalendarUnit::Day, UCAL_HOUR_OF_DAY, 0},
    {CalendarUnit::Minute, CalendarUnit::Hour, UCAL_MINUTE, 0},
    {CalendarUnit::Second, CalendarUnit::Minute, UCAL_SECOND, 0},
};

} // namespace

struct Calendar::Contents {
    Contents(Locale newLocale, TimeZone newZone)
        : locale(std::move(newLocale))
        , zone(std::move(newZone))
    {
        UErrorCode status = U_ZERO_ERROR;
        prototype.reset(icu::Calendar::createInstance(
            icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone.name())),
            icu::Locale(locale.identifier().c_str()), status));
    }

    Reckoner reckoner() const { return Reckoner(prototype->clone()); }

    /// Nothing when the date is no moment.
    Reckoner reckonerAt(Date date) const
    {
        if (std::isnan(date.secondsSince1970()))
            return nullptr;
        auto result = reckoner();
        UErrorCode status = U_ZERO_ERROR;
        result->setTime(milliseconds(date), status);
        return U_FAILURE(status) ? nullptr : std::move(result);
    }

    /// The year, with its era, that a moment without any belongs to.
    void setDefaultYear(icu::Calendar& target) const
    {
        const auto soonAfter1970 = reckonerAt(Date(10 * day / 1'000));
        target.set(UCAL_ERA, valueOf(*soonAfter1970, UCAL_ERA));
        target.set(UCAL_YEAR, valueOf(*soonAfter1970, UCAL_YEAR));
    }

    /// That of the current world. The last one is kept, as asking again and again is what callers do.
    static std::shared_ptr<const Contents> current()
    {
        static auto& mutex = *new std::mutex;
        static auto& last = *new std::shared_ptr<const Contents>;
        auto locale = Locale::current();
        auto zone = TimeZone::system();
        const auto lock = std::lock_guard(mutex);
        if (!last || last->locale != locale || last->zone != zone)
            last = std::make_shared<const Contents>(std::move(locale), std::move(zone));
        return last;
    }

    Locale locale;
    TimeZone zone;
    std::unique_ptr<const icu::Calendar> prototype;
};

Calendar::Calendar(std::shared_ptr<const Contents> contents) noexcept
    : m_contents(std::move(contents))
{}

Calendar::Calendar(Locale locale, TimeZone zone)
    : m_contents(std::make_shared<const Contents>(std::move(locale), std::move(zone)))
{}

Calendar Calendar::current() { return Calendar(Contents::current()); }

Calendar Calendar::autoUpdatingCurrent() { return Calendar(std::shared_ptr<const Contents>()); }

std::shared_ptr<const Calendar::Contents> Calendar::contents() const
{
    return m_contents ? m_contents : Contents::current();
}

std::string Calendar::identifier() const { return contents()->prototype->getType(); }

Locale Calendar::locale() const { return contents()->locale; }

TimeZone Calendar::timeZone() const { return contents()->zone; }

std::optional<std::int64_t> Calendar::difference(Unit unit, Date from, Date to) const
{
    const auto start = milliseconds(from);
    const auto end = milliseconds(to);
    if (std::isnan(start) || std::isnan(end))
        return std::nullopt;
    if (const auto length = fixedLength(unit); length > 0)
        return static_cast<std::int64_t>((end - start) / length);
    const auto step = stepOf(unit);
    const auto reckoner = contents()->reckonerAt(from);
    if (!step || !reckoner)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    const auto count = reckoner->fieldDifference(end, step->field, status);
    return U_FAILURE(status) ? std::nullopt : std::optional<std::int64_t>(count);
}

std::optional<std::int64_t> Calendar::ordinality(CalendarOrdinality units, Date date) const
{
    const auto reckoner = contents()->reckonerAt(date);
    if (!reckoner)
        return std::nullopt;
    if (units.of == Unit::Day && units.in == Unit::Era)
        return dayInEra(*reckoner);
    for (const auto& place : places)
        if (place.of == units.of && place.in == units.in)
            return valueOf(*reckoner, place.field) - place.first + 1;
    return std::nullopt;
}

std::optional<DateComponents> Calendar::components(Date date) const
{
    const auto reckoner = contents()->reckonerAt(date);
    if (!reckoner)
        return std::nullopt;
    const auto value = [&](UCalendarDateFields field) { return valueOf(*reckoner, field); };
    return DateComponents{.era = value(UCAL_ERA),
        .year = value(UCAL_YEAR),
        .month = value(UCAL_MONTH) + 1,
        .isLeapMonth = value(UCAL_IS_LEAP_MONTH) != 0,
        .day = value(UCAL_DATE),
        .hour = value(UCAL_HOUR_OF_DAY),
        .minute = value(UCAL_MINUTE),
        .second = value(UCAL_SECOND),
        .millisecond = value(UCAL_MILLISECOND),
        .weekday = value(UCAL_DAY_OF_WEEK),
        .weekOfMonth = value(UCAL_WEEK_OF_MONTH),
        .weekOfYear = value(UCAL_WEEK_OF_YEAR),
        .yearForWeekOfYear = value(UCAL_YEAR_WOY),
        .dayOfYear = value(UCAL_DAY_OF_YEAR)};
}

std::optional<Date> Calendar::date(const DateComponents& components) const
{
    if (isTooFar(components))
        return std::nullopt;
    const auto shared = contents();
    const auto reckoner = shared->reckoner();
    reckoner->clear();
    if (!components.year && !components.yearForWeekOfYear && !components.era)
        shared->setDefaultYear(*reckoner);
    // What is set later counts more where units contradict one another.
    set(*reckoner, UCAL_YEAR_WOY, components.yearForWeekOfYear);
    set(*reckoner, UCAL_WEEK_OF_YEAR, components.weekOfYear);
    set(*reckoner, UCAL_WEEK_OF_MONTH, components.weekOfMonth);
    set(*reckoner, UCAL_DAY_OF_WEEK, components.weekday);
    set(*reckoner, UCAL_DAY_OF_YEAR, components.dayOfYear);
    set(*reckoner, UCAL_ERA, components.era);
    set(*reckoner, UCAL_YEAR, components.year);
    set(*reckoner, UCAL_MONTH, components.month, 1);
    if (components.isLeapMonth)
        reckoner->set(UCAL_IS_LEAP_MONTH, *components.isLeapMonth ? 1 : 0);
    set(*reckoner, UCAL_DATE, components.day);
    set(*reckoner, UCAL_HOUR_OF_DAY, components.hour);
    set(*reckoner, UCAL_MINUTE, components.minute);
    set(*reckoner, UCAL_SECOND, components.second);
    set(*reckoner, UCAL_MILLISECOND, components.millisecond);
    return dateOf(*reckoner);
}

std::optional<Date> Calendar::adding(std::int32_t count, Unit unit, Date date) const
{
    const auto reckoner = contents()->reckonerAt(date);
    if (!reckoner)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    if (const auto length = fixedLength(unit); length > 0) {
        const auto moment = milliseconds(date) + length * count;
        if (std::abs(moment) > detail::furthestMilliseconds)
            return std::nullopt;
        return detail::dateFromMilliseconds(moment);
    }
    const auto step = stepOf(unit);
    if (!step || std::abs(static_cast<double>(count)) * step->days * day > 2 * detail::furthestMilliseconds)
        return std::nullopt;
    reckoner->add(step->field, count, status);
    return U_FAILURE(status) ? std::nullopt : dateOf(*reckoner);
}

std::optional<Date> Calendar::startOfDay(Date date) const
{
    const auto reckoner = contents()->reckonerAt(date);
    if (!reckoner)
        return std::nullopt;
    reckoner->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    reckoner->setSkippedWallTimeOption(UCAL_WALLTIME_NEXT_VALID);
    for (const auto field : {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND})
        reckoner->set(field, 0);
    return dateOf(*reckoner);
}

bool Calendar::isSameDay(Date first, Date second) const
{
    const auto shared = contents();
    const auto one = shared->reckonerAt(first);
    const auto other = shared->reckonerAt(second);
    return one && other && valueOf(*one, UCAL_JULIAN_DAY) == valueOf(*other, UCAL_JULIAN_DAY);
}

std::string Calendar::description() const
{
    const auto shared = contents();
    return identifier() + ", " + shared->locale.identifier() + ", " + shared->zone.name();
}

bool Calendar::isLike(const Calendar& other) const noexcept
{
    return m_contents && other.m_contents && m_contents->locale == other.m_contents->locale
        && m_contents->zone == other.m_contents->zone;
}

std::size_t Calendar::hash() const noexcept
{
    if (!m_contents)
        return 0;
    return std::hash<Locale>()(m_contents->locale) * 31 + std::hash<TimeZone>()(m_contents->zone);
}

} // namespace orrenby
