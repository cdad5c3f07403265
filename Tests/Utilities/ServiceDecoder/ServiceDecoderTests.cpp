#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"

#include "Orrenby/Testing/LogCapture.hpp"
#include "Orrenby/Utilities/ServiceDecoder/KeyedServiceResponse.hpp"
#include "ServiceParts.hpp"
#include <atomic>
#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::LogCapture;
using orrenby::testing::Settings;
using orrenby::testing::User;
using orrenby::testing::wholeResponse;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace {

/// What arrived, in order.
struct Arrived {
    std::vector<User> users;
    std::vector<Settings> settings;
};

void registerBoth(ServiceDecoder& services, Arrived& arrived)
{
    services.register_<User>("user", [&](const User& user) { arrived.users.push_back(user); });
    services.register_<Settings>(
        "settings", [&](const Settings& settings) { arrived.settings.push_back(settings); });
}

/// The decoding errors that are thrown for a response.
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

const auto ann = User{"Ann", 41};

} // namespace

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

TEST(ServiceDecoder, TakesTheKeyFromTheType)
{
    //! [Registering a type with a key of its own]
    struct Weather {
        double degrees = 0;

        static ServiceKey serviceKey() { return "weather"; }
    };
    double degrees = 0;

    ServiceDecoder services;
    services.register_([&](const Weather& weather) { degrees = weather.degrees; });

    services.decode(R"({"weather": {"degrees": 21.5}})");
    //! [Registering a type with a key of its own]

    EXPECT_EQ(degrees, 21.5);
    EXPECT_THROW(services.register_<Weather>([](Weather) {}), ServiceDecoder::Error);
}

static_assert(ServiceDecodable<Settings>);
static_assert(!ServiceDecodable<User> && !ServiceDecodable<int>);

TEST(ServiceDecoder, ReportsARegistrationFromAnotherThreadAndMakesIt)
{
    const LogCapture log;
    int calls = 0;
    ServiceDecoder services;

    std::thread([&] { services.register_<int>("count", [&](int) { ++calls; }); }).join();
    services.decode(R"({"count": 1})");

    EXPECT_EQ(calls, 1);
    ASSERT_EQ(log.count(), 1U);
    EXPECT_EQ(log.entries()[0].level, Log::Level::critical);
    EXPECT_EQ(log.entries()[0].event.description(),
        "C ServiceDecoder:56 register(_:onLoad:) [BG] register should be called on main thread");
}

TEST(ServiceDecoder, ReportsARegistrationFromAnotherThreadAlsoWhenItFails)
{
    const LogCapture log;
    ServiceDecoder services;
    services.register_<int>("count", [](int) {});

    std::thread([&] { EXPECT_TRUE(services.tryRegister<int>("count", [](int) {}).isFailure()); }).join();

    EXPECT_THAT(log.messages(), ElementsAre("register should be called on main thread"));
}

