#include "Orrenby/Platform/Scheduling/Timer.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gmock/gmock.h>
#include <vector>

using namespace orrenby;
using orrenby::testing::inManualWorld;
using orrenby::testing::recordingTimer;
using ::testing::ElementsAre;

TEST(Timer, FiredByHandKeepsItsRhythm)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(2, world, moments);
        world.clock().pass(1);

        timer->fire();
        EXPECT_EQ(timer->fireDate(), Date::now() + 1);
        RunLoop::current().runFor(4);

        EXPECT_THAT(moments, ElementsAre(1, 2, 4));
    });
}

TEST(Timer, FiredByHandIsOverWhenItDoesNotRepeat)
{
    inManualWorld([](auto&) {
        int calls = 0;
        const auto timer = Timer::scheduledTimerWithTimeInterval(2, false, [&](Timer&) { ++calls; });

        timer->fire();
        timer->fire();

        EXPECT_EQ(calls, 1);
        EXPECT_FALSE(timer->isValid());
        EXPECT_FALSE(RunLoop::current().run(NSDefaultRunLoopMode, Date::distantFuture()));
    });
}

TEST(Timer, FiresByHandWithoutALoop)
{
    int calls = 0;
    const auto timer = Timer::timerWithTimeInterval(2, true, [&](Timer&) { ++calls; });

    timer->fire();
    timer->fire();

    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(timer->isValid());
}

TEST(Timer, DoesNotFireByHandOnceItIsInvalid)
{
    int calls = 0;
    const auto timer = Timer::timerWithTimeInterval(2, true, [&](Timer&) { ++calls; });
    timer->invalidate();

    timer->fire();

    EXPECT_EQ(calls, 0);
}

TEST(Timer, DoesNotFireByHandInItsOwnBlock)
{
    int calls = 0;
    const auto timer = Timer::timerWithTimeInterval(2, true, [&](Timer& self) {
        ++calls;
        self.fire();
    });

    timer->fire();

    EXPECT_EQ(calls, 1);
}

TEST(Timer, OutlivesItsLastReferenceWhileItIsFiredByHand)
{
    inManualWorld([](auto&) {
        auto weak = WeakRef<Timer>();
        {
            const auto timer = Timer::scheduledTimerWithTimeInterval(
                1, true, [](Timer& self) { self.invalidate(); });
            weak = timer;
        }
        weak.lock()->fire();

        EXPECT_TRUE(weak.expired());
    });
}

TEST(Timer, DoesNotFireInANestedRunOfItsOwnBlock)
{
    inManualWorld([](auto&) {
        int calls = 0;
        int depth = 0;
        const auto timer = Timer::scheduledTimerWithTimeInterval(1, true, [&](Timer&) {
            ++calls;
            EXPECT_EQ(++depth, 1);
            RunLoop::current().runFor(5);
            --depth;
        });
        const auto other = Timer::scheduledTimerWithTimeInterval(100, false, [](Timer&) {});

        RunLoop::current().runFor(10);

        EXPECT_EQ(calls, 2);
    });
}

TEST(Timer, ThatFiresIsNothingForANestedRunToWaitFor)
{
    inManualWorld([](auto&) {
        auto hasRun = true;
        Timer::scheduledTimerWithTimeInterval(1, false,
            [&](Timer&) { hasRun = RunLoop::current().run(NSDefaultRunLoopMode, Date::distantFuture()); });

        RunLoop::current().run();

        EXPECT_FALSE(hasRun);
    });
}
