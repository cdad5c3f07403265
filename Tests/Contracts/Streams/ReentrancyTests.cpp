#include "Tests/Support/StreamEngines.hpp"

using namespace orrenby;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ReentrancyContract : public orrenby::testing::BothEngines {};

TEST_P(ReentrancyContract, ANestedSendIsDeliveredAfterTheRunningOneInOneOrderForAll)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto seen = std::string();
    const auto first = subject.asPublisher().bind([&](int value) {
        seen += "a" + std::to_string(value);
        if (value == 1)
            subject.send(2);
    });
    const auto second = subject.asPublisher().bind([&](int value) { seen += "b" + std::to_string(value); });

    subject.send(1);

    EXPECT_EQ(seen, "a1b1a2b2");
}

TEST_P(ReentrancyContract, TheCurrentValueChangesAtOnceWhileTheDeliveryWaits)
{
    const auto subject = Streams::CurrentValueSubject<int, Never>(0);
    auto seen = std::vector<int>();
    auto readInside = 0;
    const auto handle = subject.asPublisher().bind([&](int value) {
        seen.push_back(value);
        if (value == 1) {
            subject.send(2);
            readInside = subject.value();
        }
    });

    subject.send(1);

    EXPECT_EQ(readInside, 2);
    EXPECT_THAT(seen, ElementsAre(0, 1, 2));
}

TEST_P(ReentrancyContract, AMillionNestedSendsNeedNoStack)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto last = 0;
    const auto handle = subject.asPublisher().bind([&](int value) {
        last = value;
        if (value < 1'000'000)
            subject.send(value + 1);
    });

    subject.send(1);

    EXPECT_EQ(last, 1'000'000);
}

TEST_P(ReentrancyContract, TwoSubjectsThatFeedEachOtherComeToAnEnd)
{
    const auto ping = Streams::PassthroughSubject<int, Never>();
    const auto pong = Streams::PassthroughSubject<int, Never>();
    auto count = 0;
    const auto first = ping.asPublisher().bind([&](int value) { pong.send(value + 1); });
    const auto second = pong.asPublisher().bind([&](int value) {
        ++count;
        if (value < 100'000)
            ping.send(value + 1);
    });

    ping.send(1);

    EXPECT_EQ(count, 50'000);
}

TEST_P(ReentrancyContract, WhoComesDuringADeliveryGetsWhatIsSentAfterwardsOnly)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto late = std::vector<int>();
    auto handles = std::vector<Streams::AnyCancellable>();
    const auto first = subject.asPublisher().bind([&](int value) {
        if (value != 1)
            return;
        subject.send(2); // waits in the queue before the newcomer is there
        handles.push_back(subject.asPublisher().bind([&](int received) { late.push_back(received); }));
        subject.send(3);
    });

    subject.send(1);
    subject.send(4);

    EXPECT_THAT(late, ElementsAre(3, 4));
}

TEST_P(ReentrancyContract, ANewcomerToACurrentValueMissesAndDoublesNothing)
{
    const auto subject = Streams::CurrentValueSubject<int, Never>(0);
    auto late = std::vector<int>();
    auto handles = std::vector<Streams::AnyCancellable>();
    const auto first = subject.asPublisher().bind([&](int value) {
        if (value != 1)
            return;
        subject.send(2);
        handles.push_back(subject.asPublisher().bind([&](int received) { late.push_back(received); }));
        subject.send(3);
    });

    subject.send(1);
    subject.send(4);

    EXPECT_THAT(late, ElementsAre(2, 3, 4));
}

TEST_P(ReentrancyContract, SendsInsideTheFirstValueAreAllDeliveredAfterIt)
{
    const auto subject = Streams::CurrentValueSubject<int, Never>(0);
    auto seen = std::vector<int>();

    const auto handle = subject.asPublisher().bind([&](int value) {
        seen.push_back(value);
        if (value == 0)
            for (const auto next : {1, 2, 3})
                subject.send(next);
    });

    EXPECT_THAT(seen, ElementsAre(0, 1, 2, 3));
}

TEST_P(ReentrancyContract, TwoHundredSubscriptionsMadeInsideOneDeliveryAllWork)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto handles = std::vector<Streams::AnyCancellable>();
    auto count = 0;
    const auto first = subject.asPublisher().bind([&](int value) {
        for (auto i = 0; value == 1 && i < 200; ++i)
            handles.push_back(subject.asPublisher().bind([&](int) { ++count; }));
    });

    subject.send(1);
    EXPECT_EQ(count, 0);
    subject.send(2);

    EXPECT_EQ(count, 200);
}

