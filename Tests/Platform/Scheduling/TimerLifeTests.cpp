#include "Orrenby/Platform/Scheduling/Timer.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gtest/gtest.h>
#include <memory>
#include <utility>
#include <vector>

using namespace orrenby;
using orrenby::testing::inManualWorld;

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
