#include "Orrenby/Utilities/Streams/More/Distinct.hpp"

#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"
#include <stdexcept>

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

class DistinctContract : public orrenby::testing::BothEngines {};

using Number = Streams::Payload<int, Trouble>;

TEST_P(DistinctContract, LeavesOutRepetitions)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto seen = std::vector<int>();

    //! [Leaving out repetitions]
    const auto changes = subject | Streams::distinct;
    const auto handle = changes.bind([&](int value) { seen.push_back(value); });
    //! [Leaving out repetitions]
    for (const auto value : {1, 1, 2, 2, 2, 1})
        subject.send(value);

    EXPECT_THAT(seen, ElementsAre(1, 2, 1));
}

TEST_P(DistinctContract, AValueAfterAFailurePasses)
{
    const auto subject = NumberSubject();
    auto received = Received<int, Trouble>();
    const auto handle = Streams::distinct(subject).sink(received.recorder());

    subject.send(1);
    subject.send(Trouble{2});
    subject.send(Trouble{2});
    subject.send(1);
    subject.send(1);

    EXPECT_THAT(received.payloads,
        ElementsAre(Number::value(1), Number::error({2}), Number::error({2}), Number::value(1)));
}

TEST_P(DistinctContract, EachSubscriberBeginsAnew)
{
    const auto subject = NumberSubject();
    const auto publisher = subject | Streams::distinct();
    auto first = Received<int, Trouble>();
    auto second = Received<int, Trouble>();

    const auto one = publisher.sink(first.recorder());
    subject.send(1);
    const auto two = publisher.sink(second.recorder());
    subject.send(1);

    EXPECT_THAT(first.payloads, ElementsAre(Number::value(1)));
    EXPECT_THAT(second.payloads, ElementsAre(Number::value(1)));
}

TEST_P(DistinctContract, DistinctByComparesKeys)
{
    const auto subject = Streams::PassthroughSubject<std::string, Never>();
    auto seen = std::vector<std::string>();
    const auto handle = (subject | Streams::distinctBy(&std::string::size))
                            .bind([&](const std::string& text) { seen.push_back(text); });

    for (const auto* const text : {"one", "two", "three", "four", "five"})
        subject.send(text);

    EXPECT_THAT(seen, ElementsAre("one", "three", "four"));
}

TEST_P(DistinctContract, ASendInsideTheCallbackIsComparedWithTheRunningValue)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto seen = std::vector<int>();
    const auto handle = (subject | Streams::distinct).bind([&](int value) {
        seen.push_back(value);
        subject.send(value);
        if (value < 3)
            subject.send(value + 1);
    });

    subject.send(1);

    EXPECT_THAT(seen, ElementsAre(1, 2, 3));
}

TEST_P(DistinctContract, TryDistinctByTurnsWhatIsThrownIntoAFailureAndGoesOn)
{
    const auto subject = NumberSubject();
    auto seen = std::vector<std::string>();
    const auto handle = (subject | Streams::tryDistinctBy([](int value) {
        if (value == 0)
            throw std::runtime_error("zero");
        return value / 10;
    })).sink([&](const Streams::Payload<int, AnyError>& payload) {
        if (const auto* const value = payload.asValue())
            seen.push_back(std::to_string(*value));
        else if (const auto* const trouble = payload.asError()->cast<Trouble>())
            seen.push_back("trouble " + std::to_string(trouble->number));
        else
            seen.push_back(payload.asError()->cast<std::runtime_error>()->what());
    });

    for (const auto value : {11, 12, 21, 0, 22, 23})
        subject.send(value);
    subject.send(Trouble{1});
    subject.send(24);

    EXPECT_THAT(seen, ElementsAre("11", "21", "zero", "22", "trouble 1", "24"));
}

/// Two triggers with 1 are one element for `distinct`; this one always differs.
void sendAnother(const NumberSubject& subject)
{
    static auto number = 0;
    subject.send(++number);
}

TEST_WHAT_HOLDS_FOR_OPERATORS(DistinctContract, Streams::distinct, sendAnother);
INSTANTIATE_ON_BOTH_ENGINES(DistinctContract);

} // namespace
