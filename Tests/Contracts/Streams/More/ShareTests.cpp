#include "Orrenby/Utilities/Streams/More/Share.hpp"

#include "Orrenby/Utilities/Streams/More/Prefix.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ShareContract : public orrenby::testing::BothEngines {};

using Number = Streams::Payload<int, Trouble>;
using Completion = Streams::Completion<Trouble>;

/// A source that counts who subscribes to it and who leaves, and sends what is sent to `subject`.
struct Counted {
    NumberSubject subject;
    std::atomic<int> begun = 0;
    std::atomic<int> ended = 0;

    auto publisher()
    {
        return Streams::create<int, Trouble>([this](const NumberSubject& subscriber) {
            ++begun;
            auto handle = subject.asPublisher().sink(
                [subscriber](const auto& payload) { detail::forward(subscriber, payload); });
            return [this, handle] {
                handle.cancel();
                ++ended;
            };
        });
    }
};

TEST_P(ShareContract, ManySubscribersHaveOneSubscription)
{
    auto counted = Counted();
    const auto& subject = counted.subject;
    const auto expensive = counted.publisher();
    auto first = Received<int, Trouble>();
    auto second = Received<int, Trouble>();

    //! [One subscription for many]
    const auto shared = expensive | Streams::share;
    auto one = shared.sink(first.recorder()); // subscribes to the expensive stream
    subject.send(1);
    auto two = shared.sink(second.recorder()); // joins
    subject.send(2);
    //! [One subscription for many]
    EXPECT_EQ(counted.begun, 1);
    one = {};
    EXPECT_EQ(counted.ended, 0);
    two = {};

    EXPECT_EQ(counted.ended, 1);
    EXPECT_THAT(first.payloads, ElementsAre(Number::value(1), Number::value(2)));
    EXPECT_THAT(second.payloads, ElementsAre(Number::value(2)));
}

TEST_P(ShareContract, WhoComesAfterAllHaveLeftBeginsAnew)
{
    auto counted = Counted();
    const auto shared = Streams::share(counted.publisher());
    {
        const auto handle = shared.sink([](const auto&) {});
    }
    auto received = Received<int, Trouble>();

    const auto handle = shared.sink(received.recorder());
    counted.subject.send(1);

    EXPECT_EQ(counted.begun, 2);
    EXPECT_EQ(counted.ended, 1);
    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1)));
}

TEST_P(ShareContract, TheEndReachesAllAndTheNextOneBeginsAnew)
{
    auto feeds = std::vector<NumberSubject>();
    const auto shared = Streams::create<int, Trouble>([&](const NumberSubject& subject) {
        feeds.push_back(subject);
        return nullptr;
    }) | Streams::share();
    auto ends = 0;
    const auto onEnd = [&] { ++ends; };
    const auto one = Streams::sinkUntilEnd(
        shared, [](const auto&) {}, onEnd);
    const auto two = Streams::sinkUntilEnd(
        shared, [](const auto&) {}, onEnd);

    feeds.at(0).send(Completion::finished());
    EXPECT_EQ(ends, 2);
    const auto three = Streams::sinkUntilEnd(
        shared, [](const auto&) {}, onEnd);

    EXPECT_EQ(feeds.size(), 2U);
    EXPECT_EQ(ends, 2);
}

TEST_P(ShareContract, TheFirstSubscriberGetsWhatIsSentWhileSubscribing)
{
    auto starts = 0;
    const auto shared = Streams::share(Streams::create<int, Trouble>([&](const NumberSubject& subject) {
        subject.send(++starts);
        return nullptr;
    }));
    auto first = Received<int, Trouble>();
    auto second = Received<int, Trouble>();

    const auto one = shared.sink(first.recorder());
    const auto two = shared.sink(second.recorder());

    EXPECT_THAT(first.payloads, ElementsAre(Number::value(1)));
    EXPECT_THAT(second.payloads, IsEmpty());
}

TEST_P(ShareContract, TheOnlySubscriberMayLeaveWhileTheStreamIsSubscribedTo)
{
    auto cleanUps = 0;
    const auto shared = Streams::share(Streams::create<int, Trouble>([&](const NumberSubject& subject) {
        subject.send(1);
        subject.send(2);
        return [&] { ++cleanUps; };
    }));
    auto received = Received<int, Trouble>();

    const auto handle = (shared | Streams::prefix(1)).sink(received.recorder());

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1)));
    EXPECT_EQ(cleanUps, 1);
}

TEST_P(ShareContract, EachCallHasASubscriptionOfItsOwn)
{
    auto counted = Counted();
    const auto publisher = counted.publisher();

    const auto one = Streams::share(publisher).sink([](const auto&) {});
    const auto two = Streams::share(publisher).sink([](const auto&) {});

    EXPECT_EQ(counted.begun, 2);
}

TEST_P(ShareContract, ASubscriberMayJoinAndLeaveInsideACallback)
{
    auto counted = Counted();
    const auto shared = Streams::share(counted.publisher());
    auto late = Received<int, Trouble>();
    auto own = Streams::AnyCancellable();
    auto other = Streams::AnyCancellable();
    own = shared.sink([&](const auto&) {
        other = shared.sink(late.recorder());
        own = {};
    });

    counted.subject.send(1);
    counted.subject.send(2);

    EXPECT_THAT(late.payloads, ElementsAre(Number::value(2)));
    EXPECT_EQ(counted.begun, 1);
    EXPECT_EQ(counted.ended, 0);
}

TEST_P(ShareContract, SubscribersThatComeAndGoOnManyThreadsLeaveNothingBehind)
{
    const auto before = Streams::liveSubscriptionCount();
    {
        auto counted = Counted();
        const auto shared = Streams::share(counted.publisher());
        auto isOver = std::atomic(false);
        auto sender = std::thread([&] {
            while (!isOver)
                counted.subject.send(1);
        });
        auto threads = std::vector<std::thread>();
        for (auto thread = 0; thread < 3; ++thread)
            threads.emplace_back([&] {
                for (auto i = 0; i < 300; ++i)
                    shared.sink([](const auto&) {}).cancelAndWait();
            });
        for (auto& thread : threads)
            thread.join();
        isOver = true;
        sender.join();
        EXPECT_EQ(counted.begun, counted.ended);
    }

    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

TEST_WHAT_HOLDS_FOR_OPERATORS(ShareContract, Streams::share, orrenby::testing::sendOne);
INSTANTIATE_ON_BOTH_ENGINES(ShareContract);

} // namespace
