#include "Orrenby/Utilities/Streams/More/Throttle.hpp"

#include "Tests/Contracts/Streams/More/TimedContract.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Recorder;
using ::testing::ElementsAre;

namespace {

class ThrottleContract : public orrenby::testing::TimedContract {};

const auto throttled = [](const auto& publisher) { return Streams::throttle(publisher, 0.03); };
const auto firstOnly = [](const auto& publisher) {
    return Streams::throttle(publisher, 0.03, {.latest = false});
};

TEST_P(ThrottleContract, PassesOneValueInAnInterval)
{
    const auto positions = Streams::PassthroughSubject<int, Never>();

    //! [Slowing a stream down]
    const auto calm = positions | Streams::throttle(0.5, {.queue = DispatchQueue::main()});
    //! [Slowing a stream down]
    const auto recorder = Recorder(calm);
    for (auto position = 0; position < 12; ++position) {
        positions.send(position);
        world().advance(0.1);
    }
    world().runAll();

    EXPECT_THAT(recorder.values(), ElementsAre(0, 4, 9, 11));
}

TEST_P(ThrottleContract, TheFirstValuePassesAtOnceAndTheLatestAtTheEndOfEachInterval)
{
    EXPECT_EQ(marbles("abc", throttled), "a--c");
    EXPECT_EQ(marbles("ab-c-d", throttled), "a--c--d");
}

TEST_P(ThrottleContract, WithoutTheLatestAllOthersAreDropped)
{
    EXPECT_EQ(marbles("abc--d-e--f", firstOnly), "a----d----f");
}

TEST_P(ThrottleContract, AnIntervalWithoutValuesEndsTheRow)
{
    EXPECT_EQ(marbles("ab------c", throttled), "a--b----c");
}

TEST_P(ThrottleContract, AFailureLetsTheValueGoFirstAndPassesAtOnce)
{
    EXPECT_EQ(marbles("ab#c", throttled), "a-(b#)c");
    EXPECT_EQ(marbles("ab#-c", firstOnly), "a-#-c");
}

TEST_P(ThrottleContract, TheEndLetsTheValueGoFirst)
{
    EXPECT_EQ(marbles("ab|", throttled), "a-(b|)");
    EXPECT_EQ(marbles("ab|", firstOnly), "a-|");
    EXPECT_EQ(marbles("a|", throttled), "a|");
}

TEST_P(ThrottleContract, EachSubscriberHasIntervalsOfHisOwn)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    const auto publisher = subject | Streams::throttle(1);
    const auto first = Recorder(publisher);
    subject.send(1);
    world().advance(0.5);
    const auto second = Recorder(publisher);
    subject.send(2);
    world().runAll();

    EXPECT_EQ(first.description(), "[0.0: value(1), 1.0: value(2)]");
    EXPECT_EQ(second.description(), "[0.0: value(2)]");
}

TEST_P(ThrottleContract, ASendInsideTheCallbackWaitsForTheInterval)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    auto times = std::vector<double>();
    const auto handle = (subject | Streams::throttle(1)).bind([&](int value) {
        times.push_back(world().elapsed());
        if (value < 3)
            subject.send(value + 1);
    });

    subject.send(1);
    world().runAll();

    EXPECT_THAT(times, ElementsAre(0, 1, 2));
}

TEST_P(ThrottleContract, KeepsNothingWhileADelayIsPending)
{
    orrenby::testing::expectToKeepNothingWhileADelayIsPending(
        world(), throttled, [](const NumberSubject& subject) {
            subject.send(1);
            subject.send(2);
        });
}

TEST_WHAT_HOLDS_FOR_OPERATORS(ThrottleContract, throttled, orrenby::testing::sendTrouble);
INSTANTIATE_ON_BOTH_ENGINES(ThrottleContract);

} // namespace
