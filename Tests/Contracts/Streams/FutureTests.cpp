#include "Orrenby/Utilities/Streams/Future.hpp"

#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"
#include "Orrenby/Utilities/Streams/StreamsPublisher.hpp"
#include "Tests/Support/StreamEngines.hpp"
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

using Number = Streams::Payload<int, Trouble>;
using Outcome = Result<int, Trouble>;
using Future = Streams::Future<int, Trouble>;
using Promises = std::vector<Future::Promise>;

class FutureContract : public orrenby::testing::BothEngines {
protected:
    bool isEager() const { return GetParam() == detail::Engine::Combine; }

    /// A future that leaves its promises and counts its attempts and the clean-ups run.
    Future openFuture()
    {
        return Future([this](Future::Promise promise) {
            m_promises.push_back(promise);
            return [this] { ++m_cleanUps; };
        });
    }

    Promises m_promises;
    int m_cleanUps = 0;
    Received<int, Trouble> m_received;
};

TEST_P(FutureContract, DeliversTheResultOfItsAttempt)
{
    auto callback = std::function<void(int)>();
    const auto startMeasuring = [&](std::function<void(int)> whenDone) { callback = std::move(whenDone); };
    const auto stopMeasuring = [&] { callback = nullptr; };

    //! [Bridging a callback]
    const auto height = Streams::Future<int, Trouble>([&](auto promise) {
        startMeasuring([promise](int metres) { promise(Result<int, Trouble>::success(metres)); });
        return stopMeasuring;
    });
    const auto subscription = height.asPublisher().sink(m_received.recorder());
    //! [Bridging a callback]
    const auto metres = callback; // the clean-up empties the original
    metres(1'200);

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1'200)));
    EXPECT_FALSE(callback);
}

TEST_P(FutureContract, DeliversOneFailureOfAnAttemptThatFailsAtOnce)
{
    const auto future = Future([](auto promise) {
        promise(Outcome::failure({4}));
        return nullptr;
    });

    const auto handle = future.asPublisher().sink(m_received.recorder());

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::error({4})));
}

TEST_P(FutureContract, KeepsTheFirstOfSeveralResults)
{
    const auto future = openFuture();
    const auto handle = future.asPublisher().sink(m_received.recorder());

    m_promises[0](Outcome::success(1));
    m_promises[0](Outcome::success(2));
    m_promises[0](Outcome::failure({3}));

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1)));
}

TEST_P(FutureContract, CancellingBeforeTheResultRunsTheCleanUpOnceAndDeliversNothing)
{
    const auto future = openFuture();
    const auto handle = future.asPublisher().sink(m_received.recorder());

    handle.cancel();
    EXPECT_EQ(m_cleanUps, 1);
    handle.cancel();
    m_promises[0](Outcome::success(1));

    EXPECT_EQ(m_cleanUps, 1);
    EXPECT_THAT(m_received.payloads, ElementsAre());
}

TEST_P(FutureContract, DroppingTheHandleCountsAsCancelling)
{
    const auto future = openFuture();
    auto handle = std::optional(future.asPublisher().sink(m_received.recorder()));

    handle.reset();

    EXPECT_EQ(m_cleanUps, 1);
}

TEST_P(FutureContract, CompletionRunsTheCleanUpOnceAndALaterCancellationDoesNot)
{
    const auto future = openFuture();
    const auto handle = future.asPublisher().sink(m_received.recorder());

    m_promises[0](Outcome::success(1));
    EXPECT_EQ(m_cleanUps, 1);
    handle.cancel();

    EXPECT_EQ(m_cleanUps, 1);
}

TEST_P(FutureContract, RunsTheCleanUpAfterTheResultWasDelivered)
{
    auto order = std::vector<std::string>();
    const auto future = Future([&](auto promise) {
        m_promises.push_back(promise);
        return [&] { order.push_back("clean-up"); };
    });
    const auto handle = future.asPublisher().sink([&](const auto&) { order.push_back("result"); });

    m_promises[0](Outcome::success(1));

    EXPECT_THAT(order, ElementsAre("result", "clean-up"));
}

TEST_P(FutureContract, AResultGivenInsideTheAttemptStillRunsTheCleanUpOnce)
{
    const auto future = Future([&](auto promise) {
        promise(Outcome::success(1));
        return [&] { ++m_cleanUps; };
    });

    const auto handle = future.asPublisher().sink(m_received.recorder());
    handle.cancel();

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1)));
    EXPECT_EQ(m_cleanUps, 1);
}

TEST_P(FutureContract, TheResultMayComeFromAnotherThread)
{
    const auto future = openFuture();
    const auto handle = future.asPublisher().sink(m_received.recorder());

    std::thread([&] { m_promises[0](Outcome::success(1)); }).join();

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1)));
    EXPECT_EQ(m_cleanUps, 1);
}

