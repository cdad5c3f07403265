#include "Tests/Support/StreamEngines.hpp"

#include <atomic>
#include <memory>
#include <optional>
#include <thread>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

class CancellationContract : public orrenby::testing::BothEngines {
protected:
    Streams::PassthroughSubject<int, Never>& subject() { return *m_subject; }
    void dropSubject() { m_subject.reset(); }

    void SetUp() override
    {
        BothEngines::SetUp();
        m_subject.emplace();
    }

private:
    std::optional<Streams::PassthroughSubject<int, Never>> m_subject;
};

TEST_P(CancellationContract, ACancelledSubscriptionReceivesNothing)
{
    auto seen = std::vector<int>();
    const auto handle = subject().asPublisher().bind([&](int value) { seen.push_back(value); });

    subject().send(1);
    handle.cancel();
    subject().send(2);

    EXPECT_THAT(seen, ElementsAre(1));
}

TEST_P(CancellationContract, DroppingTheOnlyHandleEndsTheSubscription)
{
    auto seen = std::vector<int>();
    auto handle = std::optional(subject().asPublisher().bind([&](int value) { seen.push_back(value); }));

    subject().send(1);
    handle.reset();
    subject().send(2);

    EXPECT_THAT(seen, ElementsAre(1));
}

TEST_P(CancellationContract, TheSubscriptionLivesAsLongAsAnyCopyOfItsHandle)
{
    auto seen = std::vector<int>();
    auto first = std::optional(subject().asPublisher().bind([&](int value) { seen.push_back(value); }));
    auto second = first;

    first.reset();
    subject().send(1);
    second.reset();
    subject().send(2);

    EXPECT_THAT(seen, ElementsAre(1));
}

TEST_P(CancellationContract, CancellingTwiceAndReleasingAfterwardsIsHarmless)
{
    const auto handle = subject().asPublisher().bind([](int) {});

    handle.cancel();
    handle.cancel();
    handle.cancelAndWait();
    subject().send(1);

    EXPECT_EQ(detail::Subscription::liveCount(), 1) << "only the handle keeps it";
}

TEST_P(CancellationContract, CancelledInItsOwnCallbackItReceivesNothingMore)
{
    auto seen = std::vector<int>();
    auto handle = Streams::AnyCancellable();
    handle = subject().asPublisher().bind([&](int value) {
        seen.push_back(value);
        handle.cancel();
    });

    subject().send(1);
    subject().send(2);

    EXPECT_THAT(seen, ElementsAre(1));
}

TEST_P(CancellationContract, TheLastHandleMayGoAwayInsideItsOwnCallback)
{
    auto witness = std::make_shared<int>(0);
    const auto weak = std::weak_ptr<int>(witness);
    auto wasAliveAfterDrop = false;
    auto handle = std::make_unique<Streams::AnyCancellable>();
    *handle = subject().asPublisher().bind([&, witness = std::move(witness)](int) {
        handle.reset();
        wasAliveAfterDrop = !weak.expired(); // the callback itself must outlive its own run
    });

    subject().send(1);

    EXPECT_TRUE(wasAliveAfterDrop);
    EXPECT_TRUE(weak.expired()) << "and go away with the delivery";
}

TEST_P(CancellationContract, AValueInFlightIsDroppedForASiblingThatIsCancelled)
{
    auto seen = std::string();
    auto sibling = Streams::AnyCancellable();
    const auto first = subject().asPublisher().bind([&](int) {
        seen += 'a';
        sibling.cancel();
    });
    sibling = subject().asPublisher().bind([&](int) { seen += 'b'; });
    const auto third = subject().asPublisher().bind([&](int) { seen += 'c'; });

    subject().send(1);
    subject().send(2);

    EXPECT_EQ(seen, "acac");
}

TEST_P(CancellationContract, AnEarlierSiblingMayBeCancelledToo)
{
    auto seen = std::string();
    auto first = subject().asPublisher().bind([&](int) { seen += 'a'; });
    const auto second = subject().asPublisher().bind([&](int) {
        seen += 'b';
        first = {};
    });

    subject().send(1);
    subject().send(2);

    EXPECT_EQ(seen, "abb");
}

