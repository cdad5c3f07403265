#include "Orrenby/Platform/Time/Calendar.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <cmath>
#include <gmock/gmock.h>
#include <unordered_set>

using namespace orrenby;

TEST(Calendar, ReckonsWithDays)
{
    //! [Reckoning with days]
    const auto calendar = Calendar(Locale("en_GB"), TimeZone::gmt());

    const auto opening = calendar.date({.year = 2026, .month = 11, .day = 30, .hour = 9}).value();
    const auto reminder = calendar.adding(-1, Calendar::Unit::Month, opening).value();
    const auto weekday = calendar.components(reminder).value().weekday; // 6: a Friday
    //! [Reckoning with days]

    EXPECT_EQ(reminder.description(), "2026-10-30 09:00:00 +0000");
    EXPECT_EQ(weekday, 6);
}

TEST(Calendar, CountsWholeUnitsBetweenDates)
{
    //! [Counting between dates]
    const auto calendar = Calendar(Locale("en_GB"), TimeZone::gmt());
    const auto booked = calendar.date({.year = 2026, .month = 1, .day = 31}).value();
    const auto due = calendar.date({.year = 2026, .month = 3, .day = 1, .hour = 12}).value();

    const auto days = calendar.difference(Calendar::Unit::Day, booked, due);     // 29
    const auto months = calendar.difference(Calendar::Unit::Month, booked, due); // 1
    //! [Counting between dates]

    EXPECT_EQ(days, 29);
    EXPECT_EQ(months, 1);
}

TEST(Calendar, NumbersTheDaysOfAnEra)
{
    //! [Numbering days]
    const auto calendar = Calendar(Locale("en_GB"), TimeZone::gmt());
    const auto evening = calendar.date({.year = 2026, .month = 11, .day = 21, .hour = 23}).value();
    const auto nextMorning = evening + 2 * 3600;

    const auto last = calendar.ordinality(
        {.of = Calendar::Unit::Day, .in = Calendar::Unit::Era}, nextMorning);
    const auto first = calendar.ordinality({.of = Calendar::Unit::Day, .in = Calendar::Unit::Era}, evening);
    const auto midnights = *last - *first; // 1
    //! [Numbering days]

    EXPECT_EQ(midnights, 1);
    EXPECT_EQ(first, 739'943);
}
