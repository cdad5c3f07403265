#include "Orrenby/Platform/Coding/CodingKey.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <gmock/gmock.h>

using namespace orrenby;

TEST(CodingKey, PrintsAsItsText)
{
    EXPECT_EQ(describe(CodingKey("id")), "id");
    EXPECT_EQ(debugDescribe(CodingKey("id")), R"(CodingKey(stringValue: "id", intValue: none))");
}

TEST(CodingKey, HasAnIntegerForAPlaceInAList)
{
    EXPECT_EQ(CodingKey::place(2), CodingKey("Index 2", 2));
    EXPECT_EQ(CodingKey::integer(-3).stringValue(), "-3");
    EXPECT_EQ(debugDescribe(CodingKey::place(0)), R"(CodingKey(stringValue: "Index 0", intValue: 0))");
}

TEST(CodingKey, HashesByItsText)
{
    EXPECT_EQ(std::hash<CodingKey>()("a"), std::hash<CodingKey>()(CodingKey("a")));
    EXPECT_NE(CodingKey("a"), CodingKey("a", 1));
}
