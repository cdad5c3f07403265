#include "Orrenby/Utilities/Timer+Block.hpp"

#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Tests/Support/ManualWorld.hpp"
#include <future>
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::inManualWorld;
using ::testing::ElementsAre;

namespace {

int calls = 0;
void countTheCall(Timer&) { ++calls; }

void expectNothingHappens(Any userInfo)
{
    const auto timer = Timer::timerWithTimeInterval(1, true, {.userInfo = std::move(userInfo)}, nullptr);

    timerFired(*timer);

    EXPECT_TRUE(timer->isValid());
}

} // namespace

TEST(TimerBlock, IsCalledOnceInTheDefaultMode)
{
    inManualWorld([] {
        //! [Scheduling in one call]
        std::vector<std::string> events;
        scheduledTimer(3, false, [&](Timer&) { events.emplace_back("reminded"); });
        const auto blink = scheduledTimer(
            2, true, UITrackingRunLoopMode, [&](Timer&) { events.emplace_back("blinked"); });

        RunLoop::current().runFor(5);
        RunLoop::current().run(UITrackingRunLoopMode, Date::now() + 2);
        //! [Scheduling in one call]

        EXPECT_THAT(events, ElementsAre("reminded", "blinked", "blinked"));
    });
}

TEST(TimerBlock, IsCalledWithItsTimerEachTime)
{
    inManualWorld([] {
        std::vector<Timer*> received;
        const auto timer = scheduledTimer(1, true, [&](Timer& self) { received.push_back(&self); });

        RunLoop::current().runFor(2);

        EXPECT_THAT(received, ElementsAre(timer.get(), timer.get()));
    });
}

TEST(TimerBlock, IsScheduledInTheDefaultModeByItsText)
{
    inManualWorld([] {
        const auto timer = scheduledTimer(4, false, std::string("kCFRunLoopDefaultMode"), nullptr);

        EXPECT_EQ(RunLoop::current().nextFireDate(NSDefaultRunLoopMode), Date::now() + 4);
        EXPECT_EQ(RunLoop::current().nextFireDate(UITrackingRunLoopMode), std::nullopt);
    });
}

TEST(TimerBlock, IsScheduledInAnotherModeAlone)
{
    inManualWorld([] {
        const auto timer = scheduledTimer(4, true, "own", nullptr);

        EXPECT_EQ(RunLoop::current().nextFireDate("own"), Date::now() + 4);
        EXPECT_EQ(RunLoop::current().nextFireDate(NSDefaultRunLoopMode), std::nullopt);
        EXPECT_EQ(timer->timeInterval(), 4);
    });
}

TEST(TimerBlock, IsScheduledInAllCommonModes)
{
    inManualWorld([] {
        const auto timer = scheduledTimer(4, true, NSRunLoopCommonModes, nullptr);

        EXPECT_EQ(RunLoop::current().nextFireDate(NSDefaultRunLoopMode), Date::now() + 4);
        EXPECT_EQ(RunLoop::current().nextFireDate(UITrackingRunLoopMode), Date::now() + 4);
    });
}

TEST(TimerBlock, IsScheduledByItsOtherNameTheSameWay)
{
    inManualWorld([] {
        int count = 0;
        const auto timer = scheduledTimerWithDuration(2, true, [&](Timer&) { ++count; });

        RunLoop::current().runFor(4);

        EXPECT_EQ(count, 2);
    });
}

TEST(TimerBlock, IsCalledOnTheThreadThatScheduledItWithItsLoopAlone)
{
    auto scheduled = std::promise<void>();
    auto looked = std::promise<void>();
    auto scheduler = std::thread::id();
    auto callers = std::vector<std::thread::id>();
    auto thread = std::thread([&] {
        scheduler = std::this_thread::get_id();
        scheduledTimer(0, false, "own", [&](Timer&) { callers.push_back(std::this_thread::get_id()); });
        scheduled.set_value();
        looked.get_future().get();
        RunLoop::current().run("own", Date::distantFuture());
    });

    scheduled.get_future().get();
    EXPECT_EQ(RunLoop::current().nextFireDate("own"), std::nullopt);
    EXPECT_EQ(RunLoop::main().nextFireDate("own"), std::nullopt);
    looked.set_value();
    thread.join();

    EXPECT_NE(scheduler, std::this_thread::get_id());
    EXPECT_THAT(callers, ElementsAre(scheduler));
}

TEST(TimerBlock, CarriedAsUserInfoIsCalledWithTheTimer)
{
    Timer* received = nullptr;
    const auto block = TimerBlock([&](Timer& timer) { received = &timer; });
    const auto timer = Timer::timerWithTimeInterval(1, true, {.userInfo = block}, nullptr);

    timerFired(*timer);

    EXPECT_EQ(received, timer.get());
}

TEST(TimerBlock, CarriedAsAFunctionIsCalled)
{
    calls = 0;
    const auto timer = Timer::timerWithTimeInterval(1, true, {.userInfo = &countTheCall}, nullptr);

    timerFired(*timer);

    EXPECT_EQ(calls, 1);
}

TEST(TimerBlock, CarriedAsUserInfoMayEndItsTimer)
{
    const auto token = std::make_shared<int>(7);
    const auto block = TimerBlock([token](Timer& timer) {
        timer.invalidate();
        EXPECT_EQ(*token, 7);
    });
    const auto timer = Timer::timerWithTimeInterval(1, true, {.userInfo = block}, nullptr);

    timerFired(*timer);

    EXPECT_FALSE(timer->isValid());
}

TEST(TimerBlock, ServesAsTheBlockOfATimerThatCarriesAnother)
{
    inManualWorld([] {
        int count = 0;
        const auto carried = TimerBlock([&](Timer&) { ++count; });
        const auto timer = Timer::scheduledTimerWithTimeInterval(1, false, {.userInfo = carried}, timerFired);

        RunLoop::current().run();

        EXPECT_EQ(count, 1);
    });
}

TEST(TimerBlock, IsMissedSilently)
{
    expectNothingHappens(Any());
    expectNothingHappens("text");
    expectNothingHappens(7);
    expectNothingHappens(TimerBlock());
    expectNothingHappens(static_cast<void (*)(Timer&)>(nullptr));
    expectNothingHappens(std::function<void()>([] { ADD_FAILURE() << "takes no timer"; }));
}
