#pragma once

/// @file
/// What holds for every operator, whatever it does.

#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"
#include "Tests/Support/StreamEngines.hpp"
#include <atomic>
#include <future>
#include <memory>
#include <thread>
#include <vector>

namespace orrenby::testing {

using NumberSubject = Streams::PassthroughSubject<int, Trouble>;

/// `apply` makes the operator's stream of a publisher of numbers, `trigger` makes it deliver once.
template <class Apply, class Trigger>
void expectToLeaveNothingBehind(const Apply& apply, const Trigger& trigger)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto kept = std::make_shared<int>(0);

    {
        const auto subject = NumberSubject();
        const auto publisher = apply(subject.asPublisher().map([kept](int value) { return value + *kept; }));
        auto handle = publisher.sink([kept](const auto&) {});
        EXPECT_GT(Streams::liveSubscriptionCount(), before);
        trigger(subject);
        handle = {};
        EXPECT_EQ(Streams::liveSubscriptionCount(), before);

        handle = publisher.sink([](const auto&) {});
        subject.send(Streams::Completion<Trouble>::finished());
    }

    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
    EXPECT_EQ(kept.use_count(), 1);
}

template <class Apply, class Trigger>
void expectToStopInsideItsCallback(const Apply& apply, const Trigger& trigger)
{
    const auto subject = NumberSubject();
    auto calls = 0;
    auto handle = Streams::AnyCancellable();
    handle = apply(subject.asPublisher()).sink([&](const auto&) {
        ++calls;
        handle.cancel();
    });

    trigger(subject);
    trigger(subject);

    EXPECT_EQ(calls, 1);
}

/// The callback drops its own handle, with which everything it stands on goes away.
template <class Apply, class Trigger>
void expectToBeReleasedInsideItsCallback(const Apply& apply, const Trigger& trigger)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto subject = NumberSubject();
    auto calls = 0;
    auto handle = Streams::AnyCancellable();
    handle = apply(subject.asPublisher()).sink([&, kept = std::make_shared<int>(1)](const auto&) {
        handle = {};
        calls += *kept;
    });

    trigger(subject);
    trigger(subject);

    EXPECT_EQ(calls, 1);
    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

template <class Apply, class Trigger>
void expectToServeTwoSubscribers(const Apply& apply, const Trigger& trigger)
{
    const auto subject = NumberSubject();
    const auto publisher = apply(subject.asPublisher());
    auto first = 0;
    auto second = 0;
    const auto one = publisher.sink([&](const auto&) { ++first; });
    const auto two = publisher.sink([&](const auto&) { ++second; });

    trigger(subject);

    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

/// A callback that is held up on one thread while another one cancels.
class HeldUp {
public:
    /// What the callback does.
    void hold()
    {
        m_entered.set_value();
        m_goOn.get_future().wait();
        m_isDone = true;
    }

    /// Cancels on another thread as soon as the callback has begun.
    template <class Handle> void expectCancellingToWait(const Handle& handle)
    {
        m_entered.get_future().wait();
        auto canceller = std::thread([&] {
            handle.cancelAndWait();
            EXPECT_TRUE(m_isDone);
        });
        m_goOn.set_value();
        canceller.join();
    }

private:
    std::promise<void> m_entered;
    std::promise<void> m_goOn;
    std::atomic<bool> m_isDone = false;
};

template <class Apply, class Trigger>
void expectToWaitForADeliveryElsewhere(const Apply& apply, const Trigger& trigger)
{
    const auto subject = NumberSubject();
    auto heldUp = HeldUp();
    const auto handle = apply(subject.asPublisher()).sink([&](const auto&) { heldUp.hold(); });
    auto sender = std::thread([&] { trigger(subject); });

    heldUp.expectCancellingToWait(handle);
    sender.join();
}

/// Also what stands before the operator does not run any more once a `cancelAndWait()` is over.
template <class Apply> void expectToWaitForWhatFeedsIt(const Apply& apply)
{
    const auto subject = NumberSubject();
    auto heldUp = HeldUp();
    auto isFirst = std::atomic(true);
    const auto slow = subject.asPublisher().map([&](int value) {
        if (isFirst.exchange(false))
            heldUp.hold();
        return value;
    });
    const auto handle = apply(slow).sink([](const auto&) {});
    auto sender = std::thread([&] { subject.send(1); });

    heldUp.expectCancellingToWait(handle);
    sender.join();
}

template <class Apply> void expectToRefuseTheOtherEngine(const Apply& apply, detail::Engine current)
{
    const auto publisher = apply(NumberSubject().asPublisher());
    TestAccess::resetEngineChoice();
    Streams::set({.isCombineEnabledWhenAvailable = current != detail::Engine::Combine});

    EXPECT_DEATH((void)publisher.sink([](const auto&) {}), "used with the other engine");
}

inline void sendOne(const NumberSubject& subject) { subject.send(1); }

} // namespace orrenby::testing

/// The tests that hold for every operator. A macro, so that each has a name of its own.
#define TEST_WHAT_HOLDS_FOR_OPERATORS(suite, apply, trigger)                                                 \
    TEST_P(suite, LeavesNothingBehind) { orrenby::testing::expectToLeaveNothingBehind(apply, trigger); }     \
    TEST_P(suite, StopsInsideItsCallback)                                                                    \
    {                                                                                                        \
        orrenby::testing::expectToStopInsideItsCallback(apply, trigger);                                     \
    }                                                                                                        \
    TEST_P(suite, IsReleasedInsideItsCallback)                                                               \
    {                                                                                                        \
        orrenby::testing::expectToBeReleasedInsideItsCallback(apply, trigger);                               \
    }                                                                                                        \
    TEST_P(suite, ServesTwoSubscribers) { orrenby::testing::expectToServeTwoSubscribers(apply, trigger); }   \
    TEST_P(suite, WaitsForADeliveryElsewhere)                                                                \
    {                                                                                                        \
        orrenby::testing::expectToWaitForADeliveryElsewhere(apply, trigger);                                 \
    }                                                                                                        \
    TEST_P(suite, WaitsForWhatFeedsIt) { orrenby::testing::expectToWaitForWhatFeedsIt(apply); }              \
    TEST_P(suite, RefusesTheOtherEngine)                                                                     \
    {                                                                                                        \
        orrenby::testing::expectToRefuseTheOtherEngine(apply, GetParam());                                   \
    }                                                                                                        \
    static_assert(true)
