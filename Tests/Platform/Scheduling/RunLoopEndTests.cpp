#include "Orrenby/Platform/Scheduling/RunLoop.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gtest/gtest.h>
#include <memory>
#include <thread>

using namespace orrenby;
using orrenby::testing::JobOf;
using orrenby::testing::onThreadOfItsOwn;
using orrenby::testing::timerAt;

TEST(RunLoop, InvalidatesItsTimersAtTheEndOfItsThread)
{
    auto timer = Ref<Timer>();
    auto own = Ref<Timer>();
    onThreadOfItsOwn([&] {
        timer = timerAt(1, [](Timer&) {});
        own = Timer::timerWithTimeInterval(1, true, [](Timer&) {});
        RunLoop::current().addTimer(own, "own");
    });

    EXPECT_FALSE(timer->isValid());
    EXPECT_FALSE(own->isValid());
}

TEST(RunLoop, DropsBlocksAndRunsJobsAtTheEndOfItsThread)
{
    auto token = std::make_shared<int>();
    int calls = 0;
    auto job = JobOf([&] { ++calls; });
    onThreadOfItsOwn([&] {
        RunLoop::current().perform([token, &calls] { calls += 10; });
        RunLoop::current().perform([token, &calls] { calls += 10; }, "own");
        RunLoop::current().execute(job);
    });

    EXPECT_EQ(calls, 1);
    EXPECT_EQ(token.use_count(), 1);
}

TEST(RunLoop, TakesNothingMoreWhileItEnds)
{
    auto timer = Ref<Timer>();
    auto token = std::make_shared<int>();
    auto job = JobOf([&] {
        RunLoop::current().perform([token] {});
        RunLoop::current().perform([token] {}, "own");
        timer = timerAt(1, [token](Timer&) {});
    });
    onThreadOfItsOwn([&] { RunLoop::current().execute(job); });

    EXPECT_TRUE(timer->isValid());
    timer = nullptr;
    EXPECT_EQ(token.use_count(), 1);
}

TEST(RunLoopDeathTest, EndsTheProcessWhenItIsAskedForAfterTheEndOfItsThread)
{
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    struct Late {
        ~Late() { RunLoop::current(); }
    };
    const auto askTooLate = [] {
        std::thread([] {
            [[maybe_unused]] thread_local Late late; // made first, so destroyed after the loop
            static_cast<void>(&late);
            RunLoop::current();
        }).join();
    };

    EXPECT_DEATH(askTooLate(),
        "Fatal error: Use of a run loop after the end of its thread: file Platform/Scheduling/RunLoop, line 57");
}
