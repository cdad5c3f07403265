#include "Orrenby/Utilities/MutexLock.hpp"

#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

using namespace orrenby;

TEST(MutexLock, GuardsTwoValuesTogether)
{
    //! [Guarding two values together]
    MutexLock lock;
    int balance = 100;
    int moved = 0;

    const int sum = lock.lock([&] {
        balance -= 30;
        moved += 30;
        return balance + moved;
    });

    EXPECT_EQ(sum, 100);
    //! [Guarding two values together]
}

TEST(MutexLock, LetsOneThreadInAtATime)
{
    MutexLock lock;
    int count = 0;
    int inside = 0;
    int most = 0;
    const auto countUp = [&] {
        for (int round = 0; round < 5'000; ++round)
            lock.lock([&] {
                most = std::max(most, ++inside);
                ++count;
                --inside;
            });
    };

    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back(countUp);
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(count, 20'000);
    EXPECT_EQ(most, 1);
}

TEST(MutexLock, ServesReadersAndWritersAlike)
{
    MutexLock lock;

    EXPECT_EQ(lock.read([] { return 1; }), 1);
    EXPECT_EQ(lock.write([] { return 2; }), 2);
}

TEST(MutexLock, IsGivenBackWhenABodyThrows)
{
    MutexLock lock;

    EXPECT_THROW(lock.lock([] { throw std::runtime_error("body"); }), std::runtime_error);
    EXPECT_THROW(lock.read([] { throw std::runtime_error("body"); }), std::runtime_error);
    EXPECT_THROW(lock.write([] { throw std::runtime_error("body"); }), std::runtime_error);

    EXPECT_EQ(lock.lock([] { return 1; }), 1);
}

TEST(MutexLock, PassesResultsThroughAsTheyAre)
{
    MutexLock lock;
    int guarded = 1;

    int& same = lock.lock([&]() -> int& { return guarded; });
    const auto moved = lock.lock([] { return std::make_unique<int>(2); });

    EXPECT_EQ(&same, &guarded);
    EXPECT_EQ(*moved, 2);
    EXPECT_TRUE(std::is_void_v<decltype(lock.lock([] {}))>);
}

TEST(MutexLock, CallsABodyThatCanBeCalledOnce)
{
    struct Once {
        int operator()() && { return 3; }
    };
    MutexLock lock;

    EXPECT_EQ(lock.write(Once()), 3);
}
