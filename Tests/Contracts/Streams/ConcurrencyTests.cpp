#include "Tests/Support/StreamEngines.hpp"

#include <algorithm>
#include <atomic>
#include <memory>
#include <numeric>
#include <thread>

using namespace orrenby;
using ::testing::Each;
using ::testing::ElementsAreArray;

namespace {

class ConcurrencyContract : public orrenby::testing::BothEngines {};

constexpr auto threadCount = 4;
constexpr auto roundCount = 5'000;

/// Runs `body(index)` on several threads and waits for all of them.
template <class Body> void onThreads(Body body)
{
    auto threads = std::vector<std::thread>();
    for (auto index = 0; index < threadCount; ++index)
        threads.emplace_back(body, index);
    for (auto& thread : threads)
        thread.join();
}

TEST_P(ConcurrencyContract, NoValueIsLostAndAllSubscribersSeeOneOrder)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto first = std::vector<int>();
    auto second = std::vector<int>();
    const auto a = subject.asPublisher().bind([&](int value) { first.push_back(value); });
    const auto b = subject.asPublisher().bind([&](int value) { second.push_back(value); });

    onThreads([&](int index) {
        for (auto round = 0; round < roundCount; ++round)
            subject.send(index * roundCount + round);
    });

    EXPECT_EQ(first, second);
    auto sorted = first;
    std::sort(sorted.begin(), sorted.end());
    auto all = std::vector<int>(threadCount * roundCount);
    std::iota(all.begin(), all.end(), 0);
    EXPECT_EQ(sorted, all);
}

TEST_P(ConcurrencyContract, OneSubscriberIsNeverCalledTwiceAtATime)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto inside = std::atomic(0);
    auto overlaps = std::atomic(0);
    const auto handle = subject.asPublisher().bind([&](int) {
        overlaps += inside.fetch_add(1) != 0;
        inside.fetch_sub(1);
    });

    onThreads([&](int) {
        for (auto round = 0; round < roundCount; ++round)
            subject.send(round);
    });

    EXPECT_EQ(overlaps, 0);
}

TEST_P(ConcurrencyContract, WhoComesWhileOthersSendMissesNothingAfterItsFirstValue)
{
    const auto subject = Streams::CurrentValueSubject<int, Never>(0);
    auto isSending = std::atomic(true);
    auto sender = std::thread([&, subject] {
        for (auto value = 1; isSending; ++value)
            subject.send(value);
    });

    for (auto round = 0; round < 2'000; ++round) {
        auto gaps = std::atomic(0);
        auto last = std::atomic(-1);
        const auto handle = subject.asPublisher().bind([&](int value) {
            const auto previous = last.exchange(value);
            gaps += previous >= 0 && value != previous + 1;
        });
        EXPECT_GE(last, 0) << "the first value comes before sink returns";
        handle.cancelAndWait();
        EXPECT_EQ(gaps, 0);
    }
    isSending = false;
    sender.join();
}

TEST_P(ConcurrencyContract, WhatIsSentDuringALongFirstValueFollowsWhenThatIsOver)
{
    const auto subject = Streams::CurrentValueSubject<int, Never>(0);
    auto seen = std::vector<int>();
    auto isInFirstValue = std::atomic(false);
    auto isAllSent = std::atomic(false);
    auto overlaps = std::atomic(0);
    // A subscriber sits in its delivery until a newcomer, on another thread, is in its first value; so the
    // deliverer leaves first.
    const auto other = subject.asPublisher().bind([&](int value) {
        while (value == 1 && !isInFirstValue)
            std::this_thread::yield();
    });
    auto sender = std::thread([&] {
        for (const auto value : {1, 2, 3})
            subject.send(value);
        isAllSent = true;
    });
    while (subject.value() == 0)
        std::this_thread::yield();

    const auto handle = subject.asPublisher().bind([&](int value) {
        overlaps += isInFirstValue && !isAllSent;
        seen.push_back(value);
        isInFirstValue = true;
        while (value == 1 && !isAllSent)
            std::this_thread::yield();
    });
    sender.join();

    EXPECT_THAT(seen, ElementsAreArray({1, 2, 3}));
    EXPECT_EQ(overlaps, 0);
}

TEST_P(ConcurrencyContract, SubscribingCancellingAndSendingAtOnceKeepsEverythingWhole)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto delivered = std::atomic<std::int64_t>(0);

    onThreads([&](int index) {
        auto kept = std::vector<Streams::AnyCancellable>();
        for (auto round = 0; round < roundCount; ++round) {
            auto handle = subject.asPublisher().bind([&, witness = std::make_shared<int>(round)](
                                                         int value) { delivered += value + *witness * 0; });
            subject.send(1);
            if (round % 3 == index % 3)
                kept.push_back(handle);
            if (kept.size() > 10)
                kept.clear();
            handle.cancel();
        }
    });

    EXPECT_GT(delivered, 0);
    EXPECT_EQ(detail::Subscription::liveCount(), 0);
}

TEST_P(ConcurrencyContract, AHandleMayBeCancelledFromManyThreadsAtOnce)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    for (auto round = 0; round < 200; ++round) {
        auto count = std::atomic(0);
        const auto handle = subject.asPublisher().bind([&](int) { ++count; });

        onThreads([&](int index) {
            if (index == 0)
                subject.send(1);
            handle.cancel();
        });
        const auto seen = count.load();
        subject.send(2);

        EXPECT_EQ(count, seen);
    }
    EXPECT_EQ(detail::Subscription::liveCount(), 0);
}

TEST_P(ConcurrencyContract, OfManyCompletionsAtOnceOneIsDeliveredAndNothingAfterIt)
{
    using Subject = Streams::CurrentValueSubject<int, orrenby::testing::Trouble>;
    for (auto round = 0; round < 200; ++round) {
        const auto subject = Subject(0);
        auto received = orrenby::testing::Received<int, orrenby::testing::Trouble>();
        const auto handle = subject.asPublisher().sink(received.recorder());

        onThreads([&](int index) {
            for (auto value = 1; value < 20; ++value)
                subject.send(value);
            subject.send(Subject::Completion::failure({index}));
        });

        const auto failures = std::count_if(received.payloads.begin(), received.payloads.end(),
            [](const auto& payload) { return payload.isError(); });
        EXPECT_EQ(failures, 1);
        EXPECT_TRUE(received.payloads.back().isError());
        EXPECT_THROW(subject.get(), orrenby::testing::Trouble);
    }
}

TEST_P(ConcurrencyContract, ReadingACurrentValueWhileOthersWriteGivesAWholeValue)
{
    const auto subject = Streams::CurrentValueSubject<std::string, Never>(std::string(100, '0'));
    auto mixed = std::atomic(0);

    onThreads([&](int index) {
        for (auto round = 0; round < roundCount; ++round) {
            if (index % 2 == 0)
                subject.send(std::string(100, static_cast<char>('0' + round % 10)));
            const auto text = subject.value();
            mixed += text.find_first_not_of(text.front()) != std::string::npos;
        }
    });

    EXPECT_EQ(mixed, 0);
}

INSTANTIATE_ON_BOTH_ENGINES(ConcurrencyContract);

} // namespace
