#include "Orrenby/Utilities/Streams/More/Staged.hpp"

#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

class StagedContract : public orrenby::testing::BothEngines {};

using Number = Streams::Payload<int, Trouble>;
using Numbers = Streams::AnyPublisher<int, Trouble>;

//! [Writing an operator]
/// Each value with its predecessor; failures unchanged.
Streams::AnyPublisher<std::pair<int, int>, Trouble> inPairs(const Numbers& publisher)
{
    using Pair = Streams::Payload<std::pair<int, int>, Trouble>;
    return Streams::staged<std::pair<int, int>, Trouble>(publisher, [] {
        return [last = std::optional<int>()](const Number& payload, const auto& next) mutable {
            if (payload.isError())
                return next(Pair::error(*payload.asError()));
            if (last)
                next(Pair::value({*last, *payload.asValue()}));
            last = *payload.asValue();
        };
    });
}
//! [Writing an operator]

Numbers doubled(const Numbers& publisher)
{
    return Streams::staged<int, Trouble>(publisher, [] {
        return [](const Number& payload, const auto& next) {
            next(payload);
            next(payload);
        };
    });
}

Numbers passing(const Numbers& publisher)
{
    return Streams::staged<int, Trouble>(
        publisher, [] { return [](const Number& payload, const auto& next) { next(payload); }; });
}

TEST_P(StagedContract, KeepsSomethingFromOneElementToTheNext)
{
    const auto subject = NumberSubject();
    auto received = Received<std::pair<int, int>, Trouble>();
    const auto handle = inPairs(subject.asPublisher()).sink(received.recorder());

    subject.send(1);
    subject.send(2);
    subject.send(Trouble{9});
    subject.send(3);

    using Pair = Streams::Payload<std::pair<int, int>, Trouble>;
    EXPECT_THAT(received.payloads, ElementsAre(Pair::value({1, 2}), Pair::error({9}), Pair::value({2, 3})));
}

TEST_P(StagedContract, EachSubscriberHasAStageOfHisOwn)
{
    const auto subject = NumberSubject();
    const auto pairs = inPairs(subject.asPublisher());
    auto first = Received<std::pair<int, int>, Trouble>();
    auto second = Received<std::pair<int, int>, Trouble>();

    const auto one = pairs.sink(first.recorder());
    subject.send(1);
    const auto two = pairs.sink(second.recorder());
    subject.send(2);

    EXPECT_EQ(first.payloads.size(), 1U);
    EXPECT_EQ(second.payloads.size(), 0U);
}

TEST_P(StagedContract, MayPassOnSeveralElementsForOne)
{
    const auto subject = NumberSubject();
    auto received = Received<int, Trouble>();
    const auto handle = doubled(doubled(subject.asPublisher())).sink(received.recorder());

    subject.send(1);

    EXPECT_EQ(received.payloads, std::vector(4, Number::value(1)));
}

TEST_P(StagedContract, NothingComesAfterACancellationBetweenTwoElementsOfOne)
{
    const auto subject = NumberSubject();
    auto calls = 0;
    auto handle = Streams::AnyCancellable();
    handle = doubled(subject.asPublisher()).sink([&](const auto&) {
        ++calls;
        handle.cancel();
    });

    subject.send(1);

    EXPECT_EQ(calls, 1);
}

TEST_P(StagedContract, NothingComesAfterACancellationInsideTheStage)
{
    const auto subject = NumberSubject();
    auto received = Received<int, Trouble>();
    auto handle = Streams::AnyCancellable();
    handle = Streams::staged<int, Trouble>(subject.asPublisher(), [&] {
        return [&](const Number& payload, const auto& next) {
            handle.cancel();
            next(payload);
        };
    }).sink(received.recorder());

    subject.send(1);

    EXPECT_THAT(received.payloads, ElementsAre());
}

TEST_P(StagedContract, PassesOnTheEnd)
{
    const auto subject = NumberSubject();
    auto ends = 0;
    const auto handle = Streams::sinkUntilEnd(
        passing(subject.asPublisher()), [](const auto&) {}, [&] { ++ends; });

    subject.send(Streams::Completion<Trouble>::finished());

    EXPECT_EQ(ends, 1);
}

TEST_P(StagedContract, ItsStageGoesWithTheSubscription)
{
    const auto subject = NumberSubject();
    const auto kept = std::make_shared<int>(0);
    const auto publisher = Streams::staged<int, Trouble>(subject.asPublisher(),
        [watched = std::weak_ptr(kept)] { return [kept = watched.lock()](const Number&, const auto&) {}; });
    auto handle = publisher.sink([](const auto&) {});
    EXPECT_EQ(kept.use_count(), 2);

    handle = {};

    EXPECT_EQ(kept.use_count(), 1);
}

TEST_P(StagedContract, ASendInsideTheStageComesAfterTheRunningElement)
{
    const auto subject = NumberSubject();
    auto received = Received<int, Trouble>();
    const auto handle = Streams::staged<int, Trouble>(subject.asPublisher(), [&] {
        return [&](const Number& payload, const auto& next) {
            if (payload == Number::value(1))
                subject.send(2);
            next(payload);
        };
    }).sink(received.recorder());

    subject.send(1);

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::value(2)));
}

TEST_WHAT_HOLDS_FOR_OPERATORS(StagedContract, passing, orrenby::testing::sendOne);
INSTANTIATE_ON_BOTH_ENGINES(StagedContract);

} // namespace
