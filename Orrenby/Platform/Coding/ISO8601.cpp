#include "Orrenby/Platform/Coding/ISO8601.hpp"

#include <chrono>
#include <cmath>
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::int64_t secondsOfDay = 86'400;

class Reader {
public:
    explicit Reader(std::string_view text)
        : m_rest(text)
    {}

    bool isAtEnd() const { return m_rest.empty(); }
    bool isRight() const { return m_isRight; }

    /// The next `count` digits.
    int number(std::size_t count)
    {
        int value = 0;
        for (; count > 0; --count) {
            const char digit = next();
            m_isRight = m_isRight && digit >= '0' && digit <= '9';
            value = value * 10 + (digit - '0');
        }
        return m_isRight ? value : 0;
    }

    void expect(char wanted)
    {
        if (next() != wanted)
            m_isRight = false;
    }

    char next()
    {
        if (m_rest.empty()) {
            m_isRight = false;
            return '0';
        }
        const char byte = m_rest.front();
        m_rest.remove_prefix(1);
        return byte;
    }

private:
    std::string_view m_rest;
    bool m_isRight = true;
};

void append(std::string& text, std::int64_t value, int digits, char after)
{
    std::string number(static_cast<std::size_t>(digits), '0');
    for (auto place = number.rbegin(); place != number.rend(); ++place, value /= 10)
        *place = static_cast<char>('0' + value % 10);
    text += number;
    text += after;
}

} // namespace

std::optional<Date> dateFromISO8601(std::string_view text)
{
    Reader reader(text);
    const std::chrono::year year(reader.number(4));
    reader.expect('-');
    const std::chrono::month month(static_cast<unsigned>(reader.number(2)));
    reader.expect('-');
    const std::chrono::day day(static_cast<unsigned>(reader.number(2)));
    reader.expect('T');
    const int hours = reader.number(2);
    reader.expect(':');
    const int minutes = reader.number(2);
    reader.expect(':');
    const int seconds = reader.number(2);
    int offset = 0;
    if (const char zone = reader.next(); zone != 'Z') {
        const int offsetHours = reader.number(2);
        reader.expect(':');
        const int offsetMinutes = reader.number(2);
        offset = (offsetHours * 60 + offsetMinutes) * 60 * (zone == '-' ? -1 : 1);
        if ((zone != '+' && zone != '-') || offsetHours > 23 || offsetMinutes > 59)
            return std::nullopt;
    }
    const std::chrono::year_month_day date(year, month, day);
    if (!reader.isRight() || !reader.isAtEnd() || !date.ok() || hours > 23 || minutes > 59 || seconds > 59)
        return std::nullopt;
    const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    return Date(static_cast<double>(days * secondsOfDay + (hours * 60 + minutes) * 60 + seconds - offset));
}

std::optional<std::string> iso8601Text(Date date)
{
    constexpr double firstSecond = -62'167'219'200;  // of the year 0
    constexpr double endOfSeconds = 253'402'300'800; // of the year 9999
    const double rounded = std::floor(date.secondsSince1970());
    if (!(rounded >= firstSecond && rounded < endOfSeconds))
        return std::nullopt;

    const auto seconds = static_cast<std::int64_t>(rounded);
    const auto second = ((seconds % secondsOfDay) + secondsOfDay) % secondsOfDay;
    const auto dayNumber = (seconds - second) / secondsOfDay;
    const std::chrono::year_month_day day{std::chrono::sys_days(std::chrono::days(dayNumber))};
    std::string text;
    append(text, static_cast<int>(day.year()), 4, '-');
    append(text, static_cast<unsigned>(day.month()), 2, '-');
    append(text, static_cast<unsigned>(day.day()), 2, 'T');
    append(text, second / 3600, 2, ':');
    append(text, second / 60 % 60, 2, ':');
    append(text, second % 60, 2, 'Z');
    return text;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