TEST_P(FutureContract, ASubscriptionOutlivesTheFutureAndItsPublisher)
{
    auto future = std::optional(openFuture());
    const auto handle = future->asPublisher().sink(m_received.recorder());
    future.reset();

    m_promises[0](Outcome::success(1));

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1)));
    EXPECT_EQ(m_cleanUps, 1);
}

TEST_P(FutureContract, AResultThatComesWhenEverybodyHasGoneReachesNobody)
{
    {
        const auto future = openFuture();
        const auto handle = future.asPublisher().sink(m_received.recorder());
    }

    m_promises[0](Outcome::success(1));

    EXPECT_THAT(m_received.payloads, ElementsAre());
    EXPECT_EQ(m_cleanUps, 1);
}

TEST_P(FutureContract, ACleanUpMayDropTheLastHandle)
{
    auto handle = std::optional<Streams::AnyCancellable>();
    const auto before = Streams::liveSubscriptionCount();
    const auto future = Future([&](auto promise) {
        m_promises.push_back(promise);
        return [&] { handle.reset(); };
    });
    handle = future.asPublisher().sink(m_received.recorder());

    handle->cancel();

    EXPECT_FALSE(handle);
    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

TEST_P(FutureContract, ACleanUpThatEndsAnotherSubscriptionIsRunOnce)
{
    auto handles = std::vector<Streams::AnyCancellable>();
    const auto future = Future([&](auto promise) {
        m_promises.push_back(promise);
        return [&] {
            ++m_cleanUps;
            for (const auto& handle : std::vector(handles))
                handle.cancel();
        };
    });
    handles.push_back(future.asPublisher().sink(m_received.recorder()));
    handles.push_back(future.asPublisher().sink(m_received.recorder()));

    handles[0].cancel();

    EXPECT_EQ(m_cleanUps, isEager() ? 1 : 2);
}

TEST_P(FutureContract, LeavesNothingBehind)
{
    const auto before = Streams::liveSubscriptionCount();

    {
        const auto future = openFuture();
        const auto first = future.asPublisher().sink([](const auto&) {});
        const auto second = future.asPublisher().map([](int value) { return value; }).sink([](const auto&) {
        });
        m_promises[0](Outcome::success(1));
    }
    m_promises.clear();

    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

TEST_P(FutureContract, OperatorsTakeItsResultOn)
{
    auto texts = Received<std::string, Trouble>();
    const auto future = openFuture();
    const auto handle
        = future.asPublisher().map([](int value) { return std::to_string(value); }).sink(texts.recorder());

    m_promises[0](Outcome::success(7));

    EXPECT_THAT(texts.payloads, ElementsAre(Streams::Payload<std::string, Trouble>::value("7")));
}

TEST_P(FutureContract, AFutureThatCannotFailTakesASuccess)
{
    auto received = 0;
    const auto future = Streams::Future<int, Never>([](auto promise) {
        promise(Result<int, Never>::success(3));
        return nullptr;
    });

    const auto handle = future.asPublisher().bind([&](int value) { received = value; });

    EXPECT_EQ(received, 3);
}

TEST_P(FutureContract, AnAttemptThatThrowsEndsTheProcess)
{
    EXPECT_DEATH(
        {
            const auto future = Future([](auto) -> UniqueFunction<void()> { throw 1; });
            (void)future.asPublisher().sink([](const auto&) {});
        },
        "");
}

TEST_P(FutureContract, ACleanUpThatThrowsEndsTheProcess)
{
    EXPECT_DEATH(
        {
            const auto future = Future([](auto) { return [] { throw 1; }; });
            future.asPublisher().sink([](const auto&) {}).cancel();
        },
        "terminate called");
}

TEST_P(FutureContract, AnAttemptThatDropsTheFutureItselfStillHasItsCleanUpRun)
{
    if (isEager())
        GTEST_SKIP() << "Combine makes its attempt before there is a future to drop";
    auto future = std::optional<Future>();
    future.emplace([&](Future::Promise promise) {
        m_promises.push_back(promise);
        future.reset();
        return [this] { ++m_cleanUps; };
    });

    const auto handle = future->asPublisher().sink(m_received.recorder());
    EXPECT_FALSE(future);
    EXPECT_EQ(m_cleanUps, 0);
    m_promises[0](Outcome::success(1));

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1)));
    EXPECT_EQ(m_cleanUps, 1);
}

