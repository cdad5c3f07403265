#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"

#include "Orrenby/Testing/LogCapture.hpp"
#include "ServiceParts.hpp"
#include <gmock/gmock.h>
#include <string>

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
using ::testing::UnorderedElementsAre;

TEST(ServiceDecoder, RefusesAKeyThatIsRegisteredTwice)
{
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);
    int calls = 0;

    try {
        services.register_<int>("user", [&](int) { ++calls; });
        ADD_FAILURE() << "nothing was thrown";
    } catch (const ServiceDecoder::Error& error) {
        EXPECT_EQ(error.kind(), ServiceDecoder::Error::Kind::duplicateKey);
        EXPECT_EQ(error.key(), ServiceKey("user"));
    }
    services.decode(wholeResponse);

    EXPECT_THAT(arrived.users, ElementsAre(ann));
    EXPECT_EQ(calls, 0);
    EXPECT_THAT(services.registeredKeys(), UnorderedElementsAre(ServiceKey("user"), ServiceKey("settings")));
}

TEST(ServiceDecoder, TellsItsRegisteredKeys)
{
    Arrived arrived;
    ServiceDecoder services;
    EXPECT_THAT(services.registeredKeys(), IsEmpty());

    registerBoth(services, arrived);

    EXPECT_THAT(services.registeredKeys(), UnorderedElementsAre(ServiceKey("user"), ServiceKey("settings")));
}

TEST(ServiceDecoder, TriesToRegister)
{
    ServiceDecoder services;

    const auto first = services.tryRegister<int>("count", [](int) {});
    const auto second = services.tryRegister("count", [](int) {});
    const auto third = services.tryRegister([](const Settings&) {});
    const auto fourth = services.tryRegister<Settings>([](const Settings&) {});

    EXPECT_TRUE(first.isSuccess());
    EXPECT_EQ(second.error(), ServiceDecoder::Error::duplicateKey("count"));
    EXPECT_TRUE(third.isSuccess());
    EXPECT_EQ(fourth.error(), ServiceDecoder::Error::duplicateKey("settings"));
}

TEST(ServiceDecoder, RegistersFromACallableForTheNextResponse)
{
    int calls = 0;
    ServiceDecoder services;
    services.register_<int>("a", [&](int) {
        for (int number = 0; number < 40; ++number)
            static_cast<void>(services.tryRegister<int>("b" + std::to_string(number), [&](int) { ++calls; }));
    });

    services.decode(R"({"a": 1, "b7": 2})");
    EXPECT_EQ(calls, 0);
    services.decode(R"({"a": 1, "b7": 2})");

    EXPECT_EQ(calls, 1);
    EXPECT_EQ(services.registeredKeys().size(), 41U);
}

TEST(ServiceDecoder, SaysNothingOfARegistrationOnTheMainThread)
{
    const LogCapture log;
    ServiceDecoder services;

    services.register_<int>("count", [](int) {});

    EXPECT_EQ(log.count(), 0U);
}
