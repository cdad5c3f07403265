#include "Examples/Fieldbook/Upload/RetryAfter.hpp"

#include "Orrenby/Testing/VirtualWorld.hpp"
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;

std::optional<double> secondsFor(const char* value)
{
    return secondsToRetryAfter({429, "{}", {{"retry-after", value}}});
}

TEST(RetryAfter, IsANumberOfSeconds)
{
    EXPECT_EQ(secondsFor("0"), 0.0);
    EXPECT_EQ(secondsFor("120"), 120.0);
}

TEST(RetryAfter, IsTheTimeToADate)
{
    const orrenby::testing::VirtualWorld world; // 1 January 2030, 00:00 GMT

    EXPECT_EQ(secondsFor("Tue, 01 Jan 2030 00:01:30 GMT"), 90.0);
}

TEST(RetryAfter, IsNothingToWaitForWhereTheDateHasPassed)
{
    const orrenby::testing::VirtualWorld world;

    EXPECT_EQ(secondsFor("Mon, 31 Dec 2029 23:59:59 GMT"), 0.0);
}

TEST(RetryAfter, IsMissingWhereNothingIsSaid) { EXPECT_EQ(secondsToRetryAfter({429, "{}"}), std::nullopt); }

TEST(RetryAfter, IsMissingWhereSomethingElseIsSaid)
{
    for (const auto* const value :
        {"", "soon", "-1", "1.5", "12 ", "99999999999999999999", "2030-01-01", "Tue, 01 Jan 2030 00:01:30"})
        EXPECT_EQ(secondsFor(value), std::nullopt) << value;
}

} // namespace
