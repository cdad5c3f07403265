#include "Orrenby/Platform/Scheduling/PlainMutex.hpp"

#include <gtest/gtest.h>
#include <mutex>
#include <thread>

using namespace orrenby;
using detail::PlainMutex;

TEST(PlainMutex, LetsOneThreadAtATimeChangeAValue)
{
    auto mutex = PlainMutex();
    auto count = 0;
    const auto countUp = [&] {
        for (auto turn = 0; turn != 10'000; ++turn) {
            const auto guard = PlainMutex::Guard(mutex);
            ++count;
        }
    };

    auto other = std::thread(countUp);
    countUp();
    other.join();

    EXPECT_EQ(count, 20'000);
}

TEST(PlainMutex, IsFreeForOthersOnceAScopeIsLeftByAnError)
{
    auto mutex = PlainMutex();
    auto visitor = 0;
    try {
        const auto guard = PlainMutex::Guard(mutex);
        throw 1;
    } catch (int number) {
        visitor = number;
    }

    std::thread([&] {
        const auto lock = std::lock_guard(mutex);
        ++visitor;
    }).join();

    EXPECT_EQ(visitor, 2);
}
