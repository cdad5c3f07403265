#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"
#include "Tests/Support/StreamEngines.hpp"
#include <array>
#include <future>
#include <memory>
#include <numeric>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <utility>
#include <vector>

using namespace orrenby;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

using Numbers = Streams::PassthroughSubject<int, Trouble>;
using Number = Streams::Payload<int, Trouble>;

/// The kinds of queues that a stream can go on in.
enum class Kind { Serial, Concurrent, Operations, SerialOperations };

/// One of them, and how to hold it up and to hand it work.
class AnyQueue {
public:
    explicit AnyQueue(Kind kind)
        : m_kind(kind)
    {
        if (kind == Kind::SerialOperations)
            m_operations.setMaxConcurrentOperationCount(1);
    }

    Streams::AnyPublisher<int, Trouble> receive(const Streams::AnyPublisher<int, Trouble>& publisher) const
    {
        return isDispatch() ? publisher.receive(dispatchQueue()) : publisher.receive(m_operations);
    }

    void run(UniqueFunction<void()> work) const
    {
        isDispatch() ? dispatchQueue().async(std::move(work)) : m_operations.addOperation(std::move(work));
    }

    /// Returns when nothing of what was handed over before is left, nor of what that handed over.
    void drain() const
    {
        for (auto i = 0; i < 3; ++i) {
            if (!isDispatch())
                m_operations.waitUntilAllOperationsAreFinished();
            else
                dispatchQueue().barrierSync([] {});
        }
    }

private:
    bool isDispatch() const { return m_kind == Kind::Serial || m_kind == Kind::Concurrent; }
    const DispatchQueue& dispatchQueue() const { return m_kind == Kind::Serial ? m_serial : m_concurrent; }

    Kind m_kind;
    DispatchQueue m_serial = DispatchQueue::serial("serial");
    DispatchQueue m_concurrent = DispatchQueue::concurrent("concurrent");
    OperationQueue m_operations;
};

class ReceiveOnContract : public ::testing::TestWithParam<std::tuple<detail::Engine, Kind>> {
protected:
    void SetUp() override
    {
        orrenby::testing::TestAccess::resetEngineChoice();
        Streams::set({.isCombineEnabledWhenAvailable = std::get<0>(GetParam()) == detail::Engine::Combine});
        m_queue = std::make_unique<AnyQueue>(std::get<1>(GetParam()));
        m_subject.emplace();
    }

    const AnyQueue& queue() const { return *m_queue; }
    const Numbers& subject() const { return *m_subject; }
    auto publisher() const { return m_queue->receive(m_subject->asPublisher()); }

    Received<int, Trouble> m_received;

private:
    std::unique_ptr<AnyQueue> m_queue;
    std::optional<Numbers> m_subject;
};

/// Holds a queue up until it is opened.
class Barrier {
public:
    explicit Barrier(const AnyQueue& queue)
    {
        auto entered = std::make_shared<std::promise<void>>();
        auto isInside = entered->get_future();
        queue.run([entered, opened = m_opened.get_future().share()] {
            entered->set_value();
            opened.wait();
        });
        isInside.wait();
    }
    void open() { m_opened.set_value(); }

private:
    std::promise<void> m_opened;
};

TEST_P(ReceiveOnContract, DeliversOnTheQueueInOrderWithFailuresAmongThem)
{
    auto threads = std::set<std::thread::id>();
    const auto handle = publisher().sink([&](const Number& payload) {
        threads.insert(std::this_thread::get_id());
        m_received.payloads.push_back(payload);
    });

    subject().send(1);
    subject().send(Trouble{2});
    subject().send(3);
    queue().drain();

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1), Number::error({2}), Number::value(3)));
    EXPECT_FALSE(threads.contains(std::this_thread::get_id()));
}

TEST_P(ReceiveOnContract, KeepsTheOrderOfManyValuesFromOneThread)
{
    constexpr auto count = 20'000;
    auto values = std::vector<int>();
    const auto handle = publisher().sink(
        [&](const Number& payload) { values.push_back(*payload.asValue()); });

    for (auto i = 0; i < count; ++i)
        subject().send(i);
    queue().drain();

    auto expected = std::vector<int>(count);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(values, expected);
}

TEST_P(ReceiveOnContract, NeverOverlapsAndLosesNothingOfSeveralThreads)
{
    constexpr auto count = 5'000;
    auto depth = std::atomic(0);
    auto total = 0;
    const auto handle = publisher().sink([&](const Number&) {
        EXPECT_EQ(depth.fetch_add(1), 0);
        ++total;
        depth.fetch_sub(1);
    });

    auto senders = std::array<std::thread, 3>();
    for (auto& sender : senders)
        sender = std::thread([&] {
            for (auto i = 0; i < count; ++i)
                subject().send(i);
        });
    for (auto& sender : senders)
        sender.join();
    queue().drain();

    EXPECT_EQ(total, 3 * count);
}

