#include "Tests/Support/StreamEngines.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"

using namespace orrenby;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class CurrentValueContract : public orrenby::testing::BothEngines {};
class PassthroughContract : public orrenby::testing::BothEngines {};

using Number = Streams::Payload<int, Trouble>;

TEST_P(CurrentValueContract, ANewSubscriberReceivesTheCurrentValueBeforeSinkReturns)
{
    const auto subject = Streams::CurrentValueSubject<int, Trouble>(5);
    auto received = Received<int, Trouble>();

    const auto handle = subject.asPublisher().sink(received.recorder());

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(5)));
    EXPECT_EQ(subject.get(), 5);
}

TEST_P(CurrentValueContract, ASubjectBornFailedThrowsOnReadAndReplaysTheFailure)
{
    const auto subject = Streams::CurrentValueSubject<int, Trouble>(Trouble{3});
    auto received = Received<int, Trouble>();

    const auto handle = subject.asPublisher().sink(received.recorder());

    EXPECT_THAT(received.payloads, ElementsAre(Number::error({3})));
    EXPECT_THROW(subject.get(), Trouble);
}

TEST_P(CurrentValueContract, AFailureDoesNotEndTheStream)
{
    const auto subject = Streams::CurrentValueSubject<int, Trouble>(1);
    auto received = Received<int, Trouble>();
    const auto handle = subject.asPublisher().sink(received.recorder());

    subject.send(Trouble{2});
    subject.send(7);

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::error({2}), Number::value(7)));
    EXPECT_EQ(subject.get(), 7);
}

TEST_P(CurrentValueContract, AFailingCompletionIsTheLastElement)
{
    using Subject = Streams::CurrentValueSubject<int, Trouble>;
    const auto subject = Subject(1);
    auto received = Received<int, Trouble>();
    const auto handle = subject.asPublisher().sink(received.recorder());

    subject.send(Subject::Completion::failure({9}));
    subject.send(8);
    subject.send(Trouble{8});
    subject.send(Subject::Completion::failure({8}));

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::error({9})));
    EXPECT_THROW(subject.get(), Trouble);
}

TEST_P(CurrentValueContract, AFinishedSubjectIsSilentAndKeepsItsValueReadable)
{
    using Subject = Streams::CurrentValueSubject<int, Trouble>;
    const auto subject = Subject(1);
    auto early = Received<int, Trouble>();
    auto late = Received<int, Trouble>();
    const auto earlyHandle = subject.asPublisher().sink(early.recorder());

    subject.send(2);
    subject.send(Subject::Completion::finished());
    subject.send(3);
    const auto lateHandle = subject.asPublisher().sink(late.recorder());

    EXPECT_THAT(early.payloads, ElementsAre(Number::value(1), Number::value(2)));
    EXPECT_THAT(late.payloads, IsEmpty());
    EXPECT_EQ(subject.get(), 2);
}

TEST_P(CurrentValueContract, CopiesShareOneSubject)
{
    const auto subject = Streams::CurrentValueSubject<int, Never>(1);
    const auto copy = subject; // NOLINT: the copy is the point

    copy.send(2);

    EXPECT_EQ(subject.value(), 2);
}

TEST_P(CurrentValueContract, ASubjectOfEventsStartsWithOneAndSendsMore)
{
    const auto subject = Streams::CurrentValueSubject<Void, Never>();
    auto count = 0;
    const auto handle = subject.asPublisher().bind([&](Void) { ++count; });

    subject.send();

    EXPECT_EQ(count, 2);
}

TEST_P(CurrentValueContract, EqualTypesOfValueAndFailureAreToldApartByTheMark)
{
    using Subject = Streams::CurrentValueSubject<std::string, std::string>;
    using Text = Streams::Payload<std::string, std::string>;
    const auto subject = Subject("a");
    const auto failed = Subject(Streams::failure("f"));
    auto received = Received<std::string, std::string>();
    const auto handle = subject.asPublisher().sink(received.recorder());

    subject.send("b");
    subject.send(Streams::failure("c"));

    EXPECT_THAT(received.payloads, ElementsAre(Text::value("a"), Text::value("b"), Text::error("c")));
    EXPECT_THROW(failed.get(), std::string);
}

