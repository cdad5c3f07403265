#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include <bit>
#include <cmath>
#include <cstdlib>
#include <gmock/gmock.h>
#include <limits>
#include <random>

using namespace orrenby;
using Reading = NSJSONSerialization::ReadingOptions;
using Writing = NSJSONSerialization::WritingOptions;

// The numbers of JSON, seen through the untyped reader and writer.

namespace {

Any read(std::string_view text)
{
    return NSJSONSerialization::JSONObjectWithData(dataFromText(text), Reading::FragmentsAllowed);
}

std::optional<std::int64_t> integer(std::string_view text) { return read(text).cast<std::int64_t>(); }

std::string written(double value)
{
    return *textFromData(NSJSONSerialization::dataWithJSONObject(value, Writing::FragmentsAllowed));
}

std::string repeated(char digit, std::size_t count) { return std::string(count, digit); }

} // namespace

TEST(JSONNumber, IsAnIntegerWhenItIsExactlyOne)
{
    EXPECT_EQ(integer("1.0"), 1);
    EXPECT_EQ(integer("-12.50e1"), -125);
    EXPECT_EQ(integer("1e18"), 1'000'000'000'000'000'000);
    EXPECT_EQ(integer("0e999999999"), 0);
    EXPECT_EQ(integer("0.000"), 0);
    EXPECT_EQ(integer("123.456e3"), 123'456);
    EXPECT_EQ(integer("100e-2"), 1);
    EXPECT_EQ(integer("1" + repeated('0', 400) + "e-400"), 1);
    EXPECT_EQ(integer("0." + repeated('0', 400) + "1e401"), 1);
    EXPECT_EQ(integer("9223372036854775807.000"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(integer("-9223372036854775808e0"), std::numeric_limits<std::int64_t>::min());
}

TEST(JSONNumber, IsNoIntegerWhenAnythingWouldBeLost)
{
    EXPECT_EQ(integer("0.1"), std::nullopt);
    EXPECT_EQ(integer("1e-1"), std::nullopt);
    EXPECT_EQ(integer("12.345e2"), std::nullopt);
    EXPECT_EQ(integer("1e-999999999"), 0) << "too small for a double: it is 0";
}

TEST(JSONNumber, IsTheNearestDoubleAsStrtodSays)
{
    std::mt19937_64 engine(7);
    for (int round = 0; round < 20'000; ++round) {
        std::string text = round % 2 == 0 ? "" : "-";
        text += std::to_string(1 + engine() % 9) + "." + std::to_string(engine());
        if (round % 3 == 0)
            text += std::to_string(engine()) + std::to_string(engine());
        text += "e" + std::to_string(static_cast<int>(engine() % 640) - 330);
        const double expected = std::strtod(text.c_str(), nullptr);
        if (std::isinf(expected))
            continue;

        const auto value = read(text);
        const auto integral = value.cast<std::int64_t>();
        const double actual = value.cast<double>().value_or(integral ? static_cast<double>(*integral) : -1);
        ASSERT_EQ(actual, expected) << text;
    }
}

TEST(JSONNumber, ReadsBackAsTheSameDouble)
{
    std::mt19937_64 engine(11);
    for (int round = 0; round < 100'000; ++round) {
        const auto bits = std::bit_cast<double>(engine());
        const auto few = static_cast<double>(
                             static_cast<std::int64_t>(engine() % 2'000'000'000) - 1'000'000'000)
            / 1000;
        const double value = round % 2 == 0 ? bits : few;
        if (!std::isfinite(value))
            continue;
        const auto text = written(value);

        ASSERT_EQ(std::bit_cast<std::uint64_t>(std::strtod(text.c_str(), nullptr)),
            std::bit_cast<std::uint64_t>(value))
            << text;
    }
}

TEST(JSONNumber, IsWrittenWithTheFewestDigits)
{
    EXPECT_EQ(written(0.1), "0.1");
    EXPECT_EQ(written(-12.75), "-12.75");
    EXPECT_EQ(written(100), "100");
    EXPECT_EQ(written(-0.001), "-0.001");
    EXPECT_EQ(written(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(written(-0.0), "-0.0");
    EXPECT_EQ(written(0), "0");
    EXPECT_EQ(written(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
    EXPECT_EQ(written(std::numeric_limits<double>::denorm_min()), "5e-324");
    EXPECT_EQ(written(9007199254740993.0), "9007199254740992");
    EXPECT_EQ(written(999999.999999), "999999.999999");
}

TEST(JSONNumber, KeepsExtremeIntegers)
{
    const Array values = {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(),
        0, -1, 10, 99, 100, 12345, std::numeric_limits<std::uint64_t>::max()};

    EXPECT_EQ(textFromData(NSJSONSerialization::dataWithJSONObject(values)),
        "[-9223372036854775808,9223372036854775807,0,-1,10,99,100,12345,18446744073709551615]");
}
