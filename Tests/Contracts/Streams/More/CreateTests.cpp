#include "Orrenby/Utilities/Streams/More/Create.hpp"

#include "Orrenby/Utilities/Streams/Deferred.hpp"
#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class CreateContract : public orrenby::testing::BothEngines {};

using Number = Streams::Payload<int, Trouble>;
using Completion = Streams::Completion<Trouble>;

/// A stream that is fed through `subjects`, and counts the calls of its clean-up.
struct Fed {
    std::vector<NumberSubject> subjects;
    int cleanUps = 0;

    auto publisher()
    {
        return Streams::create<int, Trouble>([this](const NumberSubject& subject) {
            subjects.push_back(subject);
            return [this] { ++cleanUps; };
        });
    }
};

TEST_P(CreateContract, PassesOnWhatIsSentInsideAndAfterTheStart)
{
    auto received = Received<int, Trouble>();
    auto feed = std::vector<NumberSubject>();

    //! [A stream that code feeds]
    const auto numbers = Streams::create<int, Trouble>([&](const NumberSubject& subject) {
        subject.send(1);
        feed.push_back(subject); // and somebody feeds it from here on
        return [&] { feed.clear(); };
    });
    auto handle = numbers.sink(received.recorder());
    //! [A stream that code feeds]
    feed[0].send(2);
    feed[0].send(Trouble{3});
    handle = {};

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::value(2), Number::error({3})));
    EXPECT_THAT(feed, IsEmpty());
}

TEST_P(CreateContract, StartsForEachSubscriberAndNotBefore)
{
    auto fed = Fed();
    const auto publisher = fed.publisher();
    EXPECT_THAT(fed.subjects, IsEmpty());
    auto first = Received<int, Trouble>();
    auto second = Received<int, Trouble>();
    const auto one = publisher.sink(first.recorder());
    const auto two = publisher.sink(second.recorder());

    fed.subjects.at(0).send(1);
    fed.subjects.at(1).send(2);

    EXPECT_THAT(first.payloads, ElementsAre(Number::value(1)));
    EXPECT_THAT(second.payloads, ElementsAre(Number::value(2)));
}

TEST_P(CreateContract, CleansUpOnceAtTheEnd)
{
    auto fed = Fed();
    auto handle = fed.publisher().sink([](const auto&) {});

    fed.subjects.at(0).send(Completion::finished());
    EXPECT_EQ(fed.cleanUps, 1);
    fed.subjects.at(0).send(Completion::finished());
    handle.cancel();
    handle = {};

    EXPECT_EQ(fed.cleanUps, 1);
}

TEST_P(CreateContract, CleansUpOnceWhenItIsCancelled)
{
    auto fed = Fed();
    auto received = Received<int, Trouble>();
    auto handle = fed.publisher().sink(received.recorder());

    handle.cancel();
    EXPECT_EQ(fed.cleanUps, 1);
    fed.subjects.at(0).send(1);
    fed.subjects.at(0).send(Completion::finished());
    handle = {};

    EXPECT_EQ(fed.cleanUps, 1);
    EXPECT_THAT(received.payloads, IsEmpty());
}

TEST_P(CreateContract, CleansUpWhenTheLastHandleGoes)
{
    auto fed = Fed();

    {
        const auto handle = fed.publisher().sink([](const auto&) {});
    }

    EXPECT_EQ(fed.cleanUps, 1);
}

TEST_P(CreateContract, AnEndInsideTheStartCleansUpAfterIt)
{
    auto events = std::vector<std::string>();
    const auto publisher = Streams::create<int, Trouble>([&](const NumberSubject& subject) {
        subject.send(Completion::failure({7}));
        subject.send(8);
        events.push_back("started");
        return [&] { events.push_back("cleaned up"); };
    });
    auto received = Received<int, Trouble>();

    {
        const auto handle = Streams::sinkUntilEnd(
            publisher, received.recorder(), [&] { events.push_back("ended"); });
    }

    EXPECT_THAT(events, ElementsAre("ended", "started", "cleaned up"));
    EXPECT_THAT(received.payloads, ElementsAre(Number::error({7})));
}

TEST_P(CreateContract, NeedsNoCleanUp)
{
    auto received = Received<int, Trouble>();

    const auto handle = Streams::create<int, Trouble>([](const NumberSubject& subject) {
        subject.send(1);
        return nullptr;
    }).sink(received.recorder());
    handle.cancel();

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1)));
}

