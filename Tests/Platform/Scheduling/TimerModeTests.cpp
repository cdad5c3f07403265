#include "Orrenby/Platform/Scheduling/Timer.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::inManualWorld;
using orrenby::testing::onThreadOfItsOwn;
using orrenby::testing::turn;
using ::testing::ElementsAre;

TEST(Timer, FiresInItsModeOnly)
{
    inManualWorld([](auto& world) {
        int calls = 0;
        const auto timer = Timer::timerWithTimeInterval(1, false, [&](Timer&) { ++calls; });
        RunLoop::current().addTimer(timer, "own");
        world.clock().pass(2);

        turn();
        EXPECT_EQ(calls, 0);

        RunLoop::current().run("own", Date::distantPast());
        EXPECT_EQ(calls, 1);
    });
}

TEST(Timer, FiresInEachOfSeveralModes)
{
    inManualWorld([](auto&) {
        std::vector<std::string> modes;
        auto& loop = RunLoop::current();
        const auto timer = Timer::timerWithTimeInterval(
            1, true, [&](Timer&) { modes.push_back(*loop.currentMode()); });
        loop.addTimer(timer, "a");
        loop.addTimer(timer, "b");
        loop.addTimer(timer, "a");

        loop.run("a", Date::now() + 1);
        loop.run("b", Date::now() + 1);
        loop.run("a", Date::now() + 1);

        EXPECT_THAT(modes, ElementsAre("a", "b", "a"));
    });
}

TEST(Timer, OfTheCommonModesFiresInTheDefaultAndInTheTrackingMode)
{
    inManualWorld([](auto&) {
        std::vector<std::string> modes;
        auto& loop = RunLoop::current();
        const auto timer = Timer::timerWithTimeInterval(
            1, true, [&](Timer&) { modes.push_back(*loop.currentMode()); });
        loop.addTimer(timer, NSRunLoopCommonModes);

        loop.run(NSDefaultRunLoopMode, Date::now() + 1);
        loop.run(UITrackingRunLoopMode, Date::now() + 1);

        EXPECT_THAT(modes, ElementsAre("kCFRunLoopDefaultMode", "UITrackingRunLoopMode"));
    });
}

TEST(Timer, OfTwoModesIsGoneFromBothOnceItHasFired)
{
    inManualWorld([](auto&) {
        auto& loop = RunLoop::current();
        loop.addTimer(Timer::timerWithTimeInterval(1, false, [](Timer&) {}), NSRunLoopCommonModes);

        loop.runFor(2);

        EXPECT_EQ(loop.nextFireDate(UITrackingRunLoopMode), std::nullopt);
        EXPECT_FALSE(loop.run(UITrackingRunLoopMode, Date::distantFuture()));
    });
}

TEST(Timer, CanBeAddedInAnotherModeByItsOwnBlock)
{
    inManualWorld([](auto&) {
        int calls = 0;
        auto& loop = RunLoop::current();
        const auto timer = Timer::scheduledTimerWithTimeInterval(1, true, [&](Timer& self) {
            ++calls;
            loop.addTimer(self.shared_from_this(), "own");
        });

        loop.runFor(1);
        loop.run("own", Date::now() + 1);

        EXPECT_EQ(calls, 2);
    });
}

TEST(Timer, StaysWithTheLoopThatHadItFirst)
{
    inManualWorld([](auto&) {
        int calls = 0;
        const auto timer = Timer::scheduledTimerWithTimeInterval(1, false, [&](Timer&) { ++calls; });
        onThreadOfItsOwn([&] {
            RunLoop::current().addTimer(timer, NSDefaultRunLoopMode);
            EXPECT_FALSE(RunLoop::current().run(NSDefaultRunLoopMode, Date::distantFuture()));
        });
        EXPECT_TRUE(timer->isValid());

        RunLoop::current().run();

        EXPECT_EQ(calls, 1);
    });
}

TEST(Timer, ThatIsInvalidOrMissingIsNotAdded)
{
    inManualWorld([](auto&) {
        auto& loop = RunLoop::current();
        const auto timer = Timer::timerWithTimeInterval(1, false, [](Timer&) {});
        timer->invalidate();

        loop.addTimer(timer, NSDefaultRunLoopMode);
        loop.addTimer(nullptr, NSDefaultRunLoopMode);

        EXPECT_FALSE(loop.run(NSDefaultRunLoopMode, Date::distantFuture()));
    });
}
