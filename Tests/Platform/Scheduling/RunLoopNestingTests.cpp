#include "Orrenby/Platform/Scheduling/RunLoop.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gmock/gmock.h>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::JobOf;
using orrenby::testing::ManualWorld;
using orrenby::testing::onThreadOfItsOwn;
using orrenby::testing::timerAt;
using orrenby::testing::turn;
using ::testing::ElementsAre;

TEST(RunLoop, FiresOnlyTheTimersOfTheNestedMode)
{
    const auto world = ManualWorld();
    onThreadOfItsOwn([] {
        std::vector<std::string> calls;
        auto& loop = RunLoop::current();
        timerAt(1, [&](Timer&) {
            loop.run("own", Date::now() + 10);
            calls.emplace_back("nested run is over");
        });
        timerAt(2, [&](Timer&) { calls.emplace_back("default"); });
        const auto own = Timer::timerWithTimeInterval(3, false, [&](Timer&) { calls.emplace_back("own"); });
        loop.addTimer(own, "own");

        loop.run();

        EXPECT_THAT(calls, ElementsAre("own", "nested run is over", "default"));
    });
}

TEST(RunLoop, RunsTheRestOfATurnInANestedRun)
{
    onThreadOfItsOwn([] {
        std::vector<std::string> calls;
        auto& loop = RunLoop::current();
        loop.perform([&] {
            EXPECT_TRUE(turn(UITrackingRunLoopMode));
            calls.emplace_back("outer");
        });
        loop.perform([&] { calls.emplace_back(*loop.currentMode()); });

        turn();

        EXPECT_THAT(calls, ElementsAre("UITrackingRunLoopMode", "outer"));
    });
}

TEST(RunLoop, FiresATimerOfTheOuterTurnOnceOnly)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        int calls = 0;
        timerAt(1, [&](Timer&) { turn(); });
        timerAt(1, [&](Timer&) { ++calls; });
        world.clock().pass(1);

        turn();

        EXPECT_EQ(calls, 1);
    });
}

TEST(RunLoop, LooksAgainAtItsTimersAfterARunInsideItsWait)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        std::vector<std::string> calls;
        auto& loop = RunLoop::current();
        timerAt(10, [&](Timer&) { calls.emplace_back("late"); });
        auto job = JobOf([&] {
            timerAt(1, [&](Timer&) { calls.emplace_back("early"); });
            turn();
        });
        world.executor().executeAt(1024 + 2, job);

        loop.runFor(5);

        EXPECT_THAT(calls, ElementsAre("early"));
    });
}
