#include "Orrenby/Platform/Scheduling/Timer.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::infinity;
using orrenby::testing::onThreadOfItsOwn;

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