TEST_P(CurrentValueContract, AnyErrorThrowsWhatItHolds)
{
    const auto subject = Streams::CurrentValueSubject<int, AnyError>(1);

    subject.send(AnyError(Trouble{4}));

    EXPECT_THROW(subject.get(), Trouble);
}

TEST_P(CurrentValueContract, TextGoesToTheValueEvenWhereAnyErrorCouldHoldIt)
{
    const auto subject = Streams::CurrentValueSubject<std::string, AnyError>("a");

    subject.send("b");

    EXPECT_EQ(subject.get(), "b");
}

TEST_P(CurrentValueContract, TheValueLivesOnInAPublisherAfterTheSubjectIsGone)
{
    const auto publisher = Streams::CurrentValueSubject<int, Never>(6).asPublisher();
    auto seen = std::vector<int>();

    const auto handle = publisher.bind([&](int value) { seen.push_back(value); });

    EXPECT_THAT(seen, ElementsAre(6));
}

TEST_P(PassthroughContract, NothingSentBeforeASubscriberCameReachesIt)
{
    const auto subject = Streams::PassthroughSubject<int, Trouble>();
    auto received = Received<int, Trouble>();

    subject.send(1);
    const auto handle = subject.asPublisher().sink(received.recorder());
    subject.send(2);

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(2)));
}

TEST_P(PassthroughContract, SubscribersAreServedInTheOrderOfTheirComing)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto order = std::string();
    const auto a = subject.asPublisher().bind([&](int) { order += 'a'; });
    const auto b = subject.asPublisher().bind([&](int) { order += 'b'; });
    const auto c = subject.asPublisher().bind([&](int) { order += 'c'; });

    subject.send(1);
    subject.send(2);

    EXPECT_EQ(order, "abcabc");
}

TEST_P(PassthroughContract, FailuresTravelAsElements)
{
    const auto subject = Streams::PassthroughSubject<int, Trouble>();
    auto received = Received<int, Trouble>();
    const auto handle = subject.asPublisher().sink(received.recorder());

    subject.send(Trouble{1});
    subject.send(2);
    subject.send(Streams::failure(Trouble{3}));

    EXPECT_THAT(received.payloads, ElementsAre(Number::error({1}), Number::value(2), Number::error({3})));
}

TEST_P(PassthroughContract, AFailingCompletionIsTheLastElement)
{
    using Subject = Streams::PassthroughSubject<int, Trouble>;
    const auto subject = Subject();
    auto received = Received<int, Trouble>();
    const auto handle = subject.asPublisher().sink(received.recorder());

    subject.send(Subject::Completion::failure({9}));
    subject.send(8);

    EXPECT_THAT(received.payloads, ElementsAre(Number::error({9})));
}

TEST_P(PassthroughContract, AFinishedSubjectIsSilent)
{
    using Subject = Streams::PassthroughSubject<int, Trouble>;
    const auto subject = Subject();
    auto received = Received<int, Trouble>();
    const auto handle = subject.asPublisher().sink(received.recorder());

    subject.send(Subject::Completion::finished());
    subject.send(8);
    const auto late = subject.asPublisher().sink(received.recorder());
    subject.send(9);

    EXPECT_THAT(received.payloads, IsEmpty());
}

TEST_P(PassthroughContract, AnEventIsSentWithoutAnArgument)
{
    const auto subject = Streams::PassthroughSubject<Void, Never>();
    auto count = 0;
    const auto handle = subject.asPublisher().bind([&](Void) { ++count; });

    subject.send();
    subject.send(Void());

    EXPECT_EQ(count, 2);
}

TEST_P(PassthroughContract, TwoThousandSubscribersAllReceive)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto sum = 0;
    auto handles = std::vector<Streams::AnyCancellable>();
    for (auto i = 0; i < 2000; ++i)
        handles.push_back(subject.asPublisher().bind([&](int value) { sum += value; }));

    subject.send(3);

    EXPECT_EQ(sum, 6000);
}

INSTANTIATE_ON_BOTH_ENGINES(CurrentValueContract);
INSTANTIATE_ON_BOTH_ENGINES(PassthroughContract);

} // namespace
