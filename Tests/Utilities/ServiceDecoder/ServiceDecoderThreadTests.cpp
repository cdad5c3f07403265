#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"

#include "Orrenby/Testing/LogCapture.hpp"
#include "ServiceParts.hpp"
#include <atomic>
#include <gmock/gmock.h>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::LogCapture;
using orrenby::testing::Settings;
using orrenby::testing::User;
using orrenby::testing::wholeResponse;
using ::testing::ElementsAre;

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
