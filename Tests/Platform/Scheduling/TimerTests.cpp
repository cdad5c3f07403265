#include "Orrenby/Platform/Scheduling/Timer.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::infinity;
using orrenby::testing::inManualWorld;
using orrenby::testing::noNumber;
using orrenby::testing::onThreadOfItsOwn;
using orrenby::testing::secondsIn;
using ::testing::ElementsAre;

TEST(Timer, FiresOnceAfterItsInterval)
{
    inManualWorld([](auto& world) {
        //! [Scheduling a timer]
        std::vector<std::string> calls;
        Timer::scheduledTimerWithTimeInterval(30, false, [&](Timer&) { calls.emplace_back("once"); });
        Timer::scheduledTimerWithTimeInterval(20, true, [&](Timer& timer) {
            calls.emplace_back("again");
            if (calls.size() == 4)
                timer.invalidate();
        });

        RunLoop::current().run();
        //! [Scheduling a timer]

        EXPECT_THAT(calls, ElementsAre("again", "once", "again", "again"));
        EXPECT_EQ(secondsIn(world), 60);
    });
}

TEST(Timer, TellsItsIntervalAndDateAndWhetherItIsValid)
{
    inManualWorld([](auto&) {
        const auto once = Timer::timerWithTimeInterval(3, false, [](Timer&) {});
        const auto again = Timer::timerWithTimeInterval(2, true, [](Timer&) {});

        EXPECT_EQ(once->timeInterval(), 0);
        EXPECT_EQ(again->timeInterval(), 2);
        EXPECT_EQ(once->fireDate(), Date::now() + 3);
        EXPECT_EQ(again->fireDate(), Date::now() + 2);
        EXPECT_TRUE(once->isValid());
        EXPECT_EQ(once->tolerance(), 0);
        EXPECT_EQ(once->userInfo(), Any());
    });
}

TEST(Timer, IsNotOnALoopUntilItIsAdded)
{
    inManualWorld([](auto&) {
        int calls = 0;
        const auto timer = Timer::timerWithTimeInterval(1, false, [&](Timer&) { ++calls; });
        RunLoop::current().runFor(2);
        EXPECT_EQ(calls, 0);

        RunLoop::current().addTimer(timer, NSDefaultRunLoopMode);
        RunLoop::current().runFor(2);
        EXPECT_EQ(calls, 1);
    });
}

TEST(Timer, CountsItsIntervalFromWhenItWasMade)
{
    inManualWorld([](auto& world) {
        const auto timer = Timer::timerWithTimeInterval(5, false, [](Timer&) {});
        world.clock().pass(3);
        RunLoop::current().addTimer(timer, NSDefaultRunLoopMode);

        RunLoop::current().run();

        EXPECT_EQ(secondsIn(world), 5);
    });
}

TEST(Timer, ReceivesItselfInItsBlock)
{
    inManualWorld([](auto&) {
        Timer* received = nullptr;
        const auto timer = Timer::scheduledTimerWithTimeInterval(
            1, false, [&](Timer& self) { received = &self; });

        RunLoop::current().run();

        EXPECT_EQ(received, timer.get());
    });
}

TEST(Timer, WithoutABlockPassesSilently)
{
    inManualWorld([](auto&) {
        const auto timer = Timer::scheduledTimerWithTimeInterval(1, false, nullptr);

        RunLoop::current().run();

        EXPECT_FALSE(timer->isValid());
    });
}

TEST(Timer, FiresInTheRealWorldToo)
{
    onThreadOfItsOwn([] {
        int calls = 0;
        Timer::scheduledTimerWithTimeInterval(0, false, [&](Timer&) { ++calls; });

        RunLoop::current().run();

        EXPECT_EQ(calls, 1);
    });
}

TEST(Timer, TakesIntervalsThatArePassedAlreadyForATenthOfAMillisecond)
{
    inManualWorld([](auto&) {
        for (const auto seconds : {0.0, -0.0, -1.0, -infinity, noNumber}) {
            const auto timer = Timer::timerWithTimeInterval(seconds, true, [](Timer&) {});

            EXPECT_EQ(timer->timeInterval(), 0.0001) << seconds;
            EXPECT_EQ(timer->fireDate(), Date::now() + 0.0001) << seconds;
        }
    });
}

TEST(Timer, KeepsAShortIntervalAsItIs)
{
    EXPECT_EQ(Timer::timerWithTimeInterval(0.00001, true, [](Timer&) {})->timeInterval(), 0.00001);
}

TEST(Timer, WithAnInfiniteIntervalWaitsForADate)
{
    inManualWorld([](auto&) {
        int calls = 0;
        const auto timer = Timer::scheduledTimerWithTimeInterval(infinity, true, [&](Timer&) { ++calls; });
        EXPECT_EQ(timer->fireDate(), Date::distantFuture());
        RunLoop::current().runFor(1e9);
        EXPECT_EQ(calls, 0);

        timer->setFireDate(Date::now() + 1);
        RunLoop::current().runFor(1e9);

        EXPECT_EQ(calls, 1);
        EXPECT_EQ(timer->fireDate(), Date::distantFuture());
    });
}

TEST(Timer, WithAnInfiniteIntervalBearsADateBeforeAllTime)
{
    inManualWorld([](auto&) {
        int calls = 0;
        const auto timer = Timer::scheduledTimerWithTimeInterval(infinity, true, [&](Timer&) { ++calls; });
        timer->setFireDate(Date::distantPast());

        RunLoop::current().runFor(10);

        EXPECT_EQ(calls, 1);
        EXPECT_EQ(timer->fireDate(), Date::distantFuture());
    });
}

TEST(Timer, WithTheShortestIntervalThereIsDoesNotHoldUpTheClock)
{
    inManualWorld([](auto& world) {
        int calls = 0;
        const auto timer = Timer::scheduledTimerWithTimeInterval(
            std::numeric_limits<double>::denorm_min(), true, [&](Timer& self) {
                if (++calls == 100)
                    self.invalidate();
            });

        RunLoop::current().run();

        EXPECT_EQ(calls, 100);
        EXPECT_GT(secondsIn(world), 0);
    });
}