TEST_P(ReentrancyContract, SubscribeAndCancelChurnInsideADeliveryDoesNotGrowMemory)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto highest = std::int64_t(0);
    const auto first = subject.asPublisher().bind([&](int) {
        for (auto i = 0; i < 100'000; ++i) {
            const auto handle = subject.asPublisher().bind([](int) {});
            highest = std::max(highest, detail::Subscription::liveCount());
        }
    });

    subject.send(1);

    EXPECT_EQ(highest, 2);
}

TEST_P(ReentrancyContract, ANewcomerMayBeCancelledBeforeItsTurn)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto seen = std::vector<int>();
    const auto first = subject.asPublisher().bind([&](int value) {
        if (value != 1)
            return;
        const auto brief = subject.asPublisher().bind([&](int received) { seen.push_back(received); });
        subject.send(2);
    });

    subject.send(1);

    EXPECT_THAT(seen, IsEmpty());
}

TEST_P(ReentrancyContract, CompletionComesAfterWhatIsQueuedAndBeforeWhatIsSentLater)
{
    using Subject = Streams::PassthroughSubject<int, Trouble>;
    using Number = Streams::Payload<int, Trouble>;
    const auto subject = Subject();
    auto received = orrenby::testing::Received<int, Trouble>();
    const auto first = subject.asPublisher().sink([&](const Number& payload) {
        if (payload != Number::value(1))
            return;
        subject.send(2);
        subject.send(Subject::Completion::failure({3}));
        subject.send(4);
    });
    const auto second = subject.asPublisher().sink(received.recorder());

    subject.send(1);

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::value(2), Number::error({3})));
}

TEST_P(ReentrancyContract, SendsInsideTheLastElementHaveNoEffect)
{
    using Subject = Streams::CurrentValueSubject<int, Trouble>;
    using Number = Streams::Payload<int, Trouble>;
    const auto subject = Subject(0);
    auto received = orrenby::testing::Received<int, Trouble>();
    const auto first = subject.asPublisher().sink([&](const Number& payload) {
        if (payload.isError())
            subject.send(5);
    });
    const auto second = subject.asPublisher().sink(received.recorder());

    subject.send(Subject::Completion::failure({3}));

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(0), Number::error({3})));
    EXPECT_THROW(subject.get(), Trouble);
}

TEST_P(ReentrancyContract, TheSubjectMayEndInsideTheFirstValueOfANewSubscriber)
{
    using Subject = Streams::CurrentValueSubject<int, Never>;
    auto subject = std::optional<Subject>(1);
    auto seen = std::vector<int>();

    const auto handle = subject->asPublisher().bind([&](int value) {
        seen.push_back(value);
        subject->send(Subject::Completion::finished());
        subject.reset();
    });

    EXPECT_THAT(seen, ElementsAre(1));
}

TEST_P(ReentrancyContract, AValueThatSendsWhenItIsDestroyedDoesNotBlock)
{
    struct Talking {
        const Streams::PassthroughSubject<int, Never>& subject;
        ~Talking() { subject.send(1); }
    };
    const auto announcements = Streams::PassthroughSubject<int, Never>();
    auto count = 0;
    const auto subject = Streams::CurrentValueSubject<Ref<Talking>, Never>(
        Ref<Talking>(new Talking{announcements}));
    const auto handle = announcements.asPublisher().bind([&](int) {
        ++count;
        subject.send(nullptr); // the old value ends while the new one is being stored
    });

    subject.send(nullptr);

    EXPECT_EQ(count, 1);
}

INSTANTIATE_ON_BOTH_ENGINES(ReentrancyContract);

} // namespace
