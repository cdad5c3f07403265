#include "Orrenby/Platform/Objects/Any.hpp"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

using namespace orrenby;

TEST(Any, CastsANumberReadFromTextBothWays)
{
    const auto integer = Any::parsedNumber(std::int64_t(3));
    const auto number = Any::parsedNumber(2.5);

    EXPECT_EQ(integer.cast<double>(), 3.0);
    EXPECT_EQ(integer.cast<float>(), 3.0F);
    EXPECT_EQ(integer.cast<int>(), 3);
    EXPECT_EQ(integer.cast<bool>(), std::nullopt);
    EXPECT_EQ(number.cast<float>(), 2.5F);
    EXPECT_EQ(number.cast<int>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(4.0).cast<int>(), 4);
    EXPECT_EQ(integer, Any(3));
}

TEST(Any, CastsANumberReadFromTextOnlyWhereNothingIsLost)
{
    constexpr std::int64_t unrepresentable = (std::int64_t(1) << 53) + 1;

    EXPECT_EQ(Any::parsedNumber(unrepresentable).cast<double>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(std::numeric_limits<std::int64_t>::max()).cast<double>(), std::nullopt);
    EXPECT_EQ(
        Any::parsedNumber(std::numeric_limits<std::int64_t>::min()).cast<double>(), -9223372036854775808.0);
    EXPECT_EQ(Any::parsedNumber(9223372036854775808.0).cast<std::int64_t>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(0.1).cast<float>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(1e300).cast<float>(), std::nullopt);
}

TEST(Any, CastsALargeUnsignedNumberReadFromTextBothWays)
{
    constexpr std::uint64_t first = std::uint64_t(1) << 63;
    constexpr std::uint64_t tenToThe19 = 10'000'000'000'000'000'000U;
    const auto integer = Any::parsedNumber(tenToThe19);

    EXPECT_EQ(Any::parsedNumber(first).cast<double>(), 0x1p63);
    EXPECT_EQ(Any::parsedNumber(first).cast<float>(), 0x1p63F);
    EXPECT_EQ(integer.cast<double>(), 1e19);
    EXPECT_EQ(integer.cast<float>(), std::nullopt);
    EXPECT_EQ(integer.cast<std::uint64_t>(), tenToThe19);
    EXPECT_EQ(integer.cast<std::int64_t>(), std::nullopt);
    EXPECT_EQ(integer, Any(tenToThe19));
    EXPECT_EQ(Any::parsedNumber(1e19).cast<std::uint64_t>(), tenToThe19);
    EXPECT_EQ(Any::parsedNumber(std::uint64_t(3)), Any(3));
}

TEST(Any, CastsALargeUnsignedNumberOnlyWhereNothingIsLost)
{
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();

    EXPECT_EQ(Any::parsedNumber(largest).cast<double>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(largest).cast<float>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber((std::uint64_t(1) << 63) + 1).cast<double>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(0x1p64).cast<std::uint64_t>(), std::nullopt);
    EXPECT_EQ(Any::parsedNumber(largest - 2047).cast<double>(), 0x1.fffffffffffffp63);
}
