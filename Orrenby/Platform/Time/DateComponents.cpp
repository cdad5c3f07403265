#include "Orrenby/Platform/Time/DateComponents.hpp"

#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

namespace {

void append(std::string& text, std::string_view name, const std::string& value)
{
    if (!text.empty())
        text += ", ";
    text.append(name).append(": ").append(value);
}

void append(std::string& text, std::string_view name, std::optional<std::int32_t> value)
{
    if (value)
        append(text, name, std::to_string(*value));
}

} // namespace

std::string description(CalendarUnit unit)
{
    switch (unit) {
    case CalendarUnit::Era:
        return "Era";
    case CalendarUnit::Year:
        return "Year";
    case CalendarUnit::Month:
        return "Month";
    case CalendarUnit::Day:
        return "Day";
    case CalendarUnit::Hour:
        return "Hour";
    case CalendarUnit::Minute:
        return "Minute";
    case CalendarUnit::Second:
        return "Second";
    case CalendarUnit::Millisecond:
        return "Millisecond";
    case CalendarUnit::Weekday:
        return "Weekday";
    case CalendarUnit::WeekOfMonth:
        return "WeekOfMonth";
    case CalendarUnit::WeekOfYear:
        return "WeekOfYear";
    case CalendarUnit::YearForWeekOfYear:
        return "YearForWeekOfYear";
    case CalendarUnit::DayOfYear:
        return "DayOfYear";
    }
    return "CalendarUnit(" + std::to_string(static_cast<int>(unit)) + ')';
}

std::string DateComponents::description() const
{
    std::string text;
    append(text, "era", era);
    append(text, "year", year);
    append(text, "month", month);
    if (isLeapMonth)
        append(text, "isLeapMonth", *isLeapMonth ? "true" : "false");
    append(text, "day", day);
    append(text, "hour", hour);
    append(text, "minute", minute);
    append(text, "second", second);
    append(text, "millisecond", millisecond);
    append(text, "weekday", weekday);
    append(text, "weekOfMonth", weekOfMonth);
    append(text, "weekOfYear", weekOfYear);
    append(text, "yearForWeekOfYear", yearForWeekOfYear);
    append(text, "dayOfYear", dayOfYear);
    return text;
}

} // namespace orrenby
