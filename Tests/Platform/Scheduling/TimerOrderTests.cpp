#include "Orrenby/Platform/Scheduling/Timer.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gmock/gmock.h>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::inManualWorld;
using orrenby::testing::secondsIn;
using orrenby::testing::turn;
using ::testing::ElementsAre;

TEST(Timer, FiresByDateThenInTheOrderOfScheduling)
{
    inManualWorld([](auto& world) {
        std::vector<std::string> calls;
        const auto add = [&](double seconds, std::string name) {
            return Timer::scheduledTimerWithTimeInterval(
                seconds, false, [&calls, name](Timer&) { calls.push_back(name); });
        };
        const auto first = Timer::timerWithTimeInterval(2, false, [&](Timer&) { calls.emplace_back("c"); });
        add(2, "a");
        add(1, "z");
        add(2, "b");
        RunLoop::current().addTimer(first, NSDefaultRunLoopMode);
        world.clock().pass(2);

        turn();

        EXPECT_THAT(calls, ElementsAre("z", "a", "b", "c"));
    });
}

TEST(Timer, KeepsItsPlaceAmongThoseOfOneMomentWhenItRepeats)
{
    inManualWorld([](auto&) {
        std::string calls;
        const auto a = Timer::scheduledTimerWithTimeInterval(2, true, [&](Timer&) { calls += "a"; });
        const auto b = Timer::scheduledTimerWithTimeInterval(1, true, [&](Timer&) { calls += "b"; });

        RunLoop::current().runFor(4);

        EXPECT_EQ(calls, "babbab");
    });
}

TEST(Timer, ThatIsMovedIntoThePastByAnotherWaitsForTheNextTurn)
{
    inManualWorld([](auto& world) {
        std::string calls;
        const auto later = Timer::scheduledTimerWithTimeInterval(9, false, [&](Timer&) { calls += "b"; });
        const auto first = Timer::scheduledTimerWithTimeInterval(1, false, [&](Timer&) {
            later->setFireDate(Date::distantPast());
            calls += "a";
        });
        world.clock().pass(1);

        turn();
        EXPECT_EQ(calls, "a");

        turn();
        EXPECT_EQ(calls, "ab");
    });
}

TEST(Timer, ThatIsPutOffByAnotherOfTheSameTurnDoesNotFire)
{
    inManualWorld([](auto& world) {
        std::string calls;
        auto second = Ref<Timer>();
        Timer::scheduledTimerWithTimeInterval(
            1, false, [&](Timer&) { second->setFireDate(Date::now() + 5); });
        second = Timer::scheduledTimerWithTimeInterval(1, false, [&](Timer&) { calls += "b"; });
        world.clock().pass(1);

        turn();
        EXPECT_EQ(calls, "");

        RunLoop::current().run();
        EXPECT_EQ(secondsIn(world), 6);
    });
}

TEST(Timer, ThatIsInvalidatedByAnotherOfTheSameTurnDoesNotFire)
{
    inManualWorld([](auto& world) {
        std::string calls;
        auto second = Ref<Timer>();
        Timer::scheduledTimerWithTimeInterval(1, false, [&](Timer&) { second->invalidate(); });
        second = Timer::scheduledTimerWithTimeInterval(1, false, [&](Timer&) { calls += "b"; });
        world.clock().pass(1);

        turn();

        EXPECT_EQ(calls, "");
    });
}
