#include "Orrenby/Platform/Time/Date.hpp"

#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <cmath>
#include <ctime>
#include <gmock/gmock.h>
#include <limits>
#include <unordered_set>

using namespace orrenby;

namespace {

constexpr double minute = 60;
constexpr double hour = 60 * minute;
constexpr double day = 24 * hour;

class StoppedClock final : public Clock {
public:
    Date now() const override { return Date(1'795'255'200); }
    double monotonicSeconds() const override { return 0; }
};

} // namespace

TEST(Date, ReckonsInSeconds)
{
    //! [Reckoning with moments]
    const auto opening = Date(1'795'255'200);
    const auto closing = opening + 8 * hour;

    const bool isLater = closing > opening;
    const double wait = closing - opening;
    const std::string printed = closing.description();
    //! [Reckoning with moments]

    EXPECT_TRUE(isLater);
    EXPECT_EQ(wait, 28'800);
    EXPECT_EQ(printed, "2026-11-21 18:00:00 +0000");
}

TEST(Date, BeginsIn1970)
{
    EXPECT_EQ(Date(), Date(0));
    EXPECT_EQ(Date().description(), "1970-01-01 00:00:00 +0000");
}

TEST(Date, MovesByAssignment)
{
    auto date = Date(100);

    date += 20;
    date -= 60;

    EXPECT_EQ(date, Date(60));
    EXPECT_EQ(date - 70, Date(-10));
}

TEST(Date, RoundsDownToWholeSecondsWhenPrinted)
{
    EXPECT_EQ(Date(59.999).description(), "1970-01-01 00:00:59 +0000");
    EXPECT_EQ(Date(-0.25).description(), "1969-12-31 23:59:59 +0000");
}

TEST(Date, KnowsLeapDays)
{
    EXPECT_EQ(Date(951'782'400).description(), "2000-02-29 00:00:00 +0000");
    EXPECT_EQ(Date(951'782'400 + day).description(), "2000-03-01 00:00:00 +0000");
    EXPECT_EQ(Date(-2'203'977'600).description(), "1900-02-28 00:00:00 +0000");
    EXPECT_EQ(Date(-2'203'977'600 + day).description(), "1900-03-01 00:00:00 +0000");
}

TEST(Date, PrintsTheEdgesOfFourDigitYears)
{
    EXPECT_EQ(Date(253'402'300'799).description(), "9999-12-31 23:59:59 +0000");
    EXPECT_EQ(Date(253'402'300'800).description(), "+10000-01-01 00:00:00 +0000");
    EXPECT_EQ(Date(-62'167'219'200).description(), "0000-01-01 00:00:00 +0000");
    EXPECT_EQ(Date(-62'167'219'201).description(), "-0001-12-31 23:59:59 +0000");
}

TEST(Date, AgreesWithTheSystemCalendarOnEveryDayOfEightCenturies)
{
    for (double seconds = -400 * 365.25 * day; seconds < 400 * 365.25 * day; seconds += day) {
        const auto time = static_cast<std::time_t>(seconds);
        std::tm parts = {};
        char expected[64];
        gmtime_r(&time, &parts);
        strftime(expected, sizeof expected, "%Y-%m-%d %H:%M:%S +0000", &parts);

        ASSERT_EQ(Date(seconds).description(), expected);
    }
}

TEST(Date, PrintsWhatIsNoCalendarDayAsSeconds)
{
    EXPECT_EQ(Date::distantFuture().description(), "inf");
    EXPECT_EQ(Date::distantPast().description(), "-inf");
    EXPECT_EQ(Date(1e300).description(), "1e+300");
    EXPECT_EQ(Date(std::nan("")).description(), "nan");
}

TEST(Date, OrdersTheEndsOfTime)
{
    const auto largest = Date(std::numeric_limits<double>::max());

    EXPECT_LT(Date::distantPast(), Date(-1e300));
    EXPECT_GT(Date::distantFuture(), largest);
}

TEST(Date, HashesEqualMomentsAlike)
{
    const auto dates = std::unordered_set<Date>{Date(0.0), Date(-0.0), Date(1)};

    EXPECT_EQ(dates.size(), 2u);
}

TEST(Date, ReadsTheClockOfTheCurrentWorld)
{
    auto world = World::current();
    world.setClock(std::make_shared<StoppedClock>());
    const auto override = World::Override(world);

    EXPECT_EQ(Date::now().description(), "2026-11-21 10:00:00 +0000");
}