TEST_P(FutureContract, CombineMakesOneAttemptAtCreationAndRxOneForEachSubscription)
{
    const auto future = openFuture();
    EXPECT_EQ(m_promises.size(), isEager() ? 1 : 0);

    const auto first = future.asPublisher().sink(m_received.recorder());
    const auto second = future.asPublisher().sink(m_received.recorder());

    EXPECT_EQ(m_promises.size(), isEager() ? 1 : 2);
}

TEST_P(FutureContract, CombineReplaysItsResultAndRxWaitsForAnother)
{
    const auto future = openFuture();
    auto late = Received<int, Trouble>();
    const auto first = future.asPublisher().sink(m_received.recorder());
    m_promises[0](Outcome::success(1));

    const auto second = future.asPublisher().sink(late.recorder());

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1)));
    if (isEager()) {
        EXPECT_THAT(late.payloads, ElementsAre(Number::value(1)));
        return;
    }
    EXPECT_THAT(late.payloads, ElementsAre());
    m_promises[1](Outcome::success(2));
    EXPECT_THAT(late.payloads, ElementsAre(Number::value(2)));
}

TEST_P(FutureContract, ASubscriptionThatEndsRunsTheCleanUpsOfTheOthersToo)
{
    const auto future = openFuture();
    const auto first = future.asPublisher().sink(m_received.recorder());
    const auto second = future.asPublisher().sink(m_received.recorder());

    second.cancel();
    EXPECT_EQ(m_cleanUps, isEager() ? 1 : 2);
    first.cancel();

    EXPECT_EQ(m_cleanUps, isEager() ? 1 : 2);
}

TEST_P(FutureContract, WhoSubscribesAfterACancellationStillGetsTheResult)
{
    const auto future = openFuture();
    auto cancelled = Received<int, Trouble>();
    future.asPublisher().sink(cancelled.recorder()).cancel();
    EXPECT_EQ(m_cleanUps, 1);

    const auto handle = future.asPublisher().sink(m_received.recorder());
    m_promises.back()(Outcome::success(1));

    EXPECT_EQ(m_promises.size(), isEager() ? 1 : 2); // the cancellation left Combine's one attempt going
    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1)));
    EXPECT_THAT(cancelled.payloads, ElementsAre());
}

TEST_P(FutureContract, ACleanUpThatComesAfterARunWaitsForTheNextEnd)
{
    const auto future = openFuture();
    const auto first = future.asPublisher().sink([](const auto&) {});
    const auto second = future.asPublisher().sink([](const auto&) {});
    first.cancel();
    const auto ran = m_cleanUps;

    const auto third = future.asPublisher().sink([](const auto&) {});
    EXPECT_EQ(m_cleanUps, ran);
    second.cancel();

    EXPECT_EQ(ran, isEager() ? 1 : 2);
    EXPECT_EQ(m_cleanUps, isEager() ? 1 : 3);
}

TEST_P(FutureContract, WithoutASubscriptionNoCleanUpRuns)
{
    {
        const auto future = openFuture();
        for (const auto& promise : m_promises)
            promise(Outcome::success(1));
    }

    EXPECT_EQ(m_cleanUps, 0);
}

TEST_P(FutureContract, CombineRunsTheCleanUpOfAResultThatWasThereBeforeTheFirstSubscription)
{
    if (!isEager())
        GTEST_SKIP() << "Rx makes no attempt before a subscription";
    const auto future = openFuture();
    m_promises[0](Outcome::success(1));
    EXPECT_EQ(m_cleanUps, 0);

    const auto handle = future.asPublisher().sink(m_received.recorder());

    EXPECT_EQ(m_cleanUps, 1);
}

TEST_P(FutureContract, ManyThreadsThatSubscribeWhileTheResultComesAllGetIt)
{
    for (auto round = 0; round < 200; ++round) {
        auto promises = std::vector<Future::Promise>();
        auto mutex = std::mutex();
        auto results = std::atomic(0);
        const auto future = Future([&](auto promise) {
            const auto lock = std::lock_guard(mutex);
            promises.push_back(promise);
            return nullptr;
        });
        auto handles = std::array<Streams::AnyCancellable, 2>();
        auto threads = std::vector<std::thread>();
        for (auto& handle : handles)
            threads.emplace_back(
                [&] { handle = future.asPublisher().sink([&](const auto&) { ++results; }); });
        threads.emplace_back([&] {
            for (auto done = false; !done; std::this_thread::yield()) {
                const auto lock = std::lock_guard(mutex);
                done = promises.size() == (isEager() ? 1 : 2);
                for (const auto& promise : done ? promises : Promises())
                    promise(Outcome::success(1));
            }
        });
        for (auto& thread : threads)
            thread.join();
        ASSERT_EQ(results, 2);
    }
}

static_assert(StreamsPublisher<Future>);

INSTANTIATE_ON_BOTH_ENGINES(FutureContract);

} // namespace