TEST(ServiceDecoder, SaysNothingOfARegistrationOnTheMainThread)
{
    const LogCapture log;
    ServiceDecoder services;

    services.register_<int>("count", [](int) {});

    EXPECT_EQ(log.count(), 0U);
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

TEST(ServiceDecoder, DecodesFromACallable)
{
    std::vector<int> values;
    ServiceDecoder services;
    services.register_("inner", [&](const std::string& text) { services.decode(text); });
    services.register_("a", [&](int value) { values.push_back(value); });

    services.decode(R"({"inner": "{\"a\": 1}", "a": 2})");

    EXPECT_THAT(values, ElementsAre(1, 2));
}

TEST(ServiceDecoder, MirrorsItsRegistrationsInTheUserInformation)
{
    ServiceDecoder services;
    EXPECT_EQ(services.jsonDecoder().userInfo(), Dictionary());

    services.register_<int>("a", [](int) {});
    const auto first = services.jsonDecoder().userInfo()["handlers"];
    services.register_<int>("b", [](int) {});
    const auto second = services.jsonDecoder().userInfo()["handlers"];

    EXPECT_THAT(services.jsonDecoder().userInfo().keys(), ElementsAre("handlers"));
    EXPECT_EQ(first.typeName(), "ServiceHandlers");
    EXPECT_NE(first, second);
}

TEST(ServiceDecoder, LeavesTheMirrorAloneWhenARegistrationFails)
{
    ServiceDecoder services;
    services.register_<int>("a", [](int) {});
    const auto before = services.jsonDecoder().userInfo();

    EXPECT_TRUE(services.tryRegister<int>("a", [](int) {}).isFailure());

    EXPECT_EQ(services.jsonDecoder().userInfo(), before);
}

TEST(ServiceDecoder, LetsTypesSeeTheUserInformationBesideTheRegistrations)
{
    struct Unit {
        std::string name;
        static Unit init(const Decoder& decoder)
        {
            return {*decoder.userInfo().cast<std::string>("unit")
                + decoder.singleValueContainer().decode<std::string>()};
        }
    };
    std::string name;
    ServiceDecoder services;
    services.jsonDecoder().userInfo().set("unit", "k");
    services.register_("a", [&](const Unit& unit) { name = unit.name; });

    services.decode(R"({"a": "m"})");

    EXPECT_EQ(name, "km");
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

TEST(ServiceDecoder, DecodesOnSeveralThreadsAtOnce)
{
    constexpr int rounds = 200;
    const LogCapture log;
    std::atomic<int> users = 0;
    std::atomic<int> settings = 0;
    ServiceDecoder services;
    services.register_("user", [&](const User& user) { users += user.age == 41 ? 1 : 1'000'000; });
    services.register_([&](const Settings&) { ++settings; });

    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round)
                services.decode(
                    round % 4 == 0 ? R"({"user": 1, "settings": {"isDark": false}})" : wholeResponse);
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(users, 4 * rounds * 3 / 4);
    EXPECT_EQ(settings, 4 * rounds);
    EXPECT_EQ(log.count(Log::Level::critical), 4U * rounds / 4U);
}

TEST(ServiceDecoder, CallsOnTheThreadThatDecodes)
{
    std::thread::id called;
    ServiceDecoder services;
    services.register_("a", [&](int) { called = std::this_thread::get_id(); });
    std::thread::id other;

    std::thread([&] {
        other = std::this_thread::get_id();
        services.decode(R"({"a": 1})");
    }).join();

    EXPECT_EQ(called, other);
}

using ServiceDecoderDeathTest = ::testing::Test;

TEST(ServiceDecoderDeathTest, EndsTheProcessForAResponseBeforeAnyRegistration)
{
    const ServiceDecoder services;

    EXPECT_DEATH(services.decode("{}"),
        "^Fatal error: ServiceDecoder handlers missing: file Utilities/ServiceDecoder\n");
    EXPECT_DEATH(services.decode("[]"), "ServiceDecoder handlers missing");
}

TEST(ServiceDecoderDeathTest, EndsTheProcessForAnotherKindOfRegistrations)
{
    ServiceDecoder services;
    services.register_<int>("a", [](int) {});
    services.jsonDecoder().userInfo().set("handlers", 7);

    EXPECT_DEATH(services.decode("{}"), "ServiceDecoder handlers missing");
}

TEST(ServiceDecoderDeathTest, EndsTheProcessForAResponseThatADecoderOfAnotherKindDecodes)
{
    EXPECT_DEATH(static_cast<void>(JSONDecoder().decode<KeyedServiceResponse>("{}")),
        "ServiceDecoder handlers missing");
}

TEST(ServiceDecoder, SurvivesWhatIsNoJSONBeforeAnyRegistration)
{
    EXPECT_THROW(ServiceDecoder().decode("{"), DecodingError);
}

TEST(ServiceDecoderError, NamesTheKey)
{
    const auto error = ServiceDecoder::Error::duplicateKey("user");

    EXPECT_EQ(error.description(), "duplicateKey(user)");
    EXPECT_EQ(error.debugDescription(), "ServiceDecoder.Error(duplicateKey(user))");
    EXPECT_EQ(error.nsError(),
        NSError("ServiceDecoder.Error", 1, {{std::string(NSLocalizedDescriptionKey), "duplicateKey(user)"}}));
    EXPECT_EQ(error.customNSError(), std::nullopt);
    EXPECT_EQ(error.clone()->description(), error.description());
    EXPECT_NE(error, ServiceDecoder::Error::duplicateKey("settings"));
}

TEST(ServiceDecoderError, IsCaughtAsAnException)
{
    ServiceDecoder services;
    services.register_<int>("a", [](int) {});
    std::string what;

    try {
        services.register_<int>("a", [](int) {});
    } catch (const std::exception& error) {
        what = error.what();
    }

    EXPECT_EQ(what, "duplicateKey(a)");
}
