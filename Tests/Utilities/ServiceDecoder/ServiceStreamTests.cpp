#include "Orrenby/Utilities/ServiceDecoder/ServiceStream.hpp"

#include "Orrenby/Testing/LogCapture.hpp"
#include "ServiceParts.hpp"
#include "Tests/Support/StreamEngines.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::BothEngines;
using orrenby::testing::LogCapture;
using orrenby::testing::Settings;
using orrenby::testing::User;
using orrenby::testing::wholeResponse;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

template <class T> auto into(std::vector<T>& values)
{
    return [&values](const T& value) { values.push_back(value); };
}

} // namespace

using ServiceStream = BothEngines;
INSTANTIATE_ON_BOTH_ENGINES(ServiceStream);

TEST_P(ServiceStream, DeliversEachMemberThatComes)
{
    //! [Subscribing to a service]
    ServiceDecoder services;
    const auto users = serviceStream<User>(services, "user");

    std::vector<std::string> names;
    const auto subscription = users.bind([&](const User& user) { names.push_back(user.name); });

    services.decode(R"({"user": {"name": "Ann", "age": 41}})");
    services.decode(R"({"user": {"name": "Bob", "age": 7}})");
    //! [Subscribing to a service]

    EXPECT_THAT(names, ElementsAre("Ann", "Bob"));
}

TEST_P(ServiceStream, GivesNothingBeforeTheFirstMemberCame)
{
    ServiceDecoder services;
    const auto stream = serviceStream<int>(services, "a");
    std::vector<int> values;

    const auto subscription = stream.bind(into(values));
    services.decode("{}");
    services.decode(R"({"a": null})");

    EXPECT_THAT(values, IsEmpty());
}

TEST_P(ServiceStream, GivesTheLastMemberToALateSubscriber)
{
    ServiceDecoder services;
    const auto stream = serviceStream<int>(services, "a");
    services.decode(R"({"a": 1})");
    services.decode(R"({"a": 2})");
    services.decode("{}");
    std::vector<int> values;

    const auto subscription = stream.bind(into(values));
    EXPECT_THAT(values, ElementsAre(2));
    services.decode(R"({"a": 3})");

    EXPECT_THAT(values, ElementsAre(2, 3));
}

TEST_P(ServiceStream, ServesSeveralSubscribers)
{
    ServiceDecoder services;
    const auto stream = serviceStream<int>(services, "a");
    std::vector<int> first;
    std::vector<int> second;

    const auto one = stream.bind(into(first));
    services.decode(R"({"a": 1})");
    const auto two = stream.bind(into(second));
    services.decode(R"({"a": 2})");

    EXPECT_THAT(first, ElementsAre(1, 2));
    EXPECT_THAT(second, ElementsAre(1, 2));
}

TEST_P(ServiceStream, GoesOnAfterAMemberThatDoesNotDecode)
{
    const LogCapture log;
    ServiceDecoder services;
    const auto stream = serviceStream<int>(services, "a");
    std::vector<int> values;
    const auto subscription = stream.bind(into(values));

    services.decode(R"({"a": 1})");
    services.decode(R"({"a": "two"})");
    services.decode(R"({"a": 3})");

    EXPECT_THAT(values, ElementsAre(1, 3));
    ASSERT_EQ(log.count(Log::Level::critical), 1U);
    EXPECT_EQ(log.entries().back().event.properties(), (Dictionary{{"Service Decoder Key", "a"}}));
}

TEST_P(ServiceStream, TakesTheKeyFromTheType)
{
    ServiceDecoder services;
    std::vector<Settings> values;
    const auto subscription = serviceStream<Settings>(services).bind(into(values));

    services.decode(wholeResponse);

    EXPECT_THAT(values, ElementsAre(Settings{true, std::nullopt}));
}

TEST_P(ServiceStream, RefusesAKeyThatIsRegistered)
{
    ServiceDecoder services;
    services.register_<int>("a", [](int) {});

    EXPECT_THROW(static_cast<void>(serviceStream<int>(services, "a")), ServiceDecoder::Error);
    EXPECT_EQ(tryServiceStream<int>(services, "a").error(), ServiceDecoder::Error::duplicateKey("a"));
    EXPECT_TRUE(tryServiceStream<Settings>(services).isSuccess());
    EXPECT_EQ(tryServiceStream<Settings>(services).error(), ServiceDecoder::Error::duplicateKey("settings"));
}

TEST_P(ServiceStream, KeepsTheLastMemberWhenTheDecoderIsGone)
{
    auto services = std::make_unique<ServiceDecoder>();
    const auto stream = serviceStream<int>(*services, "a");
    services->decode(R"({"a": 1})");
    services.reset();
    std::vector<int> values;

    const auto subscription = stream.bind(into(values));

    EXPECT_THAT(values, ElementsAre(1));
}

TEST_P(ServiceStream, NeedsNobodyWhoListens)
{
    ServiceDecoder services;
    static_cast<void>(serviceStream<int>(services, "a"));

    EXPECT_NO_THROW(services.decode(R"({"a": 1})"));
}

TEST_P(ServiceStream, DeliversOnTheThreadThatDecodes)
{
    ServiceDecoder services;
    const auto stream = serviceStream<int>(services, "a");
    std::vector<std::thread::id> threads;
    const auto subscription = stream.bind([&](int) { threads.push_back(std::this_thread::get_id()); });
    std::thread::id other;

    std::thread([&] {
        other = std::this_thread::get_id();
        services.decode(R"({"a": 1})");
    }).join();

    EXPECT_THAT(threads, ElementsAre(other));
}

TEST_P(ServiceStream, LosesNothingOfWhatSeveralThreadsDecode)
{
    constexpr int rounds = 200;
    ServiceDecoder services;
    const auto stream = serviceStream<int>(services, "a");
    int sum = 0; // one delivery at a time
    const auto subscription = stream.bind([&](int value) { sum += value; });

    std::vector<std::thread> threads;
    for (int number = 0; number < 3; ++number)
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round)
                services.decode(R"({"a": 1})");
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(sum, 3 * rounds);
}
