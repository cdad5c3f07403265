#include "Orrenby/Utilities/Streams/More/Filter.hpp"

#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"
#include <stdexcept>

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Received;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

class FilterContract : public orrenby::testing::BothEngines {};

using Number = Streams::Payload<int, Trouble>;

bool isOdd(int value) { return value % 2 != 0; }

TEST_P(FilterContract, LeavesOutValuesAndPassesFailures)
{
    const auto subject = NumberSubject();
    auto received = Received<int, Trouble>();

    //! [Leaving out values]
    const auto odd = subject | Streams::filter([](int value) { return value % 2 != 0; });
    const auto handle = odd.sink(received.recorder());
    //! [Leaving out values]
    subject.send(1);
    subject.send(2);
    subject.send(Trouble{2});
    subject.send(3);

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::error({2}), Number::value(3)));
}

TEST_P(FilterContract, IsCalledDirectlyAndInChains)
{
    const auto subject = NumberSubject();
    auto received = Received<int, Trouble>();
    const auto isLarge = Streams::filter([](int value) { return value > 4; });

    const auto direct = Streams::filter(subject.asPublisher(), isOdd);
    const auto handle
        = (direct | isLarge | isLarge).map([](int value) { return -value; }).sink(received.recorder());
    for (auto value = 0; value < 8; ++value)
        subject.send(value);

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(-5), Number::value(-7)));
}

TEST_P(FilterContract, PassesOnTheEnd)
{
    const auto subject = NumberSubject();
    auto ends = 0;
    const auto handle = Streams::sinkUntilEnd(
        subject | Streams::filter(isOdd), [](const auto&) {}, [&] { ++ends; });

    subject.send(Streams::Completion<Trouble>::finished());

    EXPECT_EQ(ends, 1);
}

TEST_P(FilterContract, SubscriptionsShareThePredicate)
{
    const auto kept = std::make_shared<int>(0);
    const auto publisher = NumberSubject() | Streams::filter([kept](int value) { return value > *kept; });
    const auto holders = kept.use_count();

    const auto one = publisher.sink([](const auto&) {});
    const auto two = publisher.sink([](const auto&) {});

    EXPECT_EQ(kept.use_count(), holders);
}

TEST_P(FilterContract, ASendInsideThePredicateComesAfterTheRunningValue)
{
    const auto subject = NumberSubject();
    auto received = Received<int, Trouble>();
    const auto handle = (subject | Streams::filter([&](int value) {
        if (value == 1)
            subject.send(3);
        return true;
    })).sink(received.recorder());

    subject.send(1);

    EXPECT_THAT(received.payloads, ElementsAre(Number::value(1), Number::value(3)));
}

TEST_P(FilterContract, CancellingInsideThePredicateDeliversNothing)
{
    const auto subject = NumberSubject();
    auto received = Received<int, Trouble>();
    auto handle = Streams::AnyCancellable();
    handle = (subject | Streams::filter([&](int) {
        handle.cancel();
        return true;
    })).sink(received.recorder());

    subject.send(1);

    EXPECT_THAT(received.payloads, ElementsAre());
}

TEST_P(FilterContract, TryFilterTurnsWhatIsThrownIntoAFailureAndGoesOn)
{
    const auto subject = NumberSubject();
    auto seen = std::vector<std::string>();
    const auto handle = (subject | Streams::tryFilter([](int value) {
        if (value == 2)
            throw std::runtime_error("two");
        return value != 3;
    })).sink([&](const Streams::Payload<int, AnyError>& payload) {
        if (const auto* const value = payload.asValue())
            seen.push_back(std::to_string(*value));
        else if (const auto* const trouble = payload.asError()->cast<Trouble>())
            seen.push_back("trouble " + std::to_string(trouble->number));
        else
            seen.push_back(payload.asError()->cast<std::runtime_error>()->what());
    });

    for (auto value = 1; value <= 4; ++value)
        subject.send(value);
    subject.send(Trouble{5});

    EXPECT_THAT(seen, ElementsAre("1", "two", "4", "trouble 5"));
}

TEST_P(FilterContract, APredicateThatThrowsEndsTheProcess)
{
    const auto subject = NumberSubject();
    const auto handle = (subject | Streams::filter([](int) -> bool { throw 1; })).sink([](const auto&) {});

    EXPECT_DEATH(subject.send(1), "");
}

const auto oddOnly = [](const auto& publisher) { return Streams::filter(publisher, isOdd); };

TEST_WHAT_HOLDS_FOR_OPERATORS(FilterContract, oddOnly, orrenby::testing::sendOne);
INSTANTIATE_ON_BOTH_ENGINES(FilterContract);

} // namespace
