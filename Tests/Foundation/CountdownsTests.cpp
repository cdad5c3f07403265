#include "Orrenby/Foundation/Countdowns.hpp"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string withFraction(double seconds)
{
    return formattedCountdownForTimeRemainingWithMilliseconds(seconds);
}

} // namespace

TEST(Countdowns, CountDown)
{
    //! [Counting down]
    EXPECT_EQ(formattedCountdown(3725.25), "01:02:05");
    EXPECT_EQ(formattedCountdownForTimeRemainingWithMilliseconds(3725.25), "02:05.25");
    //! [Counting down]
}

TEST(FormattedCountdown, RoundsBeforeItSplits)
{
    EXPECT_EQ(formattedCountdown(59.6), "00:01:00");
    EXPECT_EQ(formattedCountdown(3599.5), "01:00:00");
    EXPECT_EQ(formattedCountdown(59.4), "00:00:59");
    EXPECT_EQ(formattedCountdown(0.5), "00:00:01");
}

TEST(FormattedCountdown, PrintsZero) { EXPECT_EQ(formattedCountdown(0), "00:00:00"); }

TEST(FormattedCountdown, DoesNotTurnHoursIntoDays)
{
    EXPECT_EQ(formattedCountdown(100 * 3600), "100:00:00");
    EXPECT_EQ(formattedCountdown(24 * 3600 - 1), "23:59:59");
}

TEST(FormattedCountdown, PrintsNegativeTimesAsNumbersPrint)
{
    EXPECT_EQ(formattedCountdown(-0.4), "-0:-0:-0");
    EXPECT_EQ(formattedCountdown(-60), "-1:-1:-0");
    EXPECT_EQ(formattedCountdown(-3600), "-1:-0:-0");
}

TEST(FormattedCountdown, PrintsWhatIsInfiniteOrNoNumber)
{
    EXPECT_THAT(formattedCountdown(infinity), ::testing::MatchesRegex("inf:-?nan:-?nan"));
    EXPECT_THAT(formattedCountdown(std::nan("")), ::testing::MatchesRegex("-?nan:-?nan:-?nan"));
}

TEST(FormattedCountdown, PrintsTheLargestNumber)
{
    EXPECT_EQ(formattedCountdown(std::numeric_limits<double>::max()).size(), 305U + 6U);
}

TEST(CountdownWithFraction, CutsTheFraction)
{
    EXPECT_EQ(withFraction(0), "00:00.00");
    EXPECT_EQ(withFraction(9.999), "00:09.99");
    EXPECT_EQ(withFraction(59.5), "00:59.50");
    EXPECT_EQ(withFraction(0.0625), "00:00.06");
}

TEST(CountdownWithFraction, DropsHours)
{
    EXPECT_EQ(withFraction(3600), "00:00.00");
    EXPECT_EQ(withFraction(2 * 3600 + 61.5), "01:01.50");
}

TEST(CountdownWithFraction, PrintsZeroForNegativeTimes)
{
    EXPECT_EQ(withFraction(-1), "00:00.00");
    EXPECT_EQ(withFraction(-0.25), "00:00.00");
    EXPECT_EQ(withFraction(-61.75), "00:00.00");
    EXPECT_EQ(withFraction(-1e-20), "00:00.00");
}

TEST(CountdownWithFraction, DoesNotCatchNegativeWholeMinutes)
{
    EXPECT_EQ(withFraction(-60), "-1:-0.00");
    EXPECT_EQ(withFraction(-3600), "-0:-0.00");
}

TEST(CountdownWithFraction, TakesTheLargestNumber)
{
    EXPECT_THAT(
        withFraction(std::numeric_limits<double>::max()), ::testing::MatchesRegex("[0-9]{2}:[0-9]{2}\\.00"));
}

TEST(CountdownWithFractionDeathTest, EndsTheProcessForWhatIsInfiniteOrNoNumber)
{
    const auto* const message
        = "Fatal error: A remaining time is infinite or no number: file Foundation/Countdowns";

    EXPECT_DEATH(withFraction(infinity), message);
    EXPECT_DEATH(withFraction(-infinity), message);
    EXPECT_DEATH(withFraction(std::nan("")), message);
}
