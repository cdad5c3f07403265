#include "Orrenby/Foundation/Dates/DateDifferences.hpp"

#include "Orrenby/Foundation/Dates/DateFromText.hpp"
#include "Orrenby/Platform/Time/TimeZone.hpp"
#include "Orrenby/Standard/Integers.hpp"
#include "Orrenby/Testing/LocaleOverride.hpp"
#include <cmath>
#include <cstdint>
#include <gmock/gmock.h>
#include <limits>
#include <string>

using namespace orrenby;
using orrenby::testing::LocaleOverride;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr auto* berlin = "Europe/Berlin";

Date moment(const char* timestamp) { return date(timestamp).value(); }

} // namespace

TEST(DateDifferences, TellHowLongAgo)
{
    const auto somewhere = LocaleOverride();

    //! [Telling how long ago]
    const auto sent = Date(1577934245);
    const auto now = sent + (2 * 86'400 + 3 * 3'600 + 59.5);

    EXPECT_EQ(now | days(sent), 2);
    EXPECT_EQ(hours(now, sent), 51);
    EXPECT_EQ(minutes(now, sent), 51 * 60);
    EXPECT_EQ(seconds(now, sent), 51 * 3'600 + 59);
    EXPECT_EQ(sent | days(now), -2);
    //! [Telling how long ago]
}

TEST(DateDifferences, AreZeroBetweenADateAndItself)
{
    const auto now = Date(1577934245.678);

    EXPECT_EQ(days(now, now), 0);
    EXPECT_EQ(hours(now, now), 0);
    EXPECT_EQ(minutes(now, now), 0);
    EXPECT_EQ(seconds(now, now), 0);
    EXPECT_EQ(milliseconds(now, now), 0);
    EXPECT_EQ(differenceInDays(now, now), 0);
}

TEST(DateDifferences, AreCutTowardZero)
{
    const auto somewhere = LocaleOverride();
    const auto start = Date(1577934245);

    EXPECT_EQ(days(start + 86'399.9, start), 0);
    EXPECT_EQ(days(start - 86'399.9, start), 0);
    EXPECT_EQ(days(start + 86'400, start), 1);
    EXPECT_EQ(hours(start + 7'199.9, start), 1);
    EXPECT_EQ(hours(start - 7'199.9, start), -1);
    EXPECT_EQ(minutes(start - 59.9, start), 0);
    EXPECT_EQ(minutes(start - 60, start), -1);
    EXPECT_EQ(seconds(start + 0.999, start), 0);
    EXPECT_EQ(seconds(start - 1.001, start), -1);
}

TEST(DateDifferences, CountADayOf23Hours)
{
    const auto there = LocaleOverride({.locale = "de_DE", .timeZone = berlin});
    const auto noonBefore = moment("2024-03-30T11:00:00.000Z"); // clocks go forward on the 31st at 01:00 GMT
    const auto noonAfter = moment("2024-03-31T10:00:00.000Z");

    EXPECT_EQ(days(noonAfter, noonBefore), 1);
    EXPECT_EQ(hours(noonAfter, noonBefore), 23);
    EXPECT_EQ(days(noonAfter - 1, noonBefore), 0);
    EXPECT_EQ(differenceInDays(noonAfter, noonBefore), 1);
}

TEST(DateDifferences, CountADayOf25Hours)
{
    const auto there = LocaleOverride({.locale = "de_DE", .timeZone = berlin});
    const auto noonBefore = moment("2024-10-26T10:00:00.000Z");
    const auto noonAfter = moment("2024-10-27T11:00:00.000Z");

    EXPECT_EQ(days(noonAfter, noonBefore), 1);
    EXPECT_EQ(hours(noonAfter, noonBefore), 25);
    EXPECT_EQ(days(noonAfter - 1, noonBefore), 0);
}

TEST(DateDifferences, FollowTheZoneThatIsTheSystemsWhenTheyAreAsked)
{
    const auto noonBefore = moment("2024-03-30T11:00:00.000Z");
    const auto noonAfter = moment("2024-03-31T10:00:00.000Z");
    const auto there = LocaleOverride({.timeZone = berlin});
    ASSERT_EQ(days(noonAfter, noonBefore), 1);

    TimeZone::setSystem(TimeZone::gmt());

    EXPECT_EQ(days(noonAfter, noonBefore), 0);
}

TEST(DateDifferences, AreTheSameInOtherCalendars)
{
    const auto start = moment("2019-04-28T12:00:00.000Z"); // the Japanese era changed on 1 May
    const auto end = moment("2020-05-03T12:00:00.000Z");
    for (const char* locale :
        {"en_US", "th_TH", "fa_IR", "ja_JP@calendar=japanese", "he_IL@calendar=hebrew"}) {
        const auto there = LocaleOverride({.locale = locale});

        EXPECT_EQ(days(end, start), 371) << locale;
        EXPECT_EQ(hours(end, start), 371 * 24) << locale;
    }
}

TEST(DateDifferences, SpanTheTimeThatTheCalendarReckonsWith)
{
    const auto somewhere = LocaleOverride();
    const auto start = moment("0001-01-01T00:00:00.000Z");
    const auto end = moment("9999-12-31T23:59:59.999Z");

    EXPECT_EQ(days(end, start), 3'652'060); // two days more than if the Gregorian calendar had always held
    EXPECT_EQ(seconds(end, start), 3'652'060LL * 86'400 + 86'399);
    EXPECT_EQ(milliseconds(end, start), (3'652'060LL * 86'400 + 86'399) * 1'000);
}

TEST(DateDifferences, AreZeroForWhatIsNoMoment)
{
    const auto nothing = Date(std::nan(""));
    const auto now = Date(1577934245);

    EXPECT_EQ(days(now, nothing), 0);
    EXPECT_EQ(hours(nothing, now), 0);
    EXPECT_EQ(minutes(nothing, nothing), 0);
    EXPECT_EQ(seconds(now, nothing), 0);
    EXPECT_EQ(milliseconds(now, nothing), 0);
    EXPECT_EQ(differenceInDays(now, nothing), 0);
    EXPECT_FALSE(isAtLeastOneDayInThePast(nothing, now));
}

TEST(DateDifferences, LeaveTheNamesakesForNumbersAlone)
{
    EXPECT_EQ(days(2), 172'800.0);
    EXPECT_EQ(hours(2), 7'200.0);
    EXPECT_EQ(minutes(2), 120.0);
}

TEST(Milliseconds, DoNotCountWhatIsLeftOfASecond)
{
    const auto start = Date(1577934245);

    EXPECT_EQ(milliseconds(start + 1.9, start), 1'000);
    EXPECT_EQ((start + 1.9) | milliseconds(start), 1'000);
    EXPECT_EQ(milliseconds(start, start + 1.9), -1'000);
    EXPECT_EQ(milliseconds(start + 0.999, start), 0);
}

TEST(Milliseconds, GoToTheLimitsOf64Bits)
{
    const auto most = std::numeric_limits<std::int64_t>::max() / 1000;

    EXPECT_EQ(detail::millisecondsIn(most), 9'223'372'036'854'775'000);
    EXPECT_EQ(detail::millisecondsIn(-most), -9'223'372'036'854'775'000);
}

TEST(Milliseconds, LieWithin64BitsBetweenTheEndsOfTime)
{
    const auto all = seconds(Date::distantFuture(), Date::distantPast());

    EXPECT_EQ(milliseconds(Date::distantFuture(), Date::distantPast()), all * 1'000);
}

TEST(MillisecondsDeathTest, EndTheProcessBeyond64Bits)
{
    const auto* const message
        = "Fatal error: A difference in milliseconds exceeds 64 bits: file Foundation/DateDifferences";

    EXPECT_DEATH(detail::millisecondsIn(9'223'372'036'854'776), message);
    EXPECT_DEATH(detail::millisecondsIn(-9'223'372'036'854'776), message);
    EXPECT_DEATH(detail::millisecondsIn(std::numeric_limits<std::int64_t>::min()), message);
}

TEST(ToMilliseconds, CountsThoseSince1970)
{
    //! [Counting milliseconds]
    EXPECT_EQ(Date(1577934245.678) | toMilliseconds, 1577934245678);
    EXPECT_EQ(toMilliseconds(Date(-0.0015)), -1);
    //! [Counting milliseconds]
}

TEST(ToMilliseconds, CutsTowardZero)
{
    EXPECT_EQ(toMilliseconds(Date()), 0);
    EXPECT_EQ(toMilliseconds(Date(0.0009)), 0);
    EXPECT_EQ(toMilliseconds(Date(-0.0009)), 0);
    EXPECT_EQ(toMilliseconds(Date(1.9999)), 1'999);
    EXPECT_EQ(toMilliseconds(Date(-1.9999)), -1'999);
}

TEST(ToMilliseconds, CutsWhatTheProductFallsShortOf)
{
    const auto written = moment("2004-07-16T00:00:00.001Z");

    EXPECT_EQ(toMilliseconds(written), 1'089'936'000'000) << "the product is 1089936000000.9999";
    EXPECT_EQ(toMilliseconds(Date(1.001)), 1'000);
    EXPECT_EQ(toMilliseconds(moment("2020-01-02T03:04:05.678Z")), 1'577'934'245'678);
}

TEST(ToMilliseconds, GoesToTheLimitsOf64Bits)
{
    EXPECT_EQ(toMilliseconds(Date(9.2e15)), 9'200'000'000'000'000'000);
    EXPECT_EQ(toMilliseconds(Date(-0x1p63 / 1000)), std::numeric_limits<std::int64_t>::min());
}

TEST(ToMillisecondsDeathTest, EndsTheProcessForWhatIsNoNumberOrTooLarge)
{
    const auto* const message
        = "Fatal error: A date in milliseconds exceeds 64 bits: file Foundation/DateDifferences";

    EXPECT_DEATH(toMilliseconds(Date(std::nan(""))), message);
    EXPECT_DEATH(toMilliseconds(Date(infinity)), message);
    EXPECT_DEATH(toMilliseconds(Date(-infinity)), message);
    EXPECT_DEATH(toMilliseconds(Date(0x1p63 / 1000)), message);
    EXPECT_DEATH(toMilliseconds(Date(-9.3e15)), message);
    EXPECT_DEATH(toMilliseconds(Date(std::numeric_limits<double>::max())), message);
}

TEST(DifferenceInDays, CountsMidnights)
{
    const auto somewhere = LocaleOverride();

    //! [Counting days of the calendar]
    const auto late = Date(1577923140);  // 23:59
    const auto early = Date(1577923260); // 00:01, two minutes later

    EXPECT_EQ(late | differenceInDays(early), 1);
    EXPECT_EQ(early | days(late), 0);
    //! [Counting days of the calendar]
}

TEST(DifferenceInDays, IsTheSameBothWays)
{
    const auto somewhere = LocaleOverride();
    const auto first = moment("2024-02-28T23:59:00.000Z");
    const auto second = moment("2024-03-01T00:01:00.000Z");

    EXPECT_EQ(differenceInDays(first, second), 2);
    EXPECT_EQ(differenceInDays(second, first), 2);
}

TEST(DifferenceInDays, IsZeroWithinADay)
{
    const auto somewhere = LocaleOverride();

    EXPECT_EQ(differenceInDays(moment("2024-01-01T00:00:00.000Z"), moment("2024-01-01T23:59:59.999Z")), 0);
}

TEST(DifferenceInDays, CountsMidnightsOfTheZone)
{
    const auto evening = moment("2024-06-01T21:30:00.000Z");
    const auto night = moment("2024-06-01T22:30:00.000Z");

    const auto there = LocaleOverride({.timeZone = berlin});
    EXPECT_EQ(differenceInDays(evening, night), 1);

    const auto here = LocaleOverride();
    EXPECT_EQ(differenceInDays(evening, night), 0);
}

TEST(DifferenceInDays, StepsOverTheDaysThatTheGregorianReformLeftOut)
{
    const auto somewhere = LocaleOverride();

    // 4 October was followed by 15 October.
    EXPECT_EQ(differenceInDays(Date(-12219292800 - 3'600), Date(-12219292800)), 1);
}

TEST(DifferenceInDays, IsZeroForDaysWithoutANumber)
{
    const auto somewhere = LocaleOverride();
    const auto beforeChrist = Date(-62198755200.0); // an era without a first day

    EXPECT_EQ(differenceInDays(beforeChrist, Date()), 0);
    EXPECT_EQ(differenceInDays(beforeChrist, beforeChrist - 86'400), 0);
}

TEST(DifferenceInDays, NumbersDaysWithinTheirEra)
{
    const auto japan = LocaleOverride({.locale = "ja_JP@calendar=japanese", .timeZone = "Asia/Tokyo"});
    const auto lastOfHeisei = moment("2019-04-30T03:00:00.000Z"); // its day 11,070
    const auto firstOfReiwa = moment("2019-05-01T03:00:00.000Z"); // its day 1

    EXPECT_EQ(differenceInDays(lastOfHeisei, firstOfReiwa), 11'069);
    EXPECT_EQ(days(firstOfReiwa, lastOfHeisei), 1);
}

TEST(IsAtLeastOneDayInThePast, TakesTheHoursFromThereToHere)
{
    const auto somewhere = LocaleOverride();

    //! [Asking for a day in the past]
    const auto now = Date(1577934245);

    EXPECT_TRUE((now - 86'400) | isAtLeastOneDayInThePast(now));
    EXPECT_FALSE((now - 86'399) | isAtLeastOneDayInThePast(now));
    //! [Asking for a day in the past]
}

TEST(IsAtLeastOneDayInThePast, IsFalseForTheFuture)
{
    const auto now = Date(1577934245);

    EXPECT_FALSE(isAtLeastOneDayInThePast(now, now));
    EXPECT_FALSE(isAtLeastOneDayInThePast(now + 86'400, now));
    EXPECT_FALSE(isAtLeastOneDayInThePast(now + 864'000, now));
}

TEST(IsAtLeastOneDayInThePast, IsFalseForADayOf23Hours)
{
    const auto there = LocaleOverride({.timeZone = berlin});
    const auto noonBefore = moment("2024-03-30T11:00:00.000Z");
    const auto noonAfter = moment("2024-03-31T10:00:00.000Z");

    EXPECT_FALSE(isAtLeastOneDayInThePast(noonBefore, noonAfter));
    EXPECT_TRUE(isAtLeastOneDayInThePast(noonBefore, noonAfter + 3'600));
}
