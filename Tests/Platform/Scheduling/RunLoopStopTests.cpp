#include "Orrenby/Platform/Scheduling/RunLoop.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <future>
#include <gmock/gmock.h>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::infinity;
using orrenby::testing::ManualWorld;
using orrenby::testing::onThreadOfItsOwn;
using orrenby::testing::secondsIn;
using orrenby::testing::timerAt;
using ::testing::ElementsAre;

TEST(RunLoop, CallsNothingMoreOnceItIsStopped)
{
    const auto world = ManualWorld();
    onThreadOfItsOwn([] {
        std::vector<int> calls;
        auto& loop = RunLoop::current();
        timerAt(1, [&](Timer&) {
            calls.push_back(1);
            loop.stop();
        });
        timerAt(1, [&](Timer&) { calls.push_back(2); });

        loop.run();
        EXPECT_THAT(calls, ElementsAre(1));

        loop.run();
        EXPECT_THAT(calls, ElementsAre(1, 2));
    });
}

TEST(RunLoop, StopsBetweenBlocks)
{
    onThreadOfItsOwn([] {
        std::vector<int> calls;
        auto& loop = RunLoop::current();
        loop.perform([&] {
            calls.push_back(1);
            loop.stop();
        });
        loop.perform([&] { calls.push_back(2); });

        loop.run();
        EXPECT_THAT(calls, ElementsAre(1));

        loop.run();
        EXPECT_THAT(calls, ElementsAre(1, 2));
    });
}

TEST(RunLoop, ForgetsAStopThatNothingRanFor)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        timerAt(3, [](Timer&) {});
        RunLoop::current().stop();
        RunLoop::current().run();
    });
    EXPECT_EQ(secondsIn(world), 3);
}

TEST(RunLoop, StopsTheInnermostRunOnly)
{
    const auto world = ManualWorld();
    onThreadOfItsOwn([] {
        std::vector<std::string> calls;
        auto& loop = RunLoop::current();
        timerAt(1, [&](Timer&) {
            timerAt(1, [&](Timer&) { loop.stop(); });
            loop.run();
            calls.emplace_back("inner run is over");
        });
        timerAt(5, [&](Timer&) { calls.emplace_back("outer run goes on"); });

        loop.run();

        EXPECT_THAT(calls, ElementsAre("inner run is over", "outer run goes on"));
    });
}

TEST(RunLoop, IsStoppedFromAnotherThreadWhileItWaits)
{
    auto ready = std::promise<RunLoop*>();
    auto thread = std::thread([&] {
        auto& loop = RunLoop::current();
        timerAt(infinity, [](Timer&) {});
        loop.perform([&] { ready.set_value(&loop); });
        loop.run();
    });

    ready.get_future().get()->stop();

    thread.join();
}
