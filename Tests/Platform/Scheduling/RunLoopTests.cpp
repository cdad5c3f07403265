#include "Orrenby/Platform/Scheduling/RunLoop.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::infinity;
using orrenby::testing::JobOf;
using orrenby::testing::ManualWorld;
using orrenby::testing::noNumber;
using orrenby::testing::onThreadOfItsOwn;
using orrenby::testing::secondsIn;
using orrenby::testing::timerAt;
using orrenby::testing::turn;
using ::testing::ElementsAre;

TEST(RunLoop, IsTheSameForEveryCallOfAThread)
{
    onThreadOfItsOwn([] { EXPECT_EQ(&RunLoop::current(), &RunLoop::current()); });
}

TEST(RunLoop, IsTheMainOneOnTheMainThread) { EXPECT_EQ(&RunLoop::current(), &RunLoop::main()); }

TEST(RunLoop, IsAnotherOneOnAnotherThread)
{
    onThreadOfItsOwn([] {
        EXPECT_NE(&RunLoop::current(), &RunLoop::main());
        EXPECT_TRUE(RunLoop::current().isCurrent());
        EXPECT_FALSE(RunLoop::main().isCurrent());
    });
}

TEST(RunLoop, HasNoModeWhileItDoesNotRun) { EXPECT_EQ(RunLoop::current().currentMode(), std::nullopt); }

TEST(RunLoop, KnowsTheModesThatEverybodyKnows)
{
    EXPECT_EQ(NSDefaultRunLoopMode, "kCFRunLoopDefaultMode");
    EXPECT_EQ(UITrackingRunLoopMode, "UITrackingRunLoopMode");
    EXPECT_EQ(NSRunLoopCommonModes, "kCFRunLoopCommonModes");
}

TEST(RunLoop, RunsUntilItIsStopped)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        //! [Running a loop]
        auto& loop = RunLoop::current();
        std::vector<std::string> calls;

        const auto tick = Timer::scheduledTimerWithTimeInterval(
            10, true, [&](Timer&) { calls.emplace_back("tick"); });
        timerAt(25, [&](Timer&) { loop.stop(); });
        loop.perform([&] { calls.emplace_back("performed"); }); // from any thread

        loop.run();
        //! [Running a loop]

        EXPECT_THAT(calls, ElementsAre("performed", "tick", "tick"));
        EXPECT_EQ(loop.currentMode(), std::nullopt);
    });
    EXPECT_EQ(secondsIn(world), 25);
}

TEST(RunLoop, DoesNotRunWithoutAnythingToWaitFor)
{
    onThreadOfItsOwn([] {
        EXPECT_FALSE(RunLoop::current().run(NSDefaultRunLoopMode, Date::distantFuture()));
        EXPECT_FALSE(RunLoop::current().run("own", Date::distantFuture()));
        RunLoop::current().run();
        RunLoop::current().runUntil(Date::distantFuture());
    });
}

TEST(RunLoop, DoesNotRunForATimerOfAnotherMode)
{
    onThreadOfItsOwn([] {
        const auto timer = Timer::timerWithTimeInterval(1, false, [](Timer&) {});
        RunLoop::current().addTimer(timer, "own");

        EXPECT_FALSE(RunLoop::current().run(NSDefaultRunLoopMode, Date::distantFuture()));
    });
}

TEST(RunLoop, CannotRunInTheNameOfAllCommonModes)
{
    onThreadOfItsOwn([] {
        RunLoop::current().perform([] {});

        EXPECT_FALSE(turn(NSRunLoopCommonModes));
        EXPECT_TRUE(turn());
    });
}

TEST(RunLoop, OfTheMainThreadAlwaysHasSomethingToWaitForInTheCommonModes)
{
    auto world = ManualWorld();

    EXPECT_TRUE(RunLoop::main().run(NSDefaultRunLoopMode, Date::now() + 1));
    EXPECT_TRUE(RunLoop::main().run(UITrackingRunLoopMode, Date::now() + 1));
    EXPECT_FALSE(RunLoop::main().run("own", Date::now() + 1));
    EXPECT_EQ(secondsIn(world), 2);
}

