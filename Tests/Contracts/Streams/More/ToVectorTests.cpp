#include "Orrenby/Utilities/Streams/More/ToVector.hpp"

#include "Orrenby/Utilities/Streams/Just.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ToVectorContract : public orrenby::testing::BothEngines {};

using Numbers = Streams::Payload<std::vector<int>, Trouble>;
using Completion = Streams::Completion<Trouble>;

TEST_P(ToVectorContract, GivesAllValuesAtTheEnd)
{
    const auto subject = NumberSubject();
    auto received = Received<std::vector<int>, Trouble>();

    //! [All values at once]
    const auto all = subject | Streams::toVector;
    const auto handle = all.sink(received.recorder());
    //! [All values at once]
    subject.send(1);
    subject.send(2);
    EXPECT_THAT(received.payloads, IsEmpty());
    subject.send(Completion::finished());

    EXPECT_THAT(received.payloads, ElementsAre(Numbers::value({1, 2})));
}

TEST_P(ToVectorContract, OfAStreamWithoutValuesIsEmpty)
{
    const auto subject = NumberSubject();
    subject.send(Completion::finished());
    auto received = Received<std::vector<int>, Trouble>();

    const auto handle = Streams::toVector(subject).sink(received.recorder());

    EXPECT_THAT(received.payloads, ElementsAre(Numbers::value({})));
}

TEST_P(ToVectorContract, AFailurePassesAtOnceAndIsTheLast)
{
    const auto subject = NumberSubject();
    auto received = Received<std::vector<int>, Trouble>();
    auto ends = 0;
    const auto handle = Streams::sinkUntilEnd(
        subject | Streams::toVector(), received.recorder(), [&] { ++ends; });

    subject.send(1);
    subject.send(Trouble{2});
    subject.send(3);
    subject.send(Completion::finished());

    EXPECT_THAT(received.payloads, ElementsAre(Numbers::error({2})));
    EXPECT_EQ(ends, 1);
}

TEST_P(ToVectorContract, WorksOnStreamsThatCannotFail)
{
    auto seen = std::vector<std::vector<int>>();

    const auto handle = (Streams::Just<int, Never>(4) | Streams::toVector).bind([&](const auto& values) {
        seen.push_back(values);
    });

    EXPECT_THAT(seen, ElementsAre(ElementsAre(4)));
}

TEST_P(ToVectorContract, ACancelledOneGivesNothing)
{
    const auto subject = NumberSubject();
    auto received = Received<std::vector<int>, Trouble>();
    const auto handle = Streams::toVector(subject).sink(received.recorder());

    subject.send(1);
    handle.cancel();
    subject.send(Completion::finished());

    EXPECT_THAT(received.payloads, IsEmpty());
}

void sendAndFinish(const NumberSubject& subject)
{
    subject.send(1);
    subject.send(Completion::finished());
}

TEST_WHAT_HOLDS_FOR_OPERATORS(ToVectorContract, Streams::toVector, sendAndFinish);
INSTANTIATE_ON_BOTH_ENGINES(ToVectorContract);

} // namespace
