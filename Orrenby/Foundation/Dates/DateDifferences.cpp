#include "Orrenby/Foundation/Dates/DateDifferences.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Time/Calendar.hpp"
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

namespace {

std::int64_t wholeUnits(Calendar::Unit unit, Date from, Date to)
{
    return Calendar::current().difference(unit, from, to).value_or(0);
}

[[noreturn]] void endFor(std::string_view what) { fatalError(what, "Foundation/DateDifferences"); }

} // namespace

std::int64_t days(Date date, Date from) { return wholeUnits(Calendar::Unit::Day, from, date); }

std::int64_t hours(Date date, Date from) { return wholeUnits(Calendar::Unit::Hour, from, date); }

std::int64_t minutes(Date date, Date from) { return wholeUnits(Calendar::Unit::Minute, from, date); }

std::int64_t seconds(Date date, Date from) { return wholeUnits(Calendar::Unit::Second, from, date); }

std::int64_t milliseconds(Date date, Date from) { return detail::millisecondsIn(seconds(date, from)); }

namespace detail {

std::int64_t millisecondsIn(std::int64_t seconds)
{
    std::int64_t result = 0;
    if (__builtin_mul_overflow(seconds, 1000, &result))
        endFor("A difference in milliseconds exceeds 64 bits");
    return result;
}

std::int64_t toMilliseconds(Date date)
{
    constexpr double limit = 0x1p63;
    const double result = std::trunc(date.secondsSince1970() * 1000.0);
    if (!(result >= -limit && result < limit))
        endFor("A date in milliseconds exceeds 64 bits");
    return static_cast<std::int64_t>(result);
}

std::int64_t differenceInDays(Date date, Date to)
{
    const auto calendar = Calendar::autoUpdatingCurrent();
    const auto first = calendar.ordinality({}, date);
    const auto second = calendar.ordinality({}, to);
    return first && second ? std::abs(*first - *second) : 0;
}

bool isAtLeastOneDayInThePast(Date date, Date from)
{
    return wholeUnits(Calendar::Unit::Hour, date, from) > 23;
}

} // namespace detail

} // namespace orrenby
