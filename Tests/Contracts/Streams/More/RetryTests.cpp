#include "Orrenby/Utilities/Streams/More/Retry.hpp"

#include "Orrenby/Utilities/Streams/Just.hpp"
#include "Tests/Contracts/Streams/More/TimedContract.hpp"

using namespace orrenby;
using orrenby::testing::NumberSubject;
using orrenby::testing::Recorder;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class RetryContract : public orrenby::testing::TimedContract {
protected:
    /// A stream that notes when it is subscribed to, and fails so often, with the number of the attempt.
    Streams::AnyPublisher<int, Trouble> failing(int times)
    {
        return Streams::create<int, Trouble>([this, times](const NumberSubject& subject) {
            m_attempts.push_back(world().elapsed());
            const auto attempt = static_cast<int>(m_attempts.size());
            if (attempt <= times)
                subject.send(Trouble{attempt});
            else {
                subject.send(attempt);
                subject.send(Streams::Completion<Trouble>::finished());
            }
            return [this] { ++m_cleanUps; };
        });
    }

    std::vector<double> m_attempts;
    int m_cleanUps = 0;
};

TEST_P(RetryContract, SubscribesAgainUntilItWorks)
{
    const auto answer = failing(2);

    //! [Trying again]
    const auto patient = answer | Streams::retry({.interval = 0.5, .limit = 4});
    //! [Trying again]
    const auto recorder = Recorder(patient);
    world().runAll();

    EXPECT_EQ(recorder.description(), "[1.5: value(3), 1.5: end]");
    EXPECT_THAT(m_attempts, ElementsAre(0, 0.5, 1.5));
    EXPECT_EQ(m_cleanUps, 3);
}

TEST_P(RetryContract, PassesTheFailureOnWhenTheScheduleIsExhausted)
{
    const auto recorder = Recorder(
        failing(9) | Streams::retry({.interval = 1, .limit = 2, .method = Retry::Linear{}}));
    world().runAll();

    EXPECT_THAT(m_attempts, ElementsAre(0, 1, 3));
    EXPECT_THAT(recorder.failures(), ElementsAre(Trouble{3}));
    EXPECT_TRUE(recorder.hasEnded());
    EXPECT_EQ(m_cleanUps, 3);
}

TEST_P(RetryContract, WithALimitOf0TheFirstFailurePasses)
{
    const auto recorder = Recorder(Streams::retry(failing(1), {.limit = 0}));

    EXPECT_THAT(recorder.failures(), ElementsAre(Trouble{1}));
    EXPECT_TRUE(recorder.hasEnded());
}

TEST_P(RetryContract, AnHourOfBackOffTakesNoTime)
{
    const auto hour = Retry::Exponential{2};
    const auto recorder = Recorder(
        failing(11) | Streams::retry({.interval = 1, .limit = 12, .method = hour}));

    world().advance(3600);

    EXPECT_THAT(recorder.values(), ElementsAre(12));
    EXPECT_EQ(m_attempts.size(), 12U);
    EXPECT_EQ(m_attempts.back(), 2047);
    EXPECT_EQ(world().elapsed(), 3600);
}

TEST_P(RetryContract, EachSubscriberHasAFreshSchedule)
{
    auto schedules = 0;
    const auto publisher = failing(99) | Streams::retry([&] {
        ++schedules;
        return Retry(1, 2, Retry::Linear{});
    });

    const auto first = Recorder(publisher);
    world().runAll();
    const auto second = Recorder(publisher);
    world().runAll();

    EXPECT_EQ(schedules, 2);
    EXPECT_THAT(first.failures(), ElementsAre(Trouble{3}));
    EXPECT_THAT(second.failures(), ElementsAre(Trouble{6}));
}

TEST_P(RetryContract, ValuesOfAllAttemptsPassAndTheRestOfAFailedOneDoesNot)
{
    auto attempts = 0;
    const auto source = Streams::create<int, Trouble>([&](const NumberSubject& subject) {
        subject.send(++attempts);
        if (attempts < 3) {
            subject.send(Trouble{attempts});
            subject.send(100);
        }
        subject.send(Streams::Completion<Trouble>::finished());
        return nullptr;
    });
    const auto recorder = Recorder(source | Streams::retry({.interval = 0}));
    world().runAll();

    EXPECT_THAT(recorder.values(), ElementsAre(1, 2, 3));
    EXPECT_THAT(recorder.failures(), IsEmpty());
    EXPECT_TRUE(recorder.hasEnded());
}

TEST_P(RetryContract, AStreamThatWorksIsSubscribedToOnce)
{
    const auto recorder = Recorder(Streams::retry(Streams::Just<int, Trouble>(1)));

    EXPECT_EQ(recorder.marbles(), "(1|)");
}

TEST_P(RetryContract, FailuresWithoutDelayNeedNoStack)
{
    const auto recorder = Recorder(failing(20'000) | Streams::retry({.interval = 0, .limit = 30'000}));
    world().runAll();

    EXPECT_THAT(recorder.values(), ElementsAre(20'001));
}

TEST_P(RetryContract, ACancelledOneTriesNoMore)
{
    auto recorder = Recorder(failing(9) | Streams::retry({.interval = 1}));
    EXPECT_EQ(m_attempts.size(), 1U);

    recorder.cancel();
    world().runAll();

    EXPECT_EQ(m_attempts.size(), 1U);
    EXPECT_EQ(m_cleanUps, 1);
}

TEST_P(RetryContract, AFailureOfAnAttemptReleasesIt)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto subject = NumberSubject();
    const auto kept = std::make_shared<int>(0);
    const auto handle = (subject.asPublisher().map([kept](int value) { return value + *kept; })
        | Streams::retry({.interval = 1}))
                            .sink([](const auto&) {});
    const auto whileRunning = Streams::liveSubscriptionCount();

    subject.send(Trouble{1});

    EXPECT_EQ(Streams::liveSubscriptionCount(), whileRunning - 1);
    world().advance(1);
    EXPECT_EQ(Streams::liveSubscriptionCount(), whileRunning);
    EXPECT_GT(whileRunning, before);
}

TEST_P(RetryContract, WaitsForAnAttemptThatIsBeingMadeElsewhere)
{
    auto entered = std::promise<void>();
    const auto hasEntered = entered.get_future().share();
    auto goOn = std::promise<void>();
    auto attempts = 0;
    auto isDone = std::atomic(false);
    const auto handle = (Streams::create<int, Trouble>([&](const NumberSubject& subject) {
        if (++attempts == 1)
            subject.send(Trouble{1});
        else {
            entered.set_value();
            goOn.get_future().wait();
            isDone = true;
        }
        return nullptr;
    }) | Streams::retry({.interval = 1}))
                            .sink([](const auto&) {});

    auto canceller = std::thread([&] {
        hasEntered.wait();
        handle.cancelAndWait();
        EXPECT_TRUE(isDone);
    });
    auto helper = std::thread([&] {
        hasEntered.wait();
        goOn.set_value();
    });
    world().runAll();
    canceller.join();
    helper.join();
}

const auto retried = [](const auto& publisher) { return Streams::retry(publisher, {.interval = 1}); };

TEST_P(RetryContract, KeepsNothingWhileADelayIsPending)
{
    orrenby::testing::expectToKeepNothingWhileADelayIsPending(
        world(), retried, orrenby::testing::sendTrouble);
}

TEST_WHAT_HOLDS_FOR_OPERATORS(RetryContract, retried, orrenby::testing::sendOne);
INSTANTIATE_ON_BOTH_ENGINES(RetryContract);

} // namespace