TEST_P(ReceiveOnContract, DeliversNothingOfWhatWaitsAfterACancellation)
{
    if (std::get<1>(GetParam()) == Kind::Concurrent || std::get<1>(GetParam()) == Kind::Operations)
        GTEST_SKIP() << "one piece of work does not hold such a queue up";
    auto barrier = Barrier(queue());
    const auto handle = publisher().sink(m_received.recorder());

    subject().send(1);
    subject().send(2);
    handle.cancel();
    barrier.open();
    queue().drain();

    EXPECT_THAT(m_received.payloads, ElementsAre());
}

TEST_P(ReceiveOnContract, CancellingInItsOwnCallbackDropsTheRestOfTheBatch)
{
    auto handle = Streams::AnyCancellable();
    handle = publisher().sink([&](const Number& payload) {
        m_received.payloads.push_back(payload);
        handle.cancel();
    });

    queue().run([&] {
        for (auto i = 1; i <= 3; ++i)
            subject().send(i);
    });
    queue().drain();

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1)));
}

TEST_P(ReceiveOnContract, CancelAndWaitWaitsForTheCallbackInTheQueue)
{
    auto calls = std::atomic(0);
    auto entered = std::promise<void>();
    auto goOn = std::promise<void>();
    auto isInside = std::atomic(false);
    const auto handle = publisher().sink([&](const Number&) {
        isInside = true;
        if (++calls == 1) {
            entered.set_value();
            goOn.get_future().wait();
        }
        isInside = false;
    });
    subject().send(1);
    entered.get_future().wait();
    subject().send(2);

    auto canceller = std::thread([&] {
        handle.cancelAndWait();
        EXPECT_FALSE(isInside);
        const auto callsBefore = calls.load();
        queue().drain();
        EXPECT_EQ(calls, callsBefore);
    });
    goOn.set_value();
    canceller.join();
}

TEST_P(ReceiveOnContract, CancelAndWaitInItsOwnCallbackReturnsAtOnce)
{
    auto handle = Streams::AnyCancellable();
    handle = publisher().sink([&](const Number& payload) {
        m_received.payloads.push_back(payload);
        handle.cancelAndWait();
    });

    subject().send(1);
    queue().drain();

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1)));
}

TEST_P(ReceiveOnContract, ValuesSentInItsCallbackFollow)
{
    const auto handle = publisher().sink([&](const Number& payload) {
        m_received.payloads.push_back(payload);
        if (payload == Number::value(1))
            subject().send(2);
    });

    subject().send(1);
    queue().drain();

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1), Number::value(2)));
}

TEST_P(ReceiveOnContract, DeliversWhatWasSentBeforeTheEnd)
{
    const auto handle = publisher().sink(m_received.recorder());

    subject().send(1);
    subject().send(Numbers::Completion::failure({2}));
    queue().drain();

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(1), Number::error({2})));
}

TEST_P(ReceiveOnContract, OperatorsBehindItRunOnTheQueue)
{
    auto mapped = std::thread::id();
    const auto handle = publisher()
                            .map([&](int value) {
                                mapped = std::this_thread::get_id();
                                return value + 1;
                            })
                            .sink(m_received.recorder());

    subject().send(1);
    queue().drain();

    EXPECT_THAT(m_received.payloads, ElementsAre(Number::value(2)));
    EXPECT_NE(mapped, std::this_thread::get_id());
}

TEST_P(ReceiveOnContract, DroppingEverythingWithValuesOnTheirWayLeavesNothingBehind)
{
    const auto before = Streams::liveSubscriptionCount();
    auto content = std::make_shared<int>(1);

    {
        const auto shared = Streams::PassthroughSubject<std::shared_ptr<int>, Trouble>();
        const auto hop = DispatchQueue::serial("hop");
        const auto handle = shared.asPublisher().receive(hop).sink([](const auto&) {});
        for (auto i = 0; i < 100; ++i)
            shared.send(content);
        handle.cancel();
        hop.sync([] {});
    }
    while (Streams::liveSubscriptionCount() != before) // the queue's thread lets go of its last job
        std::this_thread::yield();

    EXPECT_EQ(content.use_count(), 1);
}

TEST_P(ReceiveOnContract, ASubscriberMayGoAwayWhileTheQueueDelivers)
{
    for (auto round = 0; round < 300; ++round) {
        auto target = std::make_shared<std::atomic<int>>(0);
        auto handle = std::optional(publisher().sink([target](const Number&) { ++*target; }));
        for (auto i = 0; i < 20; ++i)
            subject().send(i);
        handle.reset();
    }
    queue().drain();
}

std::string caseName(const ::testing::TestParamInfo<std::tuple<detail::Engine, Kind>>& parameters)
{
    constexpr auto names = std::array{"Serial", "Concurrent", "Operations", "SerialOperations"};
    const auto [engine, kind] = parameters.param;
    return std::string(engine == detail::Engine::Combine ? "Combine" : "Rx")
        + names[static_cast<std::size_t>(kind)];
}

INSTANTIATE_TEST_SUITE_P(EnginesAndQueues, ReceiveOnContract,
    ::testing::Combine(::testing::Values(detail::Engine::Combine, detail::Engine::Rx),
        ::testing::Values(Kind::Serial, Kind::Concurrent, Kind::Operations, Kind::SerialOperations)),
    caseName);

