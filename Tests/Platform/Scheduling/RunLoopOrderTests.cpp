#include "Orrenby/Platform/Scheduling/RunLoop.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::JobOf;
using orrenby::testing::ManualWorld;
using orrenby::testing::onThreadOfItsOwn;
using orrenby::testing::timerAt;
using orrenby::testing::turn;
using ::testing::ElementsAre;

TEST(RunLoop, CallsBlocksThenTimersThenWatches)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        std::vector<std::string> calls;
        const auto watch = RunLoop::current().watch(
            -1, NSDefaultRunLoopMode, [&] { calls.emplace_back("a negative descriptor is never readable"); });
        const auto closed = RunLoop::current().watch(
            std::numeric_limits<int>::max(), NSDefaultRunLoopMode, [&] { calls.emplace_back("watch"); });
        timerAt(1, [&](Timer&) { calls.emplace_back("timer"); });
        world.clock().pass(1);
        RunLoop::current().perform([&] { calls.emplace_back("block"); });

        turn();

        EXPECT_THAT(calls, ElementsAre("block", "timer", "watch"));
    });
}

TEST(RunLoop, CallsJobsAndBlocksInTheOrderInWhichTheyCame)
{
    onThreadOfItsOwn([] {
        std::vector<int> calls;
        auto& loop = RunLoop::current();
        auto job = JobOf([&] { calls.push_back(3); });
        auto other = JobOf([&] { calls.push_back(5); });
        loop.perform([&] { calls.push_back(1); }, NSDefaultRunLoopMode);
        loop.perform([&] { calls.push_back(2); });
        loop.execute(job);
        loop.perform([&] { calls.push_back(4); }, NSDefaultRunLoopMode);
        loop.execute(other);
        loop.perform([&] { calls.push_back(6); }, NSDefaultRunLoopMode);

        turn();

        EXPECT_THAT(calls, ElementsAre(1, 2, 3, 4, 5, 6));
    });
}

TEST(RunLoop, LeavesToTheNextTurnWhatATurnHandsOver)
{
    onThreadOfItsOwn([] {
        std::vector<int> calls;
        auto& loop = RunLoop::current();
        loop.perform([&] {
            loop.perform([&] { calls.push_back(2); }, NSDefaultRunLoopMode);
            loop.perform([&] { calls.push_back(3); });
            calls.push_back(1);
        });

        turn();
        EXPECT_THAT(calls, ElementsAre(1));

        turn();
        EXPECT_THAT(calls, ElementsAre(1, 2, 3));
    });
}

TEST(RunLoop, RunsAJobThatHandsItselfOverAgainOnceATurn)
{
    onThreadOfItsOwn([] {
        int calls = 0;
        auto& loop = RunLoop::current();
        Job* self = nullptr;
        auto job = JobOf([&] {
            if (++calls < 3)
                loop.execute(*self);
        });
        self = &job;
        loop.execute(job);

        turn();
        EXPECT_EQ(calls, 1);

        loop.run();
        EXPECT_EQ(calls, 3);
    });
}
