#include "Orrenby/Platform/Objects/NSSet.hpp"

#include <gmock/gmock.h>

using namespace orrenby;
using ::testing::ElementsAre;

TEST(NSSet, HoldsEachValueOnce)
{
    EXPECT_THAT((NSSet{1, "a", 1, 1.0}.allObjects()), ElementsAre(Any(1), Any("a"), Any(1.0)));
    EXPECT_THAT(NSSet(Array{2, 2}).allObjects(), ElementsAre(Any(2)));
}

TEST(NSSet, TellsWhetherAnInsertedValueIsNew)
{
    NSSet set;

    EXPECT_TRUE(set.insert("a"));
    EXPECT_FALSE(set.insert("a"));
    EXPECT_EQ(set.size(), 1U);
}

TEST(NSSet, IsWalkedInTheOrderOfInsertion)
{
    EXPECT_THAT((NSSet{3, 1, 2}), ElementsAre(Any(3), Any(1), Any(2)));
}

TEST(NSSet, ComparesAndHashesWithoutRegardToOrder)
{
    EXPECT_EQ((NSSet{1, 2}), (NSSet{2, 1}));
    EXPECT_EQ((NSSet{1, 2}.hash()), (NSSet{2, 1}.hash()));
    EXPECT_NE((NSSet{1, 2}), (NSSet{1, 3}));
    EXPECT_NE((NSSet{1}), (NSSet{1, 2}));
}

TEST(NSSet, PrintsSortedByPrintedForm)
{
    EXPECT_EQ(describe(NSSet{"b", 2, "a", 10}), R"(["a", "b", 10, 2])");
    EXPECT_EQ(describe(NSSet()), "[]");
    EXPECT_EQ(debugDescribe(NSSet{"b"}), R"(["b"])");
}

TEST(NSSet, Erases)
{
    NSSet set = {1, 2, 3};

    EXPECT_TRUE(set.erase(1));
    EXPECT_FALSE(set.erase(1));
    EXPECT_THAT(set, ElementsAre(Any(2), Any(3)));
    EXPECT_TRUE(set.contains(3));
}

TEST(NSSet, FindsEveryMemberOfALargeSet)
{
    NSSet set;
    for (int number = 0; number < 1000; ++number)
        set.insert(number);

    for (int number = 0; number < 1000; ++number)
        EXPECT_TRUE(set.contains(number));
    EXPECT_FALSE(set.contains(1000));
    EXPECT_FALSE(set.contains("1"));
}

TEST(NSSet, CanBeUsedAgainAfterClear)
{
    NSSet set = {1, 2};
    set.clear();
    EXPECT_FALSE(set.contains(1));

    EXPECT_TRUE(set.insert(1));
    EXPECT_EQ(set, NSSet{1});
}
