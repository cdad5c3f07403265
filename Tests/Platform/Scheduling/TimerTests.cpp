#include "Orrenby/Platform/Scheduling/Timer.hpp"

#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Tests/Support/ManualWorld.hpp"
#include <atomic>
#include <future>
#include <gmock/gmock.h>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::ManualWorld;
using orrenby::testing::onThreadOfItsOwn;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr auto infinity = std::numeric_limits<double>::infinity();
constexpr auto noNumber = std::numeric_limits<double>::quiet_NaN();

/// Lets `body(world)` use a loop of its own in a world whose clock it holds.
template <class F> void inManualWorld(F&& body)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] { body(world); });
}

void turn() { RunLoop::current().run(NSDefaultRunLoopMode, Date::distantPast()); }

/// What a repeating timer reads when it fires: seconds since the world began.
Ref<Timer> recordingTimer(double seconds, ManualWorld& world, std::vector<double>& moments)
{
    return Timer::scheduledTimerWithTimeInterval(
        seconds, true, [&](Timer&) { moments.push_back(world.clock().monotonicSeconds() - 1024); });
}

} // namespace

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
        EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 60);
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

        EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 5);
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

// MARK: intervals at the edge

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
        EXPECT_GT(world.clock().monotonicSeconds(), 1024);
    });
}

// MARK: rhythm

TEST(Timer, KeepsItsRhythmWithoutDrift)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = Timer::scheduledTimerWithTimeInterval(1, true, [&](Timer&) {
            moments.push_back(world.clock().monotonicSeconds() - 1024);
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
            moments.push_back(world.clock().monotonicSeconds() - 1024);
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

// MARK: order

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
        EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 6);
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

// MARK: modes

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

// MARK: life

TEST(Timer, IsKeptByItsLoopUntilItHasFired)
{
    inManualWorld([](auto&) {
        int calls = 0;
        auto weak = WeakRef<Timer>(Timer::scheduledTimerWithTimeInterval(1, false, [&](Timer&) { ++calls; }));
        EXPECT_FALSE(weak.expired());

        RunLoop::current().run();

        EXPECT_EQ(calls, 1);
        EXPECT_TRUE(weak.expired());
    });
}

TEST(Timer, IsInvalidOnceItHasFired)
{
    inManualWorld([](auto&) {
        auto wasValid = false;
        const auto timer = Timer::scheduledTimerWithTimeInterval(
            1, false, [&](Timer& self) { wasValid = self.isValid(); });
        const auto date = timer->fireDate();

        RunLoop::current().run();

        EXPECT_TRUE(wasValid);
        EXPECT_FALSE(timer->isValid());
        EXPECT_EQ(timer->fireDate(), date);
    });
}

TEST(Timer, CannotBeRevivedByItsOwnBlock)
{
    inManualWorld([](auto&) {
        int calls = 0;
        const auto timer = Timer::scheduledTimerWithTimeInterval(1, false, [&](Timer& self) {
            ++calls;
            self.setFireDate(Date::now() + 1);
        });

        RunLoop::current().run();

        EXPECT_EQ(calls, 1);
        EXPECT_FALSE(timer->isValid());
    });
}

TEST(Timer, IsInvalidatedByItsOwnBlockAndReleasedAfterIt)
{
    inManualWorld([](auto&) {
        auto token = std::make_shared<int>(7);
        const auto weak = std::weak_ptr(token);
        auto timer = Ref<Timer>();
        timer = Timer::scheduledTimerWithTimeInterval(
            1, true, [&timer, token = std::move(token)](Timer& self) {
                self.invalidate();
                timer = nullptr;
                EXPECT_EQ(*token, 7);
                EXPECT_FALSE(self.isValid());
            });

        RunLoop::current().run();

        EXPECT_TRUE(weak.expired());
    });
}

TEST(Timer, ReleasesBlockAndInfoWhenItIsInvalidated)
{
    const auto token = std::make_shared<int>();
    const auto timer = Timer::timerWithTimeInterval(
        1, true, {.userInfo = std::vector<Any>{token}}, [token](Timer&) {});
    EXPECT_EQ(token.use_count(), 3);

    timer->invalidate();
    timer->invalidate();

    EXPECT_EQ(token.use_count(), 1);
    EXPECT_EQ(timer->userInfo(), Any());
}

TEST(Timer, ReleasesBlockAndInfoWhenItHasFired)
{
    const auto token = std::make_shared<int>();
    const auto timer = Timer::timerWithTimeInterval(1, false, {.userInfo = Any(token)}, [token](Timer&) {});

    timer->fire();

    EXPECT_EQ(token.use_count(), 1);
}

TEST(Timer, ThatItsBlockKeepsIsReleasedWhenItIsInvalidated)
{
    inManualWorld([](auto&) {
        auto timer = Timer::timerWithTimeInterval(1, true, nullptr);
        auto keeper = std::make_shared<Ref<Timer>>();
        auto keeping = Timer::scheduledTimerWithTimeInterval(1, true, [keeper](Timer&) {});
        *keeper = keeping;
        const auto weak = WeakRef<Timer>(keeping);
        keeper = nullptr;
        keeping = nullptr;
        EXPECT_FALSE(weak.expired());

        weak.lock()->invalidate();

        EXPECT_TRUE(weak.expired());
    });
}

TEST(Timer, KeepsWhatItWasGivenForWhoeverFires)
{
    inManualWorld([](auto&) {
        auto seen = Any();
        const auto timer = Timer::scheduledTimerWithTimeInterval(
            1, false, {.userInfo = "info"}, [&](Timer& self) { seen = self.userInfo(); });
        EXPECT_EQ(timer->userInfo(), Any("info"));

        RunLoop::current().run();

        EXPECT_EQ(seen, Any("info"));
    });
}

// MARK: firing by hand

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

// MARK: moving

TEST(Timer, IsMovedWithItsRhythm)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(10, world, moments);
        timer->setFireDate(Date::now() + 3);
        EXPECT_EQ(timer->fireDate(), Date::now() + 3);

        RunLoop::current().runFor(25);

        EXPECT_THAT(moments, ElementsAre(3, 13, 23));
    });
}