TEST_P(CancellationContract, EveryoneMayBeCancelledInsideOneDelivery)
{
    auto seen = std::string();
    auto handles = std::vector<Streams::AnyCancellable>();
    for (const auto name : {'a', 'b', 'c'})
        handles.push_back(subject().asPublisher().bind([&, name](int) {
            seen += name;
            handles.clear();
        }));

    subject().send(1);
    subject().send(2);

    EXPECT_EQ(seen, "a");
    EXPECT_EQ(detail::Subscription::liveCount(), 0);
}

TEST_P(CancellationContract, TheSubjectMayGoAwayInsideItsOwnDelivery)
{
    auto seen = std::string();
    const auto first = subject().asPublisher().bind([&](int) {
        seen += 'a';
        dropSubject();
    });
    const auto second = subject().asPublisher().bind([&](int) { seen += 'b'; });

    subject().send(1);

    EXPECT_EQ(seen, "ab");
}

TEST_P(CancellationContract, SubjectAndAllHandlesMayGoAwayInsideADelivery)
{
    auto seen = std::string();
    auto handles = std::vector<Streams::AnyCancellable>();
    for (const auto name : {'a', 'b'})
        handles.push_back(subject().asPublisher().bind([&, name](int) {
            seen += name;
            dropSubject();
            handles.clear();
        }));

    subject().send(1);

    EXPECT_EQ(seen, "a");
    EXPECT_EQ(detail::Subscription::liveCount(), 0);
}

TEST_P(CancellationContract, ASetKeepsOneOfEqualHandles)
{
    auto set = Streams::CancellableSet();
    const auto first = subject().asPublisher().bind([](int) {});
    const auto second = subject().asPublisher().bind([](int) {});

    first.store(set);
    first.store(set);
    second.store(set);

    EXPECT_EQ(set.size(), 2U);
    EXPECT_EQ(first, Streams::AnyCancellable(first));
    EXPECT_NE(first, second);
    EXPECT_NE(first.hash(), second.hash());
}

TEST_P(CancellationContract, ClearingASetEndsItsSubscriptions)
{
    auto seen = std::vector<int>();
    auto set = Streams::CancellableSet();
    subject().asPublisher().bind([&](int value) { seen.push_back(value); }).store(set);

    subject().send(1);
    set.clear();
    subject().send(2);

    EXPECT_THAT(seen, ElementsAre(1));
}

TEST_P(CancellationContract, AnEmptyHandleDoesNothing)
{
    const auto handle = Streams::AnyCancellable();

    handle.cancel();
    handle.cancelAndWait();

    EXPECT_EQ(handle, Streams::AnyCancellable());
    EXPECT_EQ(handle.hash(), 0U);
}

TEST_P(CancellationContract, WaitingReturnsAtOnceOnTheDeliveringThread)
{
    auto seen = std::vector<int>();
    auto handle = Streams::AnyCancellable();
    handle = subject().asPublisher().bind([&](int value) {
        seen.push_back(value);
        handle.cancelAndWait();
    });

    subject().send(1);
    subject().send(2);

    EXPECT_THAT(seen, ElementsAre(1));
}

TEST_P(CancellationContract, WaitingReturnsOnceNoOtherThreadIsInsideTheCallback)
{
    for (auto round = 0; round < 200; ++round) {
        auto isInside = std::atomic(false);
        auto entered = std::atomic(0);
        const auto handle = subject().asPublisher().bind([&](int) {
            isInside = true;
            ++entered;
            for (auto i = 0; i < 50; ++i)
                std::this_thread::yield();
            isInside = false;
        });
        auto sender = std::thread([copy = subject()] { copy.send(1); });
        if (round % 2 == 0)
            while (entered == 0)
                std::this_thread::yield();

        handle.cancelAndWait();

        EXPECT_FALSE(isInside);
        sender.join();
    }
}

TEST_P(CancellationContract, SubscribingAndDisposingWithoutASendDoesNotGrowMemory)
{
    const auto before = detail::Subscription::liveCount();

    for (auto i = 0; i < 100'000; ++i)
        const auto handle = subject().asPublisher().bind([](int) {});

    EXPECT_EQ(detail::Subscription::liveCount(), before);
}

INSTANTIATE_ON_BOTH_ENGINES(CancellationContract);

} // namespace
