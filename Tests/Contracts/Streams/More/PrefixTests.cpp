#include "Orrenby/Utilities/Streams/More/Prefix.hpp"

#include "Orrenby/Utilities/Streams/Just.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

class PrefixContract : public orrenby::testing::BothEngines {};

using Texts = std::vector<std::string>;

auto recorded(const Streams::AnyPublisher<int, Trouble>& publisher, Texts& events)
{
    return Streams::sinkUntilEnd(
        publisher,
        [&](const auto& payload) {
            events.push_back(payload.isValue() ? std::to_string(*payload.asValue()) : "failure");
        },
        [&] { events.push_back("end"); });
}

TEST_P(PrefixContract, PassesOnTheFirstElementsAndEnds)
{
    const auto subject = NumberSubject();
    auto events = Texts();

    //! [The first elements]
    const auto firstThree = subject | Streams::prefix(3);
    //! [The first elements]
    const auto handle = recorded(firstThree, events);
    subject.send(1);
    subject.send(Trouble{2});
    subject.send(3);
    subject.send(4);

    EXPECT_THAT(events, ElementsAre("1", "failure", "3", "end"));
}

TEST_P(PrefixContract, LetsItsSourceGoWithTheLastElement)
{
    const auto subject = NumberSubject();
    auto calls = 0;
    const auto publisher = subject.asPublisher().map([&](int value) {
        ++calls;
        return value;
    });
    const auto handle = (publisher | Streams::prefix(1)).sink([](const auto&) {});

    subject.send(1);
    subject.send(2);

    EXPECT_EQ(calls, 1);
}

TEST_P(PrefixContract, OfNoElementEndsAtOnceWithoutASubscription)
{
    auto subscriptions = 0;
    const auto source = Streams::create<int, Trouble>([&](const NumberSubject&) {
        ++subscriptions;
        return nullptr;
    });
    auto events = Texts();

    const auto none = recorded(source | Streams::prefix(0), events);
    const auto lessThanNone = recorded(source | Streams::prefix(-1), events);

    EXPECT_THAT(events, ElementsAre("end", "end"));
    EXPECT_EQ(subscriptions, 0);
}

TEST_P(PrefixContract, ASourceThatEndsSoonerEndsIt)
{
    auto events = Texts();

    const auto handle = recorded(Streams::prefix(Streams::Just<int, Trouble>(1), 2), events);

    EXPECT_THAT(events, ElementsAre("1", "end"));
}

TEST_P(PrefixContract, ElementsSentWhileSubscribingCount)
{
    auto cleanUps = 0;
    const auto source = Streams::create<int, Trouble>([&](const NumberSubject& subject) {
        for (auto i = 0; i < 10; ++i)
            subject.send(i);
        return [&] { ++cleanUps; };
    });
    auto events = Texts();

    const auto handle = recorded(source | Streams::prefix(2), events);

    EXPECT_THAT(events, ElementsAre("0", "1", "end"));
    EXPECT_EQ(cleanUps, 1);
}

TEST_P(PrefixContract, ASendInsideTheLastElementIsNotPassed)
{
    const auto subject = NumberSubject();
    auto calls = 0;
    const auto handle = (subject | Streams::prefix(2)).sink([&](const auto&) {
        ++calls;
        subject.send(calls);
    });

    subject.send(0);

    EXPECT_EQ(calls, 2);
}

const auto firstThree = [](const auto& publisher) { return Streams::prefix(publisher, 3); };

TEST_WHAT_HOLDS_FOR_OPERATORS(PrefixContract, firstThree, orrenby::testing::sendOne);
INSTANTIATE_ON_BOTH_ENGINES(PrefixContract);

} // namespace