TEST(Timer, MovedIntoThePastIsDueAtOnce)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(10, world, moments);
        const auto past = Date::now() - 4;
        timer->setFireDate(past);
        EXPECT_EQ(timer->fireDate(), past);

        RunLoop::current().runFor(20);

        EXPECT_THAT(moments, ElementsAre(0, 6, 16));
    });
}

TEST(Timer, MovedBeforeAllTimeCountsFromWhenItFires)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(10, world, moments);
        for (const auto date : {Date::distantPast(), Date(-1e300), Date(noNumber)}) {
            moments.clear();
            const auto begin = world.clock().monotonicSeconds() - 1024;
            timer->setFireDate(date);

            RunLoop::current().runFor(10);

            EXPECT_THAT(moments, ElementsAre(begin, begin + 10));
        }
    });
}

TEST(Timer, MovedAfterAllTimeWaits)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = recordingTimer(10, world, moments);
        timer->setFireDate(Date::distantFuture());

        RunLoop::current().runFor(1000);

        EXPECT_THAT(moments, IsEmpty());
        EXPECT_TRUE(timer->isValid());
    });
}

TEST(Timer, MovedByItsOwnBlockTakesThatForItsNext)
{
    inManualWorld([](auto& world) {
        std::vector<double> moments;
        const auto timer = Timer::scheduledTimerWithTimeInterval(10, true, [&](Timer& self) {
            moments.push_back(world.clock().monotonicSeconds() - 1024);
            if (moments.size() == 1)
                self.setFireDate(Date::now() + 1);
        });

        RunLoop::current().runFor(25);

        EXPECT_THAT(moments, ElementsAre(10, 11, 21));
    });
}

TEST(Timer, IsNotMovedOnceItIsInvalid)
{
    const auto timer = Timer::timerWithTimeInterval(1, true, nullptr);
    const auto date = timer->fireDate();
    timer->invalidate();

    timer->setFireDate(Date(0));

    EXPECT_EQ(timer->fireDate(), date);
}

// MARK: tolerance

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

// MARK: threads

TEST(Timer, FiresInTheRealWorldToo)
{
    onThreadOfItsOwn([] {
        int calls = 0;
        Timer::scheduledTimerWithTimeInterval(0, false, [&](Timer&) { ++calls; });

        RunLoop::current().run();

        EXPECT_EQ(calls, 1);
    });
}

