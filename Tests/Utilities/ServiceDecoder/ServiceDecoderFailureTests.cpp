#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"

#include "Orrenby/Testing/LogCapture.hpp"
#include "ServiceParts.hpp"
#include <gmock/gmock.h>
#include <map>
#include <stdexcept>
#include <string>

using namespace orrenby;
using orrenby::testing::Arrived;
using orrenby::testing::LogCapture;
using orrenby::testing::registerBoth;
using orrenby::testing::Settings;
using orrenby::testing::User;
using orrenby::testing::wholeResponse;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// The decoding error that is thrown for a response.
std::string failure(const ServiceDecoder& services, std::string_view response)
{
    try {
        services.decode(response);
        return "no failure";
    } catch (const DecodingError& error) {
        return error.description();
    }
}

Dictionary ofKey(std::string_view key) { return {{"Service Decoder Key", key}}; }

} // namespace

TEST(ServiceDecoder, LogsAMemberOfTheWrongShapeAndLetsTheOthersThrough)
{
    const LogCapture log;
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);

    services.decode(R"({"user": {"name": "Ann", "age": "old"}, "settings": {"isDark": true}})");

    EXPECT_THAT(arrived.users, IsEmpty());
    EXPECT_THAT(arrived.settings, ElementsAre(Settings{true, std::nullopt}));
    ASSERT_EQ(log.count(), 1U);
    EXPECT_EQ(log.entries()[0].level, Log::Level::critical);
    EXPECT_EQ(log.entries()[0].event.description(),
        "C ServiceDecoder:65 register(_:onLoad:) [MAIN] DecodingError(typeMismatch(Int, at user > age, line 1, "
        "column 33: Expected Int but found a text)) [\"Service Decoder Key\": \"user\"]");
}

TEST(ServiceDecoder, HandsTheErrorItselfToTheHandlerOfCriticalErrors)
{
    const LogCapture log;
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);

    services.decode(R"({"user": {"name": "Ann"}})");

    const auto expected = [] {
        try {
            JSONDecoder().decode<std::map<std::string, User>>(R"({"user": {"name": "Ann"}})");
            return NSError("no failure", 0);
        } catch (const DecodingError& error) {
            return error.nsError();
        }
    }();
    ASSERT_EQ(log.criticalErrors().size(), 1U);
    EXPECT_EQ(log.criticalErrors()[0].error, expected);
    EXPECT_EQ(expected.code(), 4865);
}

TEST(ServiceDecoder, LogsEachMemberThatFails)
{
    const LogCapture log;
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);

    services.decode(R"({"settings": [], "user": 7})");

    ASSERT_EQ(log.count(), 2U);
    EXPECT_EQ(log.entries()[0].event.properties(), ofKey("user"));
    EXPECT_EQ(log.entries()[1].event.properties(), ofKey("settings"));
}

TEST(ServiceDecoder, LogsWhatACallableThrowsAndLetsTheOthersThrough)
{
    const LogCapture log;
    int calls = 0;
    ServiceDecoder services;
    services.register_<int>("a", [](int) { throw std::runtime_error("full"); });
    services.register_<int>("b", [](int) { throw 7; });
    services.register_<int>("c", [&](int) { ++calls; });

    services.decode(R"({"a": 1, "b": 2, "c": 3})");

    EXPECT_EQ(calls, 1);
    EXPECT_THAT(log.messages(Log::Level::critical), ElementsAre("runtime_error(full)", ::testing::_));
    EXPECT_EQ(log.entries()[0].event.properties(), ofKey("a"));
    EXPECT_EQ(log.entries()[1].event.properties(), ofKey("b"));
}

TEST(ServiceDecoder, ThrowsForWhatIsNoJSONAndCallsNobody)
{
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);

    EXPECT_EQ(failure(services, R"({"user": {"name": "Ann", "age": 41}, )"),
        "dataCorrupted(at the root, line 1, column 38: No valid JSON: Unexpected end of the text at line 1, "
        "column 38)");
    EXPECT_NE(failure(services, ""), "no failure");
    EXPECT_THAT(arrived.users, IsEmpty());
}

TEST(ServiceDecoder, ThrowsForATopLevelThatIsNoObject)
{
    const LogCapture log;
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);

    for (const char* response : {"[]", "7", "\"user\"", "null", "true"})
        EXPECT_THROW(services.decode(response), DecodingError) << response;

    EXPECT_EQ(failure(services, "[]"),
        "typeMismatch(Dictionary<String, Any>, at the root, line 1, column 1: Expected Dictionary<String, "
        "Any> but found a list)");
    EXPECT_EQ(log.count(), 0U);
}

TEST(ServiceDecoder, TriesToDecode)
{
    Arrived arrived;
    ServiceDecoder services;
    registerBoth(services, arrived);

    EXPECT_TRUE(services.tryDecode(wholeResponse).isSuccess());
    const auto outcome = services.tryDecode("[]");
    ASSERT_TRUE(outcome.isFailure());
    EXPECT_NE(outcome.error()->cast<DecodingError>(), nullptr);
}
