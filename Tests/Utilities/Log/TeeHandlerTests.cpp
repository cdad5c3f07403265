#include "Orrenby/Utilities/Log/TeeHandler.hpp"

#include "LogFixture.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using testing::ElementsAre;

using LogTeeHandler = LogFixture;

TEST_F(LogTeeHandler, LogsToSeveralPlaces)
{
    const auto first = Log::CaptureHandler();
    const auto second = Log::CaptureHandler();

    //! [Logging to several places]
    Log::onEvent(Log::TeeHandler(first, second));
    //! [Logging to several places]
    Log::info("text");

    EXPECT_THAT(first.messages(), ElementsAre("text"));
    EXPECT_EQ(second.entries(), first.entries());
}

TEST_F(LogTeeHandler, CallsItsHandlersInOrder)
{
    std::vector<int> calls;
    const auto handler = [&](int number) {
        return [&calls, number](Log::Level, const Log::DeferredEvent&) { calls.push_back(number); };
    };

    Log::onEvent(Log::TeeHandler(handler(1), handler(2), handler(3), handler(4)));
    Log::info("text");

    EXPECT_THAT(calls, ElementsAre(1, 2, 3, 4));
}

TEST_F(LogTeeHandler, HasTheEventMadeAtMostOnce)
{
    int evaluations = 0;
    Log::onEvent(Log::TeeHandler(Log::CaptureHandler(), Log::CaptureHandler(), Log::CaptureHandler()));
    Log::info([&] { return ++evaluations; });
    EXPECT_EQ(evaluations, 1);

    const auto silent = [](Log::Level, const Log::DeferredEvent&) {};
    Log::onEvent(Log::TeeHandler(silent, silent));
    Log::info([&] { return ++evaluations; });
    EXPECT_EQ(evaluations, 1);
}

TEST_F(LogTeeHandler, LeavesOutEmptyHandlers)
{
    Log::onEvent(Log::TeeHandler(nullptr, capture, Log::EventHandler()));

    Log::info("text");

    EXPECT_EQ(capture.count(), 1U);
}

TEST_F(LogTeeHandler, CanStandInAnother)
{
    const auto other = Log::CaptureHandler();

    Log::onEvent(Log::TeeHandler(Log::TeeHandler(capture, other), other));
    Log::info("text");

    EXPECT_EQ(capture.count(), 1U);
    EXPECT_EQ(other.count(), 2U);
}
