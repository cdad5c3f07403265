#include "Orrenby/Standard/Ranges.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(Range, ContainsItsLowerBoundOnly)
{
    const Range range(1, 3);

    EXPECT_TRUE(range.contains(1));
    EXPECT_FALSE(range.contains(3));
    EXPECT_FALSE(range.contains(0));
    EXPECT_FALSE(range.isEmpty());
    EXPECT_TRUE(Range(3, 3).isEmpty());
    EXPECT_FALSE(Range(3, 3).contains(3));
    EXPECT_EQ(range, Range(1, 3));
    EXPECT_NE(range, Range(1, 4));
}

TEST(ClosedRange, ContainsBothBounds)
{
    const ClosedRange range(1, 3);

    EXPECT_TRUE(range.contains(1));
    EXPECT_TRUE(range.contains(3));
    EXPECT_FALSE(range.contains(4));
    EXPECT_EQ(range.lowerBound(), 1);
    EXPECT_EQ(range.upperBound(), 3);
    EXPECT_EQ(range, ClosedRange(1, 3));
}

TEST(RangeDeathTest, TerminatesWhenTheBoundsAreInTheWrongOrder)
{
    EXPECT_DEATH(Range(2, 1),
        "Fatal error: The lower bound of a range is above its upper bound: file Standard/Ranges, line 20");
    EXPECT_DEATH(ClosedRange(2, 1),
        "Fatal error: The lower bound of a range is above its upper bound: file Standard/Ranges, line 45");
}
