#include "Orrenby/Platform/Objects/Array.hpp"

#include <gmock/gmock.h>

using namespace orrenby;
using ::testing::ElementsAre;

TEST(Array, HoldsValuesOfEveryKindInOrder)
{
    const Array list = {1, "two", 3.0};

    EXPECT_THAT(list, ElementsAre(Any(1), Any("two"), Any(3.0)));
    EXPECT_EQ(describe(list), R"([1, "two", 3.0])");
    EXPECT_EQ(typeName(list), "Array<Any>");
}

TEST(Array, PrintsAnEmptyList) { EXPECT_EQ(describe(Array()), "[]"); }

TEST(Array, IsAValue)
{
    const Array list = {1};
    Array copy = list;
    copy.emplace_back("two");

    EXPECT_EQ(list, (Array{1}));
    EXPECT_EQ(copy, (Array{1, "two"}));
}
