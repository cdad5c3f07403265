#include "Orrenby/Utilities/Log/DeferredEvent.hpp"

#include "LogFixture.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace orrenby;
using testing::ElementsAre;

using LogDeferredEvent = LogFixture;

TEST_F(LogDeferredEvent, CanBeKeptAsACopy)
{
    //! [Keeping an event]
    auto latest = std::make_shared<std::vector<Log::DeferredEvent>>();
    Log::onEvent([latest](Log::Level level, const Log::DeferredEvent& event) {
        if (level >= Log::Level::warning)
            latest->push_back(event);
    });

    Log::info("connected");
    Log::warning("slow");

    ASSERT_EQ(latest->size(), 1U);
    EXPECT_EQ(latest->front()().message(), "slow");
    //! [Keeping an event]
    EXPECT_EQ(latest->front().level(), Log::Level::warning);
}

TEST_F(LogDeferredEvent, OutlivesTheCallersLocalsAsACopy)
{
    std::unique_ptr<Log::DeferredEvent> kept;
    Log::onEvent([&](Log::Level, const Log::DeferredEvent& event) {
        kept = std::make_unique<Log::DeferredEvent>(event);
    });

    {
        auto local = std::make_unique<std::string>("a local that is gone");
        Log::_append([] { return false; }, Log::Level::info, [&] { return *local; },
            [&] {
                return Dictionary{{"size", local->size()}};
            });
    }
    const auto copyOfCopy = *kept;

    EXPECT_EQ((*kept)().message(), "a local that is gone");
    EXPECT_EQ((*kept)().properties(), (Dictionary{{"size", 20}}));
    EXPECT_EQ(copyOfCopy(), (*kept)());
}

TEST_F(LogDeferredEvent, CanBeAssigned)
{
    std::vector<Log::DeferredEvent> kept;
    Log::onEvent([&](Log::Level, const Log::DeferredEvent& event) { kept.push_back(event); });
    Log::info("first");
    Log::error("second");

    kept[0] = kept[1];
    const auto& alias = kept[1];
    kept[1] = alias;

    EXPECT_EQ(kept[0]().message(), "second");
    EXPECT_EQ(kept[0].level(), Log::Level::error);
    EXPECT_EQ(kept[1]().message(), "second");
}

TEST_F(LogDeferredEvent, GivesTheSameEventAgain)
{
    int evaluations = 0;
    bool isSame = false;
    Log::onEvent([&](Log::Level, const Log::DeferredEvent& event) {
        const auto* first = &event();
        isSame = first == &event();
    });

    Log::info([&] { return ++evaluations; });

    EXPECT_TRUE(isSame);
    EXPECT_EQ(evaluations, 1);
}

TEST_F(LogDeferredEvent, EvaluatesOnceForTheOriginalAndItsCopies)
{
    int evaluations = 0;
    std::vector<std::string> messages;
    Log::onEvent([&](Log::Level, const Log::DeferredEvent& event) {
        const auto copy = event;
        messages = {event().message(), copy().message()};
    });

    Log::info([&] { return ++evaluations; });

    EXPECT_THAT(messages, ElementsAre("1", "1"));
    EXPECT_EQ(evaluations, 1);
}

TEST_F(LogDeferredEvent, EvaluatesNothingUntilItIsCalled)
{
    int evaluations = 0;
    int calls = 0;
    Log::onEvent([&](Log::Level, const Log::DeferredEvent&) { ++calls; });

    Log::info([&] { return ++evaluations; });
    Log::critical("failed", [&] { return Dictionary{{"n", ++evaluations}}; });

    EXPECT_EQ(calls, 2);
    EXPECT_EQ(evaluations, 0);
}

TEST_F(LogDeferredEvent, PassesOnWhatTheItemThrowsAndTriesAgain)
{
    int attempts = 0;
    Log::onEvent([&](Log::Level, const Log::DeferredEvent& event) {
        EXPECT_THROW(event(), std::runtime_error);
        EXPECT_EQ(event().message(), "second attempt");
    });

    Log::info([&] {
        if (++attempts == 1)
            throw std::runtime_error("first attempt");
        return "second attempt";
    });

    EXPECT_EQ(attempts, 2);
}