class ReceiveOnDispatchQueue : public orrenby::testing::BothEngines {};

TEST_P(ReceiveOnDispatchQueue, ThePlaceOfABatchIsThatOfItsFirstValue)
{
    const auto queue = DispatchQueue::serial("order");
    const auto subject = Numbers();
    auto order = std::vector<std::string>();
    auto opened = std::promise<void>();
    queue.async([&] { opened.get_future().wait(); });

    //! [Going on in a queue]
    const auto subscription = subject.asPublisher().receive(queue).sink(
        [&](const auto& payload) { order.push_back(payload.description()); });
    //! [Going on in a queue]
    queue.async([&] { order.push_back("before"); });
    subject.send(1);
    queue.async([&] { order.push_back("between"); });
    subject.send(2);
    opened.set_value();
    queue.sync([] {});

    EXPECT_THAT(order, ElementsAre("before", "value(1)", "value(2)", "between"));
}

/// A value that knows how many of its kind there are at most.
class Counted {
public:
    Counted() noexcept { count(); }
    Counted(const Counted&) noexcept { count(); }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --s_live; }

    static inline std::atomic<std::int64_t> s_live = 0;
    static inline std::atomic<std::int64_t> s_most = 0;

private:
    static void count() noexcept
    {
        const auto live = ++s_live;
        if (live > s_most)
            s_most = live;
    }
};

TEST_P(ReceiveOnDispatchQueue, KeepsNoMoreValuesThanWhatWaitsAtATime)
{
    constexpr auto batches = 200;
    constexpr auto batchSize = 1'000;
    const auto queue = DispatchQueue::serial("hop");
    const auto subject = Streams::PassthroughSubject<Counted, Never>();
    auto received = 0;
    Counted::s_most = 0;
    const auto handle = subject.asPublisher().receive(queue).bind([&](const Counted&) { ++received; });

    for (auto batch = 0; batch < batches; ++batch) {
        for (auto i = 0; i < batchSize; ++i)
            subject.send(Counted());
        queue.sync([] {}); // the consumer keeps up
    }

    EXPECT_EQ(received, batches * batchSize);
    EXPECT_LE(Counted::s_most, 2 * batchSize); // one batch on its way, and the copies of those who hand it on
}

/// The most memory that the process has had so far, in KiB.
long peakMemory()
{
    auto usage = rusage();
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST_P(ReceiveOnDispatchQueue, TenMillionValuesNeedNoMoreMemoryThanTheFirst)
{
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "a sanitizer's own memory grows";
#endif
    constexpr auto count = 10'000'000;
    const auto queue = DispatchQueue::serial("hop");
    const auto subject = Numbers();
    auto received = std::int64_t(0);
    auto peak = 0L;
    const auto handle = subject.asPublisher().receive(queue).sink([&](const auto&) { ++received; });

    for (auto i = 0; i < count; ++i) {
        subject.send(i);
        if (i % 10'000 == 0)
            queue.sync([] {}); // the consumer keeps up
        if (i == count / 100)
            peak = peakMemory();
    }
    queue.sync([] {});

    EXPECT_EQ(received, count);
    EXPECT_LE(peakMemory(), peak + 4'096);
}

TEST_P(ReceiveOnDispatchQueue, ASuspendedOperationQueueLosesNothingWhenItsOperationsAreCancelled)
{
    auto queue = OperationQueue();
    queue.setSuspended(true);
    const auto subject = Numbers();
    auto received = Received<int, Trouble>();
    const auto handle = subject.asPublisher().receive(queue).sink(received.recorder());
    subject.send(1);
    queue.cancelAllOperations();
    queue.setSuspended(false);
    queue.waitUntilAllOperationsAreFinished();

    subject.send(2);
    queue.waitUntilAllOperationsAreFinished();

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::value(2)));
}

TEST_P(ReceiveOnDispatchQueue, AnOperationQueueRunsItsJobsWithNormalPriority)
{
    class Marking : public Operation {
    public:
        Marking(std::vector<std::string>& order, std::string mark)
            : m_order(order)
            , m_mark(std::move(mark))
        {}
        void main() override { m_order.push_back(m_mark); }

    private:
        std::vector<std::string>& m_order;
        std::string m_mark;
    };
    const auto queue = OperationQueue();
    queue.setMaxConcurrentOperationCount(1);
    queue.setSuspended(true);
    auto order = std::vector<std::string>();
    const auto add = [&](const std::string& mark, Operation::QueuePriority priority) {
        const auto operation = make<Marking>(order, mark);
        operation->setQueuePriority(priority);
        queue.addOperation(operation);
    };
    const auto subject = Numbers();
    const auto handle = subject.asPublisher().receive(queue).sink(
        [&](const auto&) { order.emplace_back("value"); });
    add("low", Operation::QueuePriority::Low);
    subject.send(1);
    add("high", Operation::QueuePriority::High);

    queue.setSuspended(false);
    queue.waitUntilAllOperationsAreFinished();

    EXPECT_THAT(order, ElementsAre("high", "value", "low"));
}

INSTANTIATE_ON_BOTH_ENGINES(ReceiveOnDispatchQueue);

} // namespace
