#include "Orrenby/Standard/Ranges.hpp"

#include "Orrenby/Platform/Objects/Printing.hpp"
#include <gmock/gmock.h>
#include <sstream>
#include <unordered_set>

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

TEST(Range, PrintsAsTwoDotsAndALessThan)
{
    std::ostringstream stream;
    stream << Range(1, 3);

    EXPECT_EQ(stream.str(), "1..<3");
}

TEST(ClosedRange, PrintsAsThreeDots)
{
    std::ostringstream stream;
    stream << ClosedRange(-0.5, 3.0);

    EXPECT_EQ(stream.str(), "-0.5...3.0");
}

TEST(Range, HashesByBothBounds)
{
    const std::hash<Range<int>> hash;

    EXPECT_EQ(hash(Range(1, 3)), hash(Range(1, 3)));
    EXPECT_NE(hash(Range(1, 3)), hash(Range(1, 4)));
    EXPECT_EQ((std::unordered_set{ClosedRange(1, 3), ClosedRange(1, 3), ClosedRange(3, 3)}.size()), 2U);
}

TEST(RangeDeathTest, TerminatesWhenTheBoundsAreInTheWrongOrder)
{
    EXPECT_DEATH(Range(2, 1),
        "Fatal error: The lower bound of a range is above its upper bound: file Standard/Ranges, line 20");
    EXPECT_DEATH(ClosedRange(2, 1),
        "Fatal error: The lower bound of a range is above its upper bound: file Standard/Ranges, line 45");
}