TEST_P(CreateContract, CancelsTheHandleThatItsStartReturns)
{
    const auto source = NumberSubject();
    auto forwarded = 0;
    const auto publisher = Streams::create<int, Trouble>([&](const NumberSubject& subject) {
        return source.asPublisher().sink([&forwarded, subject](const auto& payload) {
            ++forwarded;
            subject.send(*payload.asValue());
        });
    });
    auto received = Received<int, Trouble>();
    const auto handle = publisher.sink(received.recorder());

    source.send(1);
    handle.cancel();
    source.send(2);

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1)));
    EXPECT_EQ(forwarded, 1);
}

TEST_P(CreateContract, ACleanUpMayCancelAndDropItsOwnHandle)
{
    auto handle = Streams::AnyCancellable();
    auto cleanUps = 0;
    auto ends = 0;
    auto feed = std::vector<NumberSubject>();
    const auto publisher = Streams::create<int, Trouble>([&](const NumberSubject& subject) {
        feed.push_back(subject);
        return [&] {
            ++cleanUps;
            handle.cancel();
            handle = {};
        };
    });
    handle = Streams::sinkUntilEnd(
        publisher, [](const auto&) {}, [&] { ++ends; });

    feed.at(0).send(Completion::finished());

    EXPECT_EQ(cleanUps, 1);
    EXPECT_EQ(ends, 0); // it was cancelled before
}

TEST_P(CreateContract, ANestedSendComesAfterTheRunningOne)
{
    auto fed = Fed();
    auto received = std::vector<int>();
    const auto handle = fed.publisher().sink([&](const Number& payload) {
        if (*payload.asValue() == 1)
            fed.subjects.at(0).send(2);
        received.push_back(*payload.asValue());
    });

    fed.subjects.at(0).send(1);

    EXPECT_THAT(received, ElementsAre(1, 2));
}

TEST_P(CreateContract, LeavesNothingBehindWhileItsSubjectIsKept)
{
    const auto before = Streams::liveSubscriptionCount();
    auto fed = Fed();
    const auto kept = std::make_shared<int>(0);
    {
        const auto handle = fed.publisher().sink([kept](const auto&) {});
    }

    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
    EXPECT_EQ(kept.use_count(), 1);
    fed.subjects.at(0).send(1);
}

TEST_P(CreateContract, MayStandInsideADeferredStream)
{
    auto fed = Fed();
    auto received = Received<int, Trouble>();
    using Publisher = Streams::AnyPublisher<int, Trouble>;
    {
        const auto handle = Streams::Deferred<Publisher>([&] { return fed.publisher(); })
                                .asPublisher()
                                .sink(received.recorder());
        fed.subjects.at(0).send(1);
        EXPECT_EQ(fed.cleanUps, 0);
    }

    EXPECT_EQ(fed.cleanUps, 1);
    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1)));
}

TEST_P(CreateContract, EndAndCancellationOnTwoThreadsCleanUpOnce)
{
    for (auto round = 0; round < 300; ++round) {
        auto cleanUps = std::atomic(0);
        auto feed = std::vector<NumberSubject>();
        const auto handle = Streams::create<int, Trouble>([&](const NumberSubject& subject) {
            feed.push_back(subject);
            return [&] { ++cleanUps; };
        }).sink([](const auto&) {});

        auto ending = std::thread([&] { feed.at(0).send(Completion::finished()); });
        handle.cancel();
        ending.join();

        ASSERT_EQ(cleanUps, 1);
    }
}

TEST_P(CreateContract, WaitsForADeliveryElsewhere)
{
    orrenby::testing::expectToWaitForADeliveryElsewhere(
        [](const auto& source) {
            return Streams::create<int, Trouble>([source](const NumberSubject& subject) {
                return source.sink([subject](const auto& payload) { subject.send(*payload.asValue()); });
            });
        },
        orrenby::testing::sendOne);
}

TEST_P(CreateContract, WaitsForWhatFeedsItThroughAHandle)
{
    orrenby::testing::expectToWaitForWhatFeedsIt([](const auto& source) {
        return Streams::create<int, Trouble>([source](const NumberSubject& subject) {
            return source.sink([subject](const auto& payload) { subject.send(*payload.asValue()); });
        });
    });
}

TEST_P(CreateContract, AStartThatThrowsEndsTheProcess)
{
    const auto publisher = Streams::create<int, Trouble>(
        [](const NumberSubject&) -> std::nullptr_t { throw 1; });

    EXPECT_DEATH((void)publisher.sink([](const auto&) {}), "");
}

TEST_P(CreateContract, RefusesTheOtherEngine)
{
    orrenby::testing::expectToRefuseTheOtherEngine(
        [](const auto&) {
            return Streams::create<int, Trouble>([](const NumberSubject&) { return nullptr; });
        },
        GetParam());
}

INSTANTIATE_ON_BOTH_ENGINES(CreateContract);

} // namespace
