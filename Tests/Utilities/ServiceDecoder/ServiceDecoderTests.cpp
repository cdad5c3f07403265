#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"

#include "Orrenby/Testing/LogCapture.hpp"
#include "ServiceParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::ann;
using orrenby::testing::Arrived;
using orrenby::testing::LogCapture;
using orrenby::testing::registerBoth;
using orrenby::testing::Settings;
using orrenby::testing::User;
using orrenby::testing::wholeResponse;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ServiceDecoder, HandsEachRegisteredMemberToItsCallableOnce)
{
    const LogCapture log;
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);

    services.decode(wholeResponse);

    EXPECT_THAT(arrived.users, ElementsAre(ann));
    EXPECT_THAT(arrived.settings, ElementsAre(Settings{true, std::nullopt}));
    EXPECT_EQ(log.count(), 0U);
}

TEST(ServiceDecoder, IsUsedLikeThis)
{
    //! [Registering services]
    std::string greeting;
    std::vector<std::string> news;

    ServiceDecoder services;
    services.register_("user", [&](const User& user) { greeting = "Hello, " + user.name; });
    services.register_<std::vector<std::string>>("news", [&](auto texts) { news = std::move(texts); });

    services.decode(R"({"news": ["Rain", "Sun"], "user": {"name": "Ann", "age": 41}, "version": 3})");
    //! [Registering services]

    EXPECT_EQ(greeting, "Hello, Ann");
    EXPECT_THAT(news, ElementsAre("Rain", "Sun"));
}

TEST(ServiceDecoder, CallsInTheOrderOfRegistration)
{
    std::vector<int> called;
    ServiceDecoder services;
    for (const int number : {3, 1, 2})
        services.register_<int>(std::to_string(number), [&](int value) { called.push_back(value); });

    services.decode(R"({"1": 1, "2": 2, "3": 3})");

    EXPECT_THAT(called, ElementsAre(3, 1, 2));
}

TEST(ServiceDecoder, CallsNobodyForAMissingMember)
{
    const LogCapture log;
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);

    services.decode(R"({"user": {"name": "Ann", "age": 41}})");
    services.decode("{}");

    EXPECT_THAT(arrived.users, ElementsAre(ann));
    EXPECT_THAT(arrived.settings, IsEmpty());
    EXPECT_EQ(log.count(), 0U);
}

TEST(ServiceDecoder, CallsNobodyForNull)
{
    const LogCapture log;
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);

    services.decode(R"({"settings": null, "user": {"name": "Ann", "age": 41}})");

    EXPECT_THAT(arrived.users, ElementsAre(ann));
    EXPECT_THAT(arrived.settings, IsEmpty());
    EXPECT_EQ(log.count(), 0U);
}

TEST(ServiceDecoder, CallsNobodyForNullEvenWhereTheTypeIsOptional)
{
    int calls = 0;
    ServiceDecoder services;
    services.register_("count", [&](std::optional<int>) { ++calls; });

    services.decode(R"({"count": null})");
    services.decode(R"({"count": 3})");

    EXPECT_EQ(calls, 1);
}

TEST(ServiceDecoder, DecodesEachResponseAnew)
{
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);

    services.decode(wholeResponse);
    services.decode(R"({"user": {"name": "Bob", "age": 7}})");

    EXPECT_THAT(arrived.users, ElementsAre(ann, User{"Bob", 7}));
    EXPECT_EQ(arrived.settings.size(), 1U);
}

TEST(ServiceDecoder, TakesTheLastOfRepeatedMembers)
{
    std::vector<int> values;
    ServiceDecoder services;
    services.register_("count", [&](int value) { values.push_back(value); });

    services.decode(R"({"count": 1, "count": 2})");

    EXPECT_THAT(values, ElementsAre(2));
}

TEST(ServiceDecoder, ReadsOtherEncodings)
{
    std::vector<int> values;
    ServiceDecoder services;
    services.register_("a", [&](int value) { values.push_back(value); });
    std::string text = "\xFE\xFF";
    for (const char unit : std::string_view(R"({"a":7})"))
        text += std::string({'\0', unit});

    services.decode(text);

    EXPECT_THAT(values, ElementsAre(7));
}

TEST(ServiceDecoder, HandsOverValuesThatCannotBeCopied)
{
    std::unique_ptr<int> value;
    ServiceDecoder services;
    services.register_("a", [&](std::unique_ptr<int> loaded) { value = std::move(loaded); });

    services.decode(R"({"a": 7})");

    ASSERT_NE(value, nullptr);
    EXPECT_EQ(*value, 7);
}

TEST(ServiceDecoder, KeepsItsCallablesAsLongAsItself)
{
    auto owned = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = owned;
    {
        ServiceDecoder services;
        services.register_("a", [owned = std::move(owned)](int value) { *owned = value; });
        services.decode(R"({"a": 7})");

        ASSERT_FALSE(watch.expired());
        EXPECT_EQ(*watch.lock(), 7);
    }
    EXPECT_TRUE(watch.expired());
}

TEST(ServiceDecoder, DecodesFromACallable)
{
    std::vector<int> values;
    ServiceDecoder services;
    services.register_("inner", [&](const std::string& text) { services.decode(text); });
    services.register_("a", [&](int value) { values.push_back(value); });

    services.decode(R"({"inner": "{\"a\": 1}", "a": 2})");

    EXPECT_THAT(values, ElementsAre(1, 2));
}

TEST(ServiceDecoder, FollowsTheStrategiesOfItsDecoder)
{
    std::vector<int> values;
    ServiceDecoder services;
    services.jsonDecoder().setKeyDecodingStrategy(JSONDecoder::KeyDecodingStrategy::convertFromSnakeCase());
    services.register_("openReports", [&](int value) { values.push_back(value); });

    services.decode(R"({"open_reports": 3})");

    EXPECT_THAT(values, ElementsAre(3));
}
