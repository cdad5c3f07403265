#include "Orrenby/Standard/Comparables.hpp"

#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

TEST(Comparables, StayInBounds)
{
    //! [Keeping a value in bounds]
    EXPECT_EQ(clamped(15, {0, 10}), 10);
    EXPECT_EQ(clamped(-3, {0, 10}), 0);
    EXPECT_TRUE(isBetween(5, {.min = 1, .max = 5}));
    EXPECT_FALSE(isBetween(5, {.min = 1, .max = 5, .inclusive = false}));
    //! [Keeping a value in bounds]
}

TEST(Clamped, LeavesWhatLiesInTheRange)
{
    EXPECT_EQ(clamped(0, {0, 10}), 0);
    EXPECT_EQ(clamped(7, {0, 10}), 7);
    EXPECT_EQ(clamped(10, {0, 10}), 10);
    EXPECT_EQ(clamped(7, {3, 3}), 3);
    EXPECT_EQ(clamped(std::string("q"), {"a", "m"}), "m");
}

TEST(IsBetween, RegardsTheBoundsAsTold)
{
    EXPECT_TRUE(isBetween(1, {.min = 1, .max = 1, .inclusive = true}));
    EXPECT_FALSE(isBetween(1, {.min = 1, .max = 1, .inclusive = false}));
    EXPECT_TRUE(isBetween(2, {.min = 1, .max = 3, .inclusive = false}));
    EXPECT_FALSE(isBetween(2, {.min = 3, .max = 1}));
}
