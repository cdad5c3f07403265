#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"

#include "Orrenby/Utilities/Streams/Just.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class SinkUntilEndContract : public orrenby::testing::BothEngines {};

using Completion = Streams::Completion<Trouble>;
using Texts = std::vector<std::string>;

auto recorded(const Streams::AnyPublisher<int, Trouble>& publisher, Texts& events)
{
    return Streams::sinkUntilEnd(
        publisher, [&](const auto& payload) { events.push_back(payload.description()); },
        [&] { events.push_back("end"); });
}

TEST_P(SinkUntilEndContract, TellsOfTheEndOnceAfterTheLastElement)
{
    const auto subject = NumberSubject();
    const auto numbers = subject.asPublisher();
    auto events = Texts();

    //! [Hearing of the end]
    const auto handle = Streams::sinkUntilEnd(
        numbers, [&](const auto& payload) { events.push_back(payload.description()); },
        [&] { events.push_back("end"); });
    //! [Hearing of the end]
    subject.send(1);
    subject.send(2);
    subject.send(Completion::finished());
    subject.send(Completion::finished());

    EXPECT_THAT(events, ElementsAre("value(1)", "value(2)", "end"));
}

TEST_P(SinkUntilEndContract, AFailureThatEndsTheStreamComesFirst)
{
    const auto subject = Streams::PassthroughSubject<int, int>();
    auto events = Texts();
    const auto handle = Streams::sinkUntilEnd(
        subject.asPublisher(), [&](const auto& payload) { events.push_back(payload.description()); },
        [&] { events.push_back("end"); });

    subject.send(Streams::Completion<int>::failure(5));

    EXPECT_THAT(events, ElementsAre("error(5)", "end"));
}

TEST_P(SinkUntilEndContract, AStreamThatHasEndedTellsBeforeTheCallReturns)
{
    const auto subject = NumberSubject();
    subject.send(Completion::finished());
    auto events = Texts();

    const auto late = recorded(subject.asPublisher(), events);
    const auto just = recorded(Streams::Just<int, Trouble>(3).eraseToAnyPublisher(), events);

    EXPECT_THAT(events, ElementsAre("end", "value(3)", "end"));
}

TEST_P(SinkUntilEndContract, AnEndWithoutElementsIsAnEnd)
{
    const auto subject = NumberSubject();
    auto events = Texts();
    const auto handle = recorded(subject.asPublisher(), events);

    subject.send(Completion::finished());

    EXPECT_THAT(events, ElementsAre("end"));
}

TEST_P(SinkUntilEndContract, ACancellationIsNoEnd)
{
    const auto subject = NumberSubject();
    auto events = Texts();
    auto plain = recorded(subject.asPublisher(), events);
    auto mapped = recorded(subject.asPublisher().map([](int value) { return value; }), events);

    plain.cancel();
    mapped = {};
    subject.send(Completion::finished());

    EXPECT_THAT(events, IsEmpty());
}

TEST_P(SinkUntilEndContract, WhoCancelsInsideTheLastElementHearsOfNoEnd)
{
    const auto subject = Streams::PassthroughSubject<int, int>();
    auto ends = 0;
    auto plain = Streams::AnyCancellable();
    auto mapped = Streams::AnyCancellable();
    plain = Streams::sinkUntilEnd(
        subject.asPublisher(), [&](const auto&) { plain.cancel(); }, [&] { ++ends; });
    mapped = Streams::sinkUntilEnd(
        subject.asPublisher().map([](int value) { return value; }), [&](const auto&) { mapped.cancel(); },
        [&] { ++ends; });

    subject.send(Streams::Completion<int>::failure(1));

    EXPECT_EQ(ends, 0);
}

TEST_P(SinkUntilEndContract, TheEndComesThroughEveryOperator)
{
    using State = Streams::CurrentValueSubject<int, Never>;
    const auto first = State(1);
    const auto second = State(2);
    auto events = Texts();
    const auto handle = Streams::sinkUntilEnd(
        first.asPublisher().combineLatest(second.asPublisher()).map([](const auto& both) {
            return std::get<0>(both) + std::get<1>(both);
        }),
        [&](const auto& payload) { events.push_back(payload.description()); },
        [&] { events.push_back("end"); });

    first.send(Streams::Completion<Never>::finished());
    second.send(Streams::Completion<Never>::finished());

    EXPECT_THAT(events, ElementsAre("value(3)", "end"));
}

TEST_P(SinkUntilEndContract, TheSubscriptionMayBeDroppedInsideTheEnd)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto subject = NumberSubject();
    auto handle = Streams::AnyCancellable();
    auto ends = 0;
    handle = Streams::sinkUntilEnd(
        subject.asPublisher(), [](const auto&) {},
        [&, kept = std::make_shared<int>(1)] {
            handle = {};
            ends += *kept;
        });

    subject.send(Completion::finished());

    EXPECT_EQ(ends, 1);
    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

TEST_P(SinkUntilEndContract, AnEndSentInsideAnElementComesAfterIt)
{
    const auto subject = NumberSubject();
    auto events = Texts();
    const auto handle = Streams::sinkUntilEnd(
        subject.asPublisher(),
        [&](const auto&) {
            subject.send(Completion::finished());
            subject.send(9);
            events.push_back("element");
        },
        [&] { events.push_back("end"); });

    subject.send(1);

    EXPECT_THAT(events, ElementsAre("element", "end"));
}

TEST_P(SinkUntilEndContract, ElementsOfManyThreadsAllComeBeforeTheEnd)
{
    const auto subject = NumberSubject();
    auto count = 0; // deliveries do not overlap
    auto countAtTheEnd = 0;
    const auto handle = Streams::sinkUntilEnd(
        subject.asPublisher(), [&](const auto&) { ++count; }, [&] { countAtTheEnd = count; });
    auto threads = std::vector<std::thread>();
    for (auto thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (auto i = 0; i < 1'000; ++i)
                subject.send(i);
        });
    for (auto& thread : threads)
        thread.join();

    std::thread([&] { subject.send(Completion::finished()); }).join();

    EXPECT_EQ(countAtTheEnd, 4'000);
}

INSTANTIATE_ON_BOTH_ENGINES(SinkUntilEndContract);

} // namespace
