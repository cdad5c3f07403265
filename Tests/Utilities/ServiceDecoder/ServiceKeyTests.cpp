#include "Orrenby/Utilities/ServiceDecoder/ServiceKey.hpp"

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include <gmock/gmock.h>
#include <unordered_set>

using namespace orrenby;

static_assert(CodingKeyType<ServiceKey>);

TEST(ServiceKey, IsMadeOfAnyTextAndOfALiteral)
{
    const ServiceKey literal = "user";

    EXPECT_EQ(literal, ServiceKey(std::string("user")));
    EXPECT_EQ(literal.stringValue, "user");
    EXPECT_EQ(ServiceKey("").stringValue, "");
}

TEST(ServiceKey, CanBeChanged)
{
    ServiceKey key = "user";

    key.stringValue = "settings";

    EXPECT_EQ(key, ServiceKey("settings"));
}

TEST(ServiceKey, StandsForNoInteger)
{
    EXPECT_EQ(ServiceKey("7").intValue(), std::nullopt);
    EXPECT_EQ(ServiceKey::make(7), std::nullopt);
}

TEST(ServiceKey, IsEqualAndHashedByItsText)
{
    const std::unordered_set<ServiceKey> keys = {"user", "settings", "user"};

    EXPECT_EQ(keys.size(), 2U);
    EXPECT_TRUE(keys.contains("settings"));
    EXPECT_NE(ServiceKey("user"), ServiceKey("User"));
}

TEST(ServiceKey, PrintsAsItsText)
{
    EXPECT_EQ(describe(ServiceKey("user")), "user");
    EXPECT_EQ(debugDescribe(ServiceKey("a\"b")), R"(ServiceKey(stringValue: "a\"b", intValue: none))");
}
