#include "Orrenby/Utilities/Streams/More/Timeout.hpp"

#include "Tests/Contracts/Streams/More/TimedContract.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Recorder;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

class TimeoutContract : public orrenby::testing::TimedContract {};

const auto limited = [](const auto& publisher) { return Streams::timeout(publisher, 0.03, Trouble{9}); };

TEST_P(TimeoutContract, FailsWhenNothingComesInTime)
{
    const auto answers = Streams::PassthroughSubject<int, std::string>();

    //! [Not waiting for ever]
    const auto limitedAnswers = answers | Streams::timeout(5, "no answer");
    //! [Not waiting for ever]
    const auto recorder = Recorder(limitedAnswers);
    world().advance(4);
    answers.send(1);
    world().advance(5);
    answers.send(2);

    EXPECT_EQ(recorder.description(), "[4.0: value(1), 9.0: error(no answer), 9.0: end]");
}

TEST_P(TimeoutContract, EachElementBeginsTheWaitAnew)
{
    EXPECT_EQ(marbles("a-b-c--#--d-----e", limited), "a-b-c--#--d--(#|)");
}

TEST_P(TimeoutContract, AStreamThatSendsNothingFails) { EXPECT_EQ(marbles("", limited), "---(#|)"); }

TEST_P(TimeoutContract, AStreamThatEndsInTimeDoesNotFail) { EXPECT_EQ(marbles("a-|", limited), "a-|"); }

TEST_P(TimeoutContract, AnElementJustInTimeBeginsTheWaitAnew)
{
    const auto subject = NumberSubject();
    const auto recorder = Recorder(subject | Streams::timeout(1, Trouble{9}));
    world().advance(0.999999);

    subject.send(1);
    world().advance(0.999999);

    EXPECT_THAT(recorder.values(), ElementsAre(1));
    EXPECT_FALSE(recorder.hasEnded());
    world().advance(0.000001);
    EXPECT_THAT(recorder.failures(), ElementsAre(Trouble{9}));
}

TEST_P(TimeoutContract, LetsTheStreamGo)
{
    const auto subject = NumberSubject();
    auto calls = 0;
    const auto recorder = Recorder(limited(subject.asPublisher().map([&](int value) {
        ++calls;
        return value;
    })));
    world().runAll();

    subject.send(1);

    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(recorder.hasEnded());
}

TEST_P(TimeoutContract, ManyElementsPostOneWakeUp)
{
    const auto subject = NumberSubject();
    const auto recorder = Recorder(limited(subject));

    for (auto i = 0; i < 1'000; ++i)
        subject.send(i);

    EXPECT_EQ(world().pendingCount(), 1U);
}

TEST_P(TimeoutContract, KeepsNothingWhileADelayIsPending)
{
    orrenby::testing::expectToKeepNothingWhileADelayIsPending(world(), limited, orrenby::testing::sendOne);
}

TEST_WHAT_HOLDS_FOR_OPERATORS(TimeoutContract, limited, orrenby::testing::sendOne);
INSTANTIATE_ON_BOTH_ENGINES(TimeoutContract);

} // namespace
