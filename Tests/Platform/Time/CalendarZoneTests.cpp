// Days and hours where clocks are changed.

#include "Orrenby/Platform/Time/Calendar.hpp"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>
#include <vector>

using namespace orrenby;
using Unit = Calendar::Unit;

namespace {

constexpr double hour = 3'600;
constexpr auto springForward = Date(1'774'746'000); // 2026-03-29T01:00:00Z, in Central Europe
constexpr auto autumnBack = Date(1'792'890'000);    // 2026-10-25T01:00:00Z

Calendar in(const char* zone) { return Calendar(Locale("en_US"), TimeZone::fromName(zone).value()); }

Date at(const Calendar& calendar, std::int32_t month, std::int32_t day, std::int32_t hourOfDay,
    std::int32_t minute = 0)
{
    return calendar.date({.year = 2026, .month = month, .day = day, .hour = hourOfDay, .minute = minute})
        .value();
}

} // namespace

TEST(CalendarZone, HasADayOf23HoursInSpring)
{
    const auto berlin = in("Europe/Berlin");
    const auto midnight = at(berlin, 3, 29, 0);
    const auto nextMidnight = at(berlin, 3, 30, 0);

    EXPECT_EQ(nextMidnight - midnight, 23 * hour);
    EXPECT_EQ(berlin.difference(Unit::Day, midnight, nextMidnight), 1);
    EXPECT_EQ(berlin.difference(Unit::Hour, midnight, nextMidnight), 23);
}

TEST(CalendarZone, HasADayOf25HoursInAutumn)
{
    const auto berlin = in("Europe/Berlin");
    const auto midnight = at(berlin, 10, 25, 0);
    const auto nextMidnight = at(berlin, 10, 26, 0);

    EXPECT_EQ(nextMidnight - midnight, 25 * hour);
    EXPECT_EQ(berlin.difference(Unit::Day, midnight, midnight + 24 * hour), 0);
    EXPECT_EQ(berlin.difference(Unit::Day, midnight, nextMidnight), 1);
}

TEST(CalendarZone, KeepsTheTimeOfDayWhenItAddsDays)
{
    const auto berlin = in("Europe/Berlin");

    EXPECT_EQ(berlin.adding(1, Unit::Day, at(berlin, 3, 28, 12)), at(berlin, 3, 29, 12));
    EXPECT_EQ(berlin.adding(24, Unit::Hour, at(berlin, 3, 28, 12)), at(berlin, 3, 29, 13));
}

TEST(CalendarZone, MovesASkippedTimeForward)
{
    const auto berlin = in("Europe/Berlin");

    EXPECT_EQ(at(berlin, 3, 29, 2, 30), springForward + hour / 2);
    EXPECT_EQ(berlin.components(at(berlin, 3, 29, 2, 30))->hour, 3);
}

TEST(CalendarZone, TakesTheSecondOfATimeThatComesTwice)
{
    EXPECT_EQ(at(in("Europe/Berlin"), 10, 25, 2, 30), autumnBack + hour / 2);
}

TEST(CalendarZone, BeginsADayLaterWhereMidnightIsSkipped)
{
    const auto saoPaulo = in("America/Sao_Paulo");
    const auto noon = saoPaulo.date({.year = 2018, .month = 11, .day = 4, .hour = 12}).value();

    const auto start = saoPaulo.startOfDay(noon).value();

    EXPECT_EQ(saoPaulo.components(start)->hour, 1);
    EXPECT_FALSE(saoPaulo.isSameDay(start - 0.001, start));
}

TEST(CalendarZone, BeginsADayAtTheFirstOfTwoMidnights)
{
    const auto azores = in("Atlantic/Azores"); // 01:00 becomes 00:00
    const auto noon = at(azores, 10, 25, 12);

    const auto start = azores.startOfDay(noon).value();

    EXPECT_EQ(noon - start, 13 * hour);
    EXPECT_FALSE(azores.isSameDay(start - 0.001, start));
}

TEST(CalendarZone, SkipsAWholeDayAtTheDateLine)
{
    const auto apia = in("Pacific/Apia"); // 30 December 2011 was left out
    const auto before = apia.date({.year = 2011, .month = 12, .day = 29, .hour = 12}).value();

    EXPECT_EQ(apia.components(before + 24 * hour)->day, 31);
}

TEST(CalendarZone, CountsTheDaysOfItsOwnZone)
{
    const auto evening = Date(1'577'923'140); // 2020-01-01T23:59:00Z
    const auto number = [&](const char* zone, Date date) { return in(zone).ordinality({}, date).value(); };

    EXPECT_EQ(number("GMT", evening + 120) - number("GMT", evening), 1);
    EXPECT_EQ(number("Asia/Tokyo", evening + 120) - number("Asia/Tokyo", evening), 0);
}

TEST(CalendarZone, ServesSeveralThreads)
{
    const auto berlin = in("Europe/Berlin");
    const auto updating = Calendar::autoUpdatingCurrent();
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&, thread] {
            for (int turn = 0; turn < 200; ++turn) {
                const auto date = Date(1.7e9 + thread * 1e6 + turn * 5'000);
                wrong += berlin.date(berlin.components(date).value()) != date
                    && !berlin.isSameDay(date, autumnBack);
                wrong += updating.difference(Unit::Day, date, date + 48 * hour + 7'200) != 2;
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(wrong, 0);
}
