#include "Orrenby/Platform/Time/DateComponents.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <gmock/gmock.h>
#include <string>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;

TEST(DateComponents, PrintWhatIsPresent)
{
    EXPECT_EQ(
        describe(DateComponents{.year = 2026, .month = 11, .day = 21}), "year: 2026, month: 11, day: 21");
    EXPECT_EQ(describe(DateComponents{}), "");
}

TEST(DateComponents, PrintAllInTheirOrder)
{
    const auto all = DateComponents{.era = 1,
        .year = 2,
        .month = 3,
        .isLeapMonth = true,
        .day = 4,
        .hour = 5,
        .minute = 6,
        .second = 7,
        .millisecond = 8,
        .weekday = 9,
        .weekOfMonth = 10,
        .weekOfYear = 11,
        .yearForWeekOfYear = 12,
        .dayOfYear = -13};

    EXPECT_EQ(describe(all),
        "era: 1, year: 2, month: 3, isLeapMonth: true, day: 4, hour: 5, minute: 6, second: 7, millisecond: 8, "
        "weekday: 9, weekOfMonth: 10, weekOfYear: 11, yearForWeekOfYear: 12, dayOfYear: -13");
}

TEST(DateComponents, CompareMissingUnitsToo)
{
    EXPECT_EQ((DateComponents{.day = 1}), (DateComponents{.day = 1}));
    EXPECT_NE((DateComponents{.day = 1}), (DateComponents{.day = 1, .hour = 0}));
}

TEST(DateComponents, PrintThatAMonthIsNoLeapMonth)
{
    EXPECT_EQ(describe(DateComponents{.month = 2, .isLeapMonth = false}), "month: 2, isLeapMonth: false");
}

TEST(CalendarUnit, HasAName)
{
    std::vector<std::string> names;
    for (auto unit = 0; unit <= static_cast<int>(CalendarUnit::DayOfYear); ++unit)
        names.push_back(describe(static_cast<CalendarUnit>(unit)));

    EXPECT_THAT(names,
        ElementsAre("Era", "Year", "Month", "Day", "Hour", "Minute", "Second", "Millisecond", "Weekday",
            "WeekOfMonth", "WeekOfYear", "YearForWeekOfYear", "DayOfYear"));
}

TEST(CalendarUnit, PrintsItsNumberWhereItIsNone)
{
    EXPECT_EQ(describe(CalendarUnit{13}), "CalendarUnit(13)");
    EXPECT_EQ(describe(CalendarUnit{200}), "CalendarUnit(200)");
}
