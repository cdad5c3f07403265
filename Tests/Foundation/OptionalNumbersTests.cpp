#include "Orrenby/Foundation/OptionalNumbers.hpp"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <optional>

using namespace orrenby;

namespace {

constexpr auto highest = std::numeric_limits<std::int64_t>::max();
constexpr auto lowest = std::numeric_limits<std::int64_t>::min();

} // namespace

TEST(OptionalNumbers, ReadWhatMayBeAbsent)
{
    //! [Reading what may be absent]
    const std::optional<std::int64_t> stored = 42;
    const std::optional<std::int64_t> missing;

    EXPECT_EQ(intValue(stored), 42);
    EXPECT_EQ(doubleValue(stored), 42.0);
    EXPECT_EQ(intValue(missing), 0);
    EXPECT_FALSE(boolValue(missing));
    //! [Reading what may be absent]
}

TEST(OptionalNumbers, AreZeroOrFalseWhenAbsent)
{
    EXPECT_EQ(boolValue(std::nullopt), false);
    EXPECT_EQ(intValue(Any()), 0);
    EXPECT_EQ(floatValue(std::optional<float>()), 0.0F);
    EXPECT_EQ(doubleValue(std::optional<Any>()), 0.0);
}

TEST(OptionalNumbers, AreAbsentInWhatIsNoNumber)
{
    EXPECT_FALSE(boolValue("1"));
    EXPECT_EQ(intValue("42"), 0);
    EXPECT_EQ(floatValue(Data(3)), 0.0F);
    EXPECT_EQ(doubleValue(std::vector<int>{1}), 0.0);
}

TEST(OptionalNumbers, AreReadAsAnyKind)
{
    EXPECT_TRUE(boolValue(2));
    EXPECT_TRUE(boolValue(-0.5));
    EXPECT_FALSE(boolValue(-0.0));
    EXPECT_TRUE(boolValue(true));
    EXPECT_EQ(intValue(true), 1);
    EXPECT_EQ(intValue(false), 0);
    EXPECT_EQ(floatValue(7), 7.0F);
    EXPECT_EQ(doubleValue(0.5F), 0.5);
    EXPECT_EQ(doubleValue(true), 1.0);
    EXPECT_EQ(intValue(Any::parsedNumber(2.0)), 2);
}

TEST(OptionalNumbers, AreCutToIntegers)
{
    EXPECT_EQ(intValue(2.9), 2);
    EXPECT_EQ(intValue(-2.9), -2);
    EXPECT_EQ(intValue(2.5F), 2);
}

TEST(OptionalNumbers, StayAtTheLimitsOfIntegers)
{
    EXPECT_EQ(intValue(lowest), lowest);
    EXPECT_EQ(intValue(highest), highest);
    EXPECT_EQ(intValue(1e19), highest);
    EXPECT_EQ(intValue(-1e19), lowest);
    EXPECT_EQ(intValue(0x1p63), highest);
    EXPECT_EQ(intValue(-0x1p63), lowest);
    EXPECT_EQ(intValue(std::numeric_limits<double>::infinity()), highest);
    EXPECT_EQ(intValue(std::numeric_limits<std::uint64_t>::max()), highest);
}

TEST(OptionalNumbers, AreInfiniteIn32BitsWhenTheyAreTooLarge)
{
    EXPECT_EQ(floatValue(1e300), std::numeric_limits<float>::infinity());
    EXPECT_EQ(floatValue(-1e300), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(floatValue(1e-300), 0.0F);
}

TEST(OptionalNumbers, ReadLargeUnsignedIntegers)
{
    EXPECT_EQ(doubleValue(std::numeric_limits<std::uint64_t>::max()), 0x1p64);
    EXPECT_EQ(floatValue(std::numeric_limits<std::uint64_t>::max()), 0x1p64F);
    EXPECT_TRUE(boolValue(std::numeric_limits<std::uint64_t>::max()));
}

TEST(OptionalNumbers, TakeNoNumberForTrueAndForIntegerZero)
{
    EXPECT_TRUE(boolValue(std::nan("")));
    EXPECT_EQ(intValue(std::nan("")), 0);
    EXPECT_TRUE(std::isnan(doubleValue(std::nan(""))));
}
