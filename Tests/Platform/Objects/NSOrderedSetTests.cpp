#include "Orrenby/Platform/Objects/NSOrderedSet.hpp"

#include <gmock/gmock.h>

using namespace orrenby;
using ::testing::ElementsAre;

TEST(NSOrderedSet, HoldsEachValueOnceInItsFirstPlace)
{
    EXPECT_THAT((NSOrderedSet{2, 1, 2}), ElementsAre(Any(2), Any(1)));
    EXPECT_THAT(NSOrderedSet(Array{"a", "a"}).array(), ElementsAre(Any("a")));
}

TEST(NSOrderedSet, KnowsPositions)
{
    const NSOrderedSet set = {"a", "b"};

    EXPECT_EQ(set[1], "b");
    EXPECT_EQ(set.index("b"), 1U);
    EXPECT_EQ(set.index("c"), std::nullopt);
}

TEST(NSOrderedSet, TerminatesBeyondTheEnd)
{
    const NSOrderedSet set = {"a"};

    EXPECT_DEATH(set[1], "Fatal error: Position out of range: file Platform/NSOrderedSet, line 20\n");
}

TEST(NSOrderedSet, ComparesWithRegardToOrder)
{
    EXPECT_EQ((NSOrderedSet{1, 2}), (NSOrderedSet{1, 2}));
    EXPECT_NE((NSOrderedSet{1, 2}), (NSOrderedSet{2, 1}));
    EXPECT_EQ(Any(NSOrderedSet{1}), Any(NSOrderedSet{1}));
}

TEST(NSOrderedSet, PrintsLikeAList)
{
    EXPECT_EQ(describe(NSOrderedSet{2, "a", 1}), R"([2, "a", 1])");
    EXPECT_EQ(debugDescribe(NSOrderedSet()), "[]");
}

TEST(NSOrderedSet, MovesLaterPositionsUpWhenErasing)
{
    NSOrderedSet set = {1, 2, 3};
    set.erase(1);

    EXPECT_EQ(set.index(3), 1U);
}