TEST(Timer, InvalidatedOnAnotherThreadLetsALoopEndThatWaitsForNothingElse)
{
    auto waiting = std::promise<Ref<Timer>>();
    auto thread = std::thread([&] {
        const auto timer = Timer::scheduledTimerWithTimeInterval(infinity, false, nullptr);
        RunLoop::current().perform([&] { waiting.set_value(timer); });
        RunLoop::current().run();
        EXPECT_FALSE(timer->isValid());
    });

    waiting.get_future().get()->invalidate();

    thread.join();
}

TEST(Timer, MovedOnAnotherThreadWakesItsLoop)
{
    auto waiting = std::promise<Ref<Timer>>();
    int calls = 0;
    auto thread = std::thread([&] {
        const auto timer = Timer::scheduledTimerWithTimeInterval(infinity, false, [&](Timer&) { ++calls; });
        RunLoop::current().perform([&] { waiting.set_value(timer); });
        RunLoop::current().run();
    });

    waiting.get_future().get()->setFireDate(Date::distantPast());

    thread.join();
    EXPECT_EQ(calls, 1);
}

TEST(Timer, InvalidatedOnAnotherThreadDoesNotWaitForItsBlock)
{
    auto entered = std::promise<void>();
    auto go = std::promise<void>();
    auto token = std::make_shared<int>();
    auto timer = Ref<Timer>();
    auto made = std::promise<void>();
    auto thread = std::thread([&] {
        timer = Timer::scheduledTimerWithTimeInterval(0, true, [&, token](Timer&) {
            entered.set_value();
            go.get_future().get();
        });
        made.set_value();
        RunLoop::current().run();
    });
    made.get_future().get();
    entered.get_future().get();

    timer->invalidate();
    EXPECT_FALSE(timer->isValid());
    EXPECT_EQ(token.use_count(), 2);
    go.set_value();

    thread.join();
    EXPECT_EQ(token.use_count(), 1);
}

TEST(Timer, FiredOnAnotherThreadStaysSomethingForItsLoopToWaitFor)
{
    auto timer = Ref<Timer>();
    auto made = std::promise<void>();
    auto looked = std::promise<void>();
    int calls = 0;
    auto thread = std::thread([&] {
        timer = Timer::scheduledTimerWithTimeInterval(infinity, true, [&](Timer& self) {
            RunLoop::current(); // of the other thread
            if (++calls == 1) {
                looked.get_future().get();
                self.setFireDate(Date::distantPast());
            } else
                self.invalidate();
        });
        auto& loop = RunLoop::current();
        made.set_value();
        loop.run();
        EXPECT_EQ(calls, 2);
    });
    made.get_future().get();
    auto firing = std::thread([&] { timer->fire(); });
    looked.set_value();

    firing.join();
    thread.join();
}

TEST(Timer, BearsEverybodyAtOnce)
{
    constexpr int rounds = 300;
    auto calls = std::atomic<int>(0);
    onThreadOfItsOwn([&] {
        auto& loop = RunLoop::current();
        const auto end = Timer::scheduledTimerWithTimeInterval(infinity, false, nullptr);
        std::vector<std::thread> threads;
        auto left = std::atomic<int>(4);
        for (int number = 0; number < 4; ++number)
            threads.emplace_back([&, number] {
                auto shared = Timer::timerWithTimeInterval(0, true, [&](Timer&) { ++calls; });
                for (int round = 0; round < rounds; ++round) {
                    const auto timer = Timer::timerWithTimeInterval(0, number % 2 == 0, [&](Timer& self) {
                        ++calls;
                        self.invalidate();
                    });
                    loop.addTimer(timer, NSDefaultRunLoopMode);
                    loop.addTimer(shared, NSRunLoopCommonModes);
                    shared->setFireDate(round % 2 == 0 ? Date::distantPast() : Date::distantFuture());
                    shared->setTolerance(round % 3);
                    if (round % 5 == 0)
                        timer->invalidate();
                    if (round % 7 == 0)
                        timer->fire();
                    static_cast<void>(loop.nextFireDate(NSDefaultRunLoopMode));
                }
                shared->invalidate();
                if (--left == 0)
                    end->invalidate();
            });
        loop.run();
        for (auto& thread : threads)
            thread.join();
        loop.run();
        EXPECT_EQ(loop.nextFireDate(NSDefaultRunLoopMode), std::nullopt);
    });
    EXPECT_GT(calls, 0);
}
