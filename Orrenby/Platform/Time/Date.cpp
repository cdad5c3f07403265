#include "Orrenby/Platform/Time/Date.hpp"

#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr std::int64_t secondsPerDay = 86'400;
constexpr double longestPrintable = 1e9 * 365.25 * 86'400; // a billion years, far within 64 bits

struct CivilDay {
    std::int64_t year;
    std::int64_t month;
    std::int64_t day;
};

/// The Gregorian date of a day counted from 1970-01-01, for all years.
///
/// Years are taken to begin in March, so that the leap day is the last of its year, and the days are split
/// into whole 400-year cycles (146,097 days), of which all are alike.
CivilDay civilDay(std::int64_t daysSince1970)
{
    constexpr std::int64_t daysPerCycle = 146'097;
    const auto days = daysSince1970 + 719'468; // since 0000-03-01
    const auto cycle = (days >= 0 ? days : days - (daysPerCycle - 1)) / daysPerCycle;
    const auto dayOfCycle = days - cycle * daysPerCycle;
    // Take away the leap days passed: one in 4 years, none in 100, one in 400. What is left are years of 365
    // days.
    const auto yearOfCycle = (dayOfCycle - dayOfCycle / 1'460 + dayOfCycle / 36'524 - dayOfCycle / 146'096)
        / 365;
    const auto dayOfYear = dayOfCycle - (365 * yearOfCycle + yearOfCycle / 4 - yearOfCycle / 100);
    const auto monthFromMarch = (5 * dayOfYear + 2) / 153; // five months from March on always have 153 days
    const auto day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    const auto month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    return {cycle * 400 + yearOfCycle + (month <= 2 ? 1 : 0), month, day};
}

} // namespace

Date Date::now() { return World::current().clock().now(); }

std::string Date::description() const
{
    char text[64];
    if (!(std::abs(m_seconds) <= longestPrintable)) {
        const auto end = std::to_chars(text, text + sizeof text, m_seconds).ptr;
        return {text, end};
    }
    const auto seconds = static_cast<std::int64_t>(std::floor(m_seconds));
    const auto days = (seconds >= 0 ? seconds : seconds - (secondsPerDay - 1)) / secondsPerDay;
    const auto time = static_cast<int>(seconds - days * secondsPerDay);
    const auto [year, month, day] = civilDay(days);
    const auto* yearForm = year < 0 ? "%05lld" : year > 9999 ? "%+lld" : "%04lld";
    auto length = std::snprintf(text, sizeof text, yearForm, static_cast<long long>(year));
    std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length),
        "-%02d-%02d %02d:%02d:%02d +0000", static_cast<int>(month), static_cast<int>(day), time / 3600,
        time / 60 % 60, time % 60);
    return text;
}

} // namespace orrenby