TEST(RunLoop, EndsWhenItsLastTimerHasFired)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        timerAt(3, [](Timer&) {});

        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date::distantFuture()));
    });
    EXPECT_EQ(secondsIn(world), 3);
}

TEST(RunLoop, ReturnsAfterABlock)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        timerAt(5, [](Timer&) {});
        RunLoop::current().perform([] {});

        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date::now() + 9));
    });
    EXPECT_EQ(secondsIn(world), 0);
}

TEST(RunLoop, FiresTimersWithoutReturning)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        int calls = 0;
        const auto timer = Timer::scheduledTimerWithTimeInterval(2, true, [&](Timer&) { ++calls; });

        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date::now() + 7));

        EXPECT_EQ(calls, 3);
    });
    EXPECT_EQ(secondsIn(world), 7);
}

TEST(RunLoop, FiresATimerThatIsDueAtItsEnd)
{
    const auto world = ManualWorld();
    onThreadOfItsOwn([] {
        int calls = 0;
        timerAt(4, [&](Timer&) { ++calls; });

        RunLoop::current().runFor(4);

        EXPECT_EQ(calls, 1);
    });
}

TEST(RunLoop, MakesOneTurnWithoutWaitingForAMomentThatHasPassed)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        int calls = 0;
        timerAt(1, [&](Timer&) { ++calls; });
        timerAt(2, [&](Timer&) { ++calls; });
        world.clock().pass(1);

        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date::now() - 1));

        EXPECT_EQ(calls, 1);
    });
    EXPECT_EQ(secondsIn(world), 1);
}

TEST(RunLoop, MakesOneTurnForAMomentThatIsNone)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        timerAt(1, [](Timer&) {});

        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date(noNumber)));
        RunLoop::current().runFor(noNumber);
        RunLoop::current().runFor(-infinity);
    });
    EXPECT_EQ(secondsIn(world), 0);
}

TEST(RunLoopDeathTest, EndsTheProcessWhenABlockThrows)
{
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto throwOne = [] {
        RunLoop::current().perform([] { throw 1; }, "own");
        turn("own");
    };

    EXPECT_DEATH(throwOne(), "terminate");
}

TEST(RunLoop, RunsOnAfterABlockWhenItRunsForATime)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        int calls = 0;
        timerAt(9, [](Timer&) {});
        RunLoop::current().perform([&] { ++calls; });

        RunLoop::current().runUntil(Date::now() + 8);

        EXPECT_EQ(calls, 1);
    });
    EXPECT_EQ(secondsIn(world), 8);
}

TEST(RunLoop, LetsOtherJobsRunWhileItWaits)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        std::vector<std::string> calls;
        auto job = JobOf([&] { calls.emplace_back("job"); });
        world.executor().executeAt(1024 + 2, job);
        timerAt(1, [&](Timer&) { calls.emplace_back("timer at 1"); });
        timerAt(3, [&](Timer&) { calls.emplace_back("timer at 3"); });

        RunLoop::current().run();

        EXPECT_THAT(calls, ElementsAre("timer at 1", "job", "timer at 3"));
    });
}

TEST(RunLoop, TellsWhenTheNextTimerIsDue)
{
    const auto world = ManualWorld();
    onThreadOfItsOwn([] {
        auto& loop = RunLoop::current();
        EXPECT_EQ(loop.nextFireDate(NSDefaultRunLoopMode), std::nullopt);

        timerAt(8, [](Timer&) {});
        timerAt(2, [](Timer&) {});
        const auto own = Timer::timerWithTimeInterval(1, false, [](Timer&) {});
        loop.addTimer(own, "own");

        EXPECT_EQ(loop.nextFireDate(NSDefaultRunLoopMode), Date::now() + 2);
        EXPECT_EQ(loop.nextFireDate("own"), Date::now() + 1);
        EXPECT_EQ(loop.nextFireDate("other"), std::nullopt);
    });
}
