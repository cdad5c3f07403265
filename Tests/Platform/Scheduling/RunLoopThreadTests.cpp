#include "Orrenby/Platform/Scheduling/RunLoop.hpp"

#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <future>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::JobOf;
using orrenby::testing::LoopThread;

TEST(RunLoop, IsWokenByABlockFromAnotherThread)
{
    auto thread = LoopThread();
    auto answer = std::promise<bool>();

    thread.loop().perform([&] { answer.set_value(thread.loop().isCurrent()); });

    EXPECT_TRUE(answer.get_future().get());
}

TEST(RunLoop, IsWokenByAJobFromAnotherThread)
{
    auto thread = LoopThread();
    auto answer = std::promise<std::string>();
    auto job = JobOf([&] { answer.set_value(*thread.loop().currentMode()); });

    thread.loop().execute(job);

    EXPECT_EQ(answer.get_future().get(), "kCFRunLoopDefaultMode");
}

TEST(RunLoop, IsWokenByATimerFromAnotherThread)
{
    auto thread = LoopThread();
    auto answer = std::promise<bool>();
    const auto timer = Timer::timerWithTimeInterval(
        0, false, [&](Timer&) { answer.set_value(thread.loop().isCurrent()); });

    thread.loop().addTimer(timer, NSDefaultRunLoopMode);

    EXPECT_TRUE(answer.get_future().get());
}

TEST(RunLoop, OfTheMainThreadIsReachedFromAnotherThread)
{
    auto isMain = false;
    auto thread = std::thread([&] {
        RunLoop::main().perform([&] {
            isMain = Thread::isMainThread();
            RunLoop::main().stop();
        });
    });

    RunLoop::main().run();

    thread.join();
    EXPECT_TRUE(isMain);
}

TEST(RunLoop, CallsWhatFourThreadsHandOverInTheOrderOfEach)
{
    constexpr int threads = 4;
    constexpr int each = 2000;
    std::vector<std::vector<int>> received(threads);
    {
        auto thread = LoopThread();
        std::vector<std::thread> senders;
        for (int sender = 0; sender < threads; ++sender)
            senders.emplace_back([&, sender] {
                for (int number = 0; number < each; ++number)
                    thread.loop().perform(
                        [&, sender, number] { received[static_cast<std::size_t>(sender)].push_back(number); },
                        sender % 2 == 0 ? NSRunLoopCommonModes : NSDefaultRunLoopMode);
            });
        for (auto& sender : senders)
            sender.join();
        auto done = std::promise<void>();
        thread.loop().perform([&] { done.set_value(); });
        done.get_future().get();
    }

    std::vector<int> expected(each);
    for (int number = 0; number < each; ++number)
        expected[static_cast<std::size_t>(number)] = number;
    for (const auto& numbers : received)
        EXPECT_EQ(numbers, expected);
}

TEST(RunLoopDeathTest, EndsTheProcessWhenItIsRunOnAnotherThread)
{
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto runTheMainOne = [] { std::thread([] { RunLoop::main().run(); }).join(); };

    EXPECT_DEATH(runTheMainOne(),
        "Fatal error: A run loop runs on its own thread only: file Platform/Scheduling/RunLoop, line 112");
}
