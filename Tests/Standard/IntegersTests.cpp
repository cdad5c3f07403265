#include "Orrenby/Standard/Integers.hpp"

#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;

namespace {

constexpr auto largest = std::numeric_limits<std::int64_t>::max();
constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
constexpr auto overflow
    = "Fatal error: The number of seconds does not fit in 64 bits: file Standard/Integers";

template <class T>
concept CountsMinutes = requires(T count)
{
    minutes(count);
};

} // namespace

TEST(Integers, AreEvenOrOdd)
{
    //! [Telling even from odd]
    static_assert(isEven(0) && isEven(-2) && !isEven(3));
    //! [Telling even from odd]
    EXPECT_TRUE(isEven(INT64_MIN));
    EXPECT_FALSE(isEven(INT64_MAX));
    EXPECT_FALSE(isEven(UINT64_MAX));
    EXPECT_FALSE(isEven(-1));
    EXPECT_TRUE(isEven(static_cast<std::uint8_t>(254)));
}

TEST(Integers, CountTime)
{
    //! [Counting time]
    const double timeout = minutes(2) + hours(1);

    EXPECT_EQ(timeout, 3720.0);
    EXPECT_TRUE(in(5, ClosedRange(0, 5)));
    EXPECT_FALSE(in(5, Range(0, 5)));
    //! [Counting time]
}

TEST(Integers, AreInAHalfOpenRangeBelowItsUpperBound)
{
    const Range<std::int64_t> range(0, 5);

    EXPECT_TRUE(in(0, range));
    EXPECT_TRUE(in(4, range));
    EXPECT_FALSE(in(5, range));
    EXPECT_FALSE(in(-1, range));
}

TEST(Integers, AreInAClosedRangeUpToItsUpperBound)
{
    const ClosedRange<std::int64_t> range(0, 5);

    EXPECT_TRUE(in(0, range));
    EXPECT_TRUE(in(5, range));
    EXPECT_FALSE(in(6, range));
    EXPECT_FALSE(in(-1, range));
}

TEST(Integers, AreNotInAnEmptyRange) { EXPECT_FALSE(in(3, Range(3, 3))); }

TEST(Integers, AreInARangeOfOne) { EXPECT_TRUE(in(3, ClosedRange(3, 3))); }

TEST(Integers, AreInTheRangeOfAll)
{
    EXPECT_TRUE(in(largest, ClosedRange(smallest, largest)));
    EXPECT_TRUE(in(smallest, Range(smallest, largest)));
    EXPECT_FALSE(in(largest, Range(smallest, largest)));
}

TEST(Integers, CompareByValueWhateverTheirWidth)
{
    EXPECT_FALSE(in(largest, Range(0, 5)));
    EXPECT_FALSE(in((std::int64_t(1) << 32) + 1, Range(0, 5)));
    EXPECT_FALSE(in(-1, Range(0U, 5U)));
    EXPECT_TRUE(in(std::uint8_t(3), Range(-1, 5)));
}

TEST(Integers, CountMinutes)
{
    EXPECT_EQ(minutes(0), 0.0);
    EXPECT_EQ(minutes(1), 60.0);
    EXPECT_EQ(minutes(-3), -180.0);
    EXPECT_EQ(minutes(largest / 60), static_cast<double>(largest / 60 * 60));
    EXPECT_EQ(minutes(smallest / 60), static_cast<double>(smallest / 60 * 60));
}

TEST(Integers, CountHours)
{
    EXPECT_EQ(hours(0), 0.0);
    EXPECT_EQ(hours(1), 3600.0);
    EXPECT_EQ(hours(-2), -7200.0);
    EXPECT_EQ(hours(largest / 3600), static_cast<double>(largest / 3600 * 3600));
}

TEST(Integers, CountDays)
{
    EXPECT_EQ(days(0), 0.0);
    EXPECT_EQ(days(1), 86400.0);
    EXPECT_EQ(days(-1), -86400.0);
}

TEST(Integers, CountDaysWhoseHoursFitAlone)
{
    const auto count = largest / 3600;

    EXPECT_EQ(days(count), static_cast<double>(count * 3600) * 24.0);
    EXPECT_GT(days(count), static_cast<double>(largest));
}

TEST(Integers, CountTimeBeforeTheProgramRuns) { static_assert(hours(1) == 3600.0 && in(1, Range(0, 2))); }

TEST(Integers, CountTimeInWholeSignedNumbersAlone)
{
    EXPECT_TRUE(CountsMinutes<int>);
    EXPECT_TRUE(CountsMinutes<std::int64_t>);
    EXPECT_FALSE(CountsMinutes<double>);
    EXPECT_FALSE(CountsMinutes<std::uint64_t>);
    EXPECT_FALSE(CountsMinutes<bool>);
}

TEST(IntegersDeathTest, DoNotCountMoreMinutesThanFit)
{
    EXPECT_DEATH(static_cast<void>(minutes(largest)), overflow);
    EXPECT_DEATH(static_cast<void>(minutes(largest / 60 + 1)), overflow);
    EXPECT_DEATH(static_cast<void>(minutes(smallest)), overflow);
}

TEST(IntegersDeathTest, DoNotCountMoreHoursThanFit)
{
    EXPECT_DEATH(static_cast<void>(hours(largest / 3600 + 1)), overflow);
    EXPECT_DEATH(static_cast<void>(hours(smallest)), overflow);
}

TEST(IntegersDeathTest, DoNotCountMoreDaysThanTheirHoursFit)
{
    EXPECT_DEATH(static_cast<void>(days(largest / 3600 + 1)), overflow);
    EXPECT_DEATH(static_cast<void>(days(largest)), overflow);
}
