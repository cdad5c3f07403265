#include "Orrenby/Platform/Objects/NSNull.hpp"

#include "Orrenby/Platform/Objects/Any.hpp"
#include <gmock/gmock.h>

using namespace orrenby;

TEST(NSNull, HasOneValue)
{
    EXPECT_EQ(NSNull(), NSNull());
    EXPECT_EQ(std::hash<NSNull>()(NSNull()), std::hash<NSNull>()(NSNull()));
}

TEST(NSNull, PrintsInAngleBrackets)
{
    EXPECT_EQ(describe(NSNull()), "<null>");
    EXPECT_EQ(debugDescribe(NSNull()), "<null>");
    EXPECT_EQ(typeName(NSNull()), "NSNull");
}

TEST(NSNull, IsWhatANullAnyHolds)
{
    EXPECT_EQ(Any(NSNull()), Any());
    EXPECT_EQ(Any().cast<NSNull>(), NSNull());
    EXPECT_EQ(Any(0).cast<NSNull>(), std::nullopt);
}
