#include "Orrenby/Platform/World/Clock.hpp"

#include <chrono>
#include <gmock/gmock.h>
#include <memory>

using namespace orrenby;

namespace {

struct CountingObserver final : Clock::Observer {
    void clockDidChange() override { ++count; }
    int count = 0;
};

} // namespace

TEST(SystemClock, TellsTheCalendarTime)
{
    const auto before = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
                            .count();
    const auto now = Clock::system()->now();
    const auto after = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
                           .count();

    EXPECT_LE(before, now.secondsSince1970());
    EXPECT_LE(now.secondsSince1970(), after);
}

TEST(SystemClock, NeverGoesBack)
{
    auto last = Clock::system()->monotonicSeconds();

    for (int round = 0; round < 1'000; ++round) {
        const auto next = Clock::system()->monotonicSeconds();
        ASSERT_GE(next, last);
        last = next;
    }
}

TEST(SystemClock, RunsByItselfAndTakesNoObservers)
{
    const auto observer = std::make_shared<CountingObserver>();

    Clock::system()->addObserver(observer);

    EXPECT_TRUE(Clock::system()->runsByItself());
    EXPECT_EQ(observer.use_count(), 1);
    EXPECT_EQ(observer->count, 0);
}

TEST(SystemClock, IsOne) { EXPECT_EQ(Clock::system(), Clock::system()); }
