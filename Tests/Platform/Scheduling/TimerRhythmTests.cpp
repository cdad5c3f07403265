#include "Orrenby/Platform/Scheduling/Timer.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <cmath>
#include <gmock/gmock.h>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::infinity;
using orrenby::testing::inManualWorld;
using orrenby::testing::noNumber;
using orrenby::testing::recordingTimer;
using orrenby::testing::secondsIn;
using orrenby::testing::turn;
using ::testing::ElementsAre;

TEST(Timer, KeepsItsRhythmWithoutDrift)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = Timer::scheduledTimerWithTimeInterval(1, true, [&](Timer&) {
            moments.push_back(secondsIn(world));
            world.clock().pass(0.25);
        });

        RunLoop::current().runFor(4.5);

        EXPECT_THAT(moments, ElementsAre(1, 2, 3, 4));
    });
}

TEST(Timer, FiresOnceForAllThatALateLoopMissed)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(2, world, moments);
        world.clock().pass(7.5);

        turn();
        EXPECT_EQ(timer->fireDate(), Date::now() + 0.5);
        RunLoop::current().runFor(3);

        EXPECT_THAT(moments, ElementsAre(7.5, 8, 10));
    });
}

TEST(Timer, LeavesOutWhatPassesWhileItsBlockRuns)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = Timer::scheduledTimerWithTimeInterval(2, true, [&](Timer&) {
            moments.push_back(secondsIn(world));
            world.clock().pass(5);
        });

        RunLoop::current().runFor(10);

        EXPECT_THAT(moments, ElementsAre(2, 8));
    });
}

TEST(Timer, LeavesOutAMomentThatComesExactlyWhenItsBlockReturns)
{
    inManualWorld([](auto& world) {
        const auto timer = Timer::scheduledTimerWithTimeInterval(
            2, true, [&](Timer&) { world.clock().pass(2); });

        RunLoop::current().runFor(2);

        EXPECT_EQ(timer->fireDate(), Date::now() + 2);
    });
}

TEST(Timer, HitsEveryMultipleOfAnIntervalThatHasNoExactNumber)
{
    inManualWorld([](auto& world) {
        int calls = 0;
        const auto timer = Timer::scheduledTimerWithTimeInterval(0.1, true, [&](Timer&) { ++calls; });

        RunLoop::current().runFor(1000.05);

        EXPECT_EQ(calls, 10000);
        EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 1000.05);
    });
}

TEST(Timer, NeitherSkipsNorRepeatsAMomentWhenItIsLate)
{
    inManualWorld([](auto& world) {
        const auto begin = world.clock().monotonicSeconds();
        for (int missed = 1; missed < 200; ++missed) {
            const auto timer = Timer::scheduledTimerWithTimeInterval(0.1, true, [](Timer&) {});
            const auto made = Date::now();
            world.clock().pass(0.1 * missed);
            turn();

            EXPECT_GT(timer->fireDate(), Date::now()) << missed;
            EXPECT_LE(timer->fireDate() - Date::now(), 0.1 + 1e-9) << missed;
            EXPECT_NEAR(std::remainder(timer->fireDate() - made, 0.1), 0, 1e-9) << missed;
            timer->invalidate();
        }
        EXPECT_GT(world.clock().monotonicSeconds(), begin);
    });
}

TEST(Timer, FollowsTheMonotonicClockWhenTheCalendarIsSet)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(5, world, moments);
        const auto date = timer->fireDate();
        world.clock().setCalendar(Date(5e9));

        RunLoop::current().runFor(6);

        EXPECT_THAT(moments, ElementsAre(5));
        EXPECT_EQ(timer->fireDate(), date + 5);
    });
}

TEST(Timer, WaitsForAnotherWithinItsTolerance)
{
    inManualWorld([](auto& world) {
        std::vector<std::string> calls;
        const auto patient = Timer::scheduledTimerWithTimeInterval(
            2, false, {.tolerance = 1}, [&](Timer&) { calls.emplace_back("patient"); });
        const auto exact = Timer::scheduledTimerWithTimeInterval(
            2.5, false, [&](Timer&) { calls.emplace_back("exact"); });

        RunLoop::current().run();

        EXPECT_THAT(calls, ElementsAre("patient", "exact"));
        EXPECT_EQ(world.executor().moves(), 1);
    });
}

TEST(Timer, FiresAtTheEndOfItsToleranceAtTheLatest)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(4, world, moments);
        timer->setTolerance(1);

        RunLoop::current().runFor(9.5);

        EXPECT_THAT(moments, ElementsAre(5, 9));
        EXPECT_EQ(timer->fireDate(), Date::now() + 2.5);
    });
}

TEST(Timer, LimitsItsTolerance)
{
    const auto once = Timer::timerWithTimeInterval(4, false, nullptr);
    const auto again = Timer::timerWithTimeInterval(4, true, {.tolerance = 9}, nullptr);
    EXPECT_EQ(again->tolerance(), 4);

    for (const auto seconds : {-1.0, noNumber, -infinity}) {
        once->setTolerance(seconds);
        EXPECT_EQ(once->tolerance(), 0) << seconds;
    }
    once->setTolerance(infinity);
    EXPECT_EQ(once->tolerance(), infinity);
}
