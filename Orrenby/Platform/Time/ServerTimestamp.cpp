#include "Orrenby/Platform/Time/ServerTimestamp.hpp"

#include <array>
#include <cmath>
#include <cstring>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::uint32_t millisecondsPerDay = 86'400'000;
// Years are taken to begin in March, so that the leap day is the last of its year.
constexpr std::uint32_t daysBefore1970 = 719'468; // since 0000-03-01
constexpr std::uint32_t daysPerCycle = 146'097;   // 400 years, of which all are alike

struct Day {
    std::uint32_t year;
    std::uint32_t month;
    std::uint32_t day;
};

constexpr Day dayOf(std::uint32_t days) noexcept
{
    const auto cycle = days / daysPerCycle;
    const auto dayOfCycle = days % daysPerCycle;
    // Without the leap days passed, one in 4 years, none in 100, one in 400, all years have 365 days.
    const auto yearOfCycle = (dayOfCycle - dayOfCycle / 1'460 + dayOfCycle / 36'524 - dayOfCycle / 146'096)
        / 365;
    const auto dayOfYear = dayOfCycle - (365 * yearOfCycle + yearOfCycle / 4 - yearOfCycle / 100);
    const auto monthFromMarch = (5 * dayOfYear + 2) / 153; // five months from March on always have 153 days
    const auto isNextYear = monthFromMarch >= 10;
    return {cycle * 400 + yearOfCycle + (isNextYear ? 1 : 0),
        isNextYear ? monthFromMarch - 9 : monthFromMarch + 3, dayOfYear - (153 * monthFromMarch + 2) / 5 + 1};
}

constexpr std::uint32_t daysOf(Day date) noexcept
{
    const auto isEndOfYear = date.month <= 2;
    const auto year = date.year - (isEndOfYear ? 1 : 0);
    const auto monthFromMarch = isEndOfYear ? date.month + 9 : date.month - 3;
    return year * 365 + year / 4 - year / 100 + year / 400 + (153 * monthFromMarch + 2) / 5 + date.day - 1;
}

constexpr bool isLeapYear(std::uint32_t year) noexcept
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr std::uint32_t daysInMonth(std::uint32_t year, std::uint32_t month) noexcept
{
    constexpr std::array<std::uint8_t, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : days[month - 1];
}

constexpr auto pairsOfDigits = [] {
    std::array<char, 200> digits{};
    for (std::size_t number = 0; number < 100; ++number) {
        digits[2 * number] = static_cast<char>('0' + number / 10);
        digits[2 * number + 1] = static_cast<char>('0' + number % 10);
    }
    return digits;
}();

void writeTwo(char* text, std::uint32_t number) noexcept { std::memcpy(text, &pairsOfDigits[2 * number], 2); }

/// Collects digits, and whether all of them were some.
class Digits {
public:
    explicit Digits(const char* text) noexcept
        : m_text(text)
    {}

    std::uint32_t one(std::size_t place) noexcept
    {
        const auto digit = static_cast<std::uint32_t>(static_cast<unsigned char>(m_text[place])) - '0';
        m_areDigits &= digit <= 9;
        return digit;
    }
    std::uint32_t two(std::size_t place) noexcept { return 10 * one(place) + one(place + 1); }

    bool areDigits() const noexcept { return m_areDigits; }

private:
    const char* m_text;
    bool m_areDigits = true;
};

bool hasSigns(const char* text) noexcept
{
    return text[4] == '-' && text[7] == '-' && text[10] == 'T' && text[13] == ':' && text[16] == ':'
        && text[19] == '.' && text[23] == 'Z';
}

} // namespace

bool ServerTimestamp::write(double milliseconds, char* text) noexcept
{
    if (!(milliseconds >= static_cast<double>(earliest) && milliseconds < static_cast<double>(latest) + 1))
        return false;
    constexpr auto before1970 = std::uint64_t(daysBefore1970) * millisecondsPerDay;
    const auto moment = static_cast<std::uint64_t>(static_cast<std::int64_t>(std::floor(milliseconds)))
        + before1970;
    const auto date = dayOf(static_cast<std::uint32_t>(moment / millisecondsPerDay));
    const auto time = static_cast<std::uint32_t>(moment % millisecondsPerDay);
    const auto seconds = time / 1'000;
    const auto minutes = seconds / 60;
    std::memcpy(text, "0000-00-00T00:00:00.000Z", length);
    writeTwo(text, date.year / 100);
    writeTwo(text + 2, date.year % 100);
    writeTwo(text + 5, date.month);
    writeTwo(text + 8, date.day);
    writeTwo(text + 11, minutes / 60);
    writeTwo(text + 14, minutes % 60);
    writeTwo(text + 17, seconds % 60);
    const auto fraction = time % 1'000;
    text[20] = static_cast<char>('0' + fraction / 100);
    writeTwo(text + 21, fraction % 100);
    return true;
}

std::optional<std::int64_t> ServerTimestamp::read(std::string_view text) noexcept
{
    if (text.size() != length || !hasSigns(text.data()))
        return std::nullopt;
    Digits digits(text.data());
    const auto date = Day{100 * digits.two(0) + digits.two(2), digits.two(5), digits.two(8)};
    const auto hour = digits.two(11);
    const auto minute = digits.two(14);
    const auto second = digits.two(17);
    const auto fraction = 100 * digits.one(20) + digits.two(21);
    if (!digits.areDigits() || date.year < 1'582 || date.month - 1 > 11 || hour > 23 || minute > 59
        || second > 59)
        return std::nullopt;
    if (date.day - 1 >= daysInMonth(date.year, date.month))
        return std::nullopt;
    const auto days = static_cast<std::int64_t>(daysOf(date)) - daysBefore1970;
    const auto time = ((hour * 60 + minute) * 60 + second) * 1'000 + fraction;
    const auto moment = days * millisecondsPerDay + time;
    return moment < earliest ? std::nullopt : std::optional(moment);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
