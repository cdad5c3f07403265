#include "Orrenby/Utilities/Streams/More/Task.hpp"

#include "Orrenby/Utilities/Streams/Just.hpp"
#include "Orrenby/Utilities/Streams/More/Await.hpp"
#include "Tests/Contracts/Streams/More/OperatorChecks.hpp"
#include <pthread.h>

using namespace orrenby;
using orrenby::testing::NumberSubject;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class TaskContract : public orrenby::testing::BothEngines {};

using Subject = Streams::PassthroughSubject<int, Never>;
using Completion = Streams::Completion<Never>;

//! [A coroutine that waits for streams]
/// Adds up what comes, until the stream ends.
Streams::Task addUp(Subject numbers, int& sum)
{
    auto values = Streams::values(numbers);
    while (const auto value = co_await values.next())
        sum += *value;
}
//! [A coroutine that waits for streams]

/// Notes its steps and its end.
Streams::Task notes(Subject numbers, std::vector<std::string>& steps, std::shared_ptr<int> kept)
{
    steps.push_back("begins");
    auto values = Streams::values(numbers);
    while (const auto value = co_await values.next())
        steps.push_back(std::to_string(*value + *kept));
    steps.push_back("ends");
}

TEST_P(TaskContract, RunsAtOnceUpToWhatItWaitsForAndGoesOnWithIt)
{
    const auto subject = Subject();
    auto steps = std::vector<std::string>();

    const auto task = notes(subject, steps, std::make_shared<int>(0));
    EXPECT_THAT(steps, ElementsAre("begins"));
    EXPECT_FALSE(task.isDone());
    subject.send(1);
    EXPECT_THAT(steps, ElementsAre("begins", "1"));
    subject.send(Completion::finished());

    EXPECT_THAT(steps, ElementsAre("begins", "1", "ends"));
    EXPECT_TRUE(task.isDone());
}

TEST_P(TaskContract, CancellingReleasesItsVariablesAndSubscriptions)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto subject = Subject();
    auto steps = std::vector<std::string>();
    const auto kept = std::make_shared<int>(0);
    auto task = notes(subject, steps, kept);
    EXPECT_EQ(kept.use_count(), 2);

    task.cancel();
    subject.send(1);
    task.cancel();

    EXPECT_TRUE(task.isDone());
    EXPECT_EQ(kept.use_count(), 1);
    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
    EXPECT_THAT(steps, ElementsAre("begins"));
}

TEST_P(TaskContract, EndsWithItsHandle)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto subject = Subject();
    auto sum = 0;

    {
        const auto task = addUp(subject, sum);
    }
    subject.send(1);

    EXPECT_EQ(sum, 0);
    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

TEST_P(TaskContract, AMovedHandleKeepsItAndTheReplacedOneIsCancelled)
{
    const auto subject = Subject();
    auto first = 0;
    auto second = 0;
    auto task = addUp(subject, first);
    auto other = addUp(subject, second);

    task = std::move(other);
    subject.send(1);

    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
    EXPECT_FALSE(task.isDone());
    EXPECT_TRUE(Streams::Task().isDone());
}

Streams::Task cancelsItself(Subject numbers, Streams::Task& self, std::vector<int>& seen)
{
    auto values = Streams::values(numbers);
    while (const auto value = co_await values.next()) {
        self.cancel();
        seen.push_back(*value);
    }
}

TEST_P(TaskContract, ThatCancelsItselfRunsOnToWhereItWouldWait)
{
    const auto before = Streams::liveSubscriptionCount();
    const auto subject = Subject();
    auto seen = std::vector<int>();
    auto task = Streams::Task();
    task = cancelsItself(subject, task, seen);

    subject.send(1);
    subject.send(2);

    EXPECT_THAT(seen, ElementsAre(1));
    EXPECT_TRUE(task.isDone());
    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

Streams::Task dropsItself(Subject numbers, std::optional<Streams::Task>& self, int& steps)
{
    (void)co_await Streams::next(numbers);
    self.reset();
    ++steps;
    (void)co_await Streams::next(numbers);
    ++steps;
}

TEST_P(TaskContract, MayDropItsOwnHandle)
{
    const auto subject = Subject();
    auto steps = 0;
    auto task = std::optional<Streams::Task>();
    task.emplace(dropsItself(subject, task, steps));

    subject.send(1);
    subject.send(2);

    EXPECT_EQ(steps, 1);
}

Streams::Task throws()
{
    (void)co_await Streams::next(Streams::Just<int, Never>(1));
    throw 1;
}

TEST_P(TaskContract, AnExceptionThatGetsOutEndsTheProcess) { EXPECT_DEATH((void)throws(), ""); }

/// Runs `body` with 256 KiB of stack, too few for anything that grows with what it does.
void onASmallStack(void (*body)())
{
    auto attributes = pthread_attr_t();
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
    auto thread = pthread_t();
    const auto start = [](void* argument) -> void* {
        reinterpret_cast<void (*)()>(argument)();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, start, reinterpret_cast<void*>(body)), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

constexpr auto million = 1'000'000;

Streams::Task readsWhatIsThere(std::int64_t& sum)
{
    const auto subject = Subject();
    auto values = Streams::values(subject);
    for (auto i = 0; i < million; ++i) {
        subject.send(1); // is there before it is awaited
        sum += *co_await values.next();
    }
}

TEST_P(TaskContract, AMillionValuesThatAreThereNeedNoStack)
{
    onASmallStack([] {
        auto sum = std::int64_t(0);
        const auto task = readsWhatIsThere(sum);
        EXPECT_TRUE(task.isDone());
        EXPECT_EQ(sum, million);
    });
}

Streams::Task subscribesAgainAndAgain(std::int64_t& sum)
{
    const auto one = Streams::Just<int, Never>(1);
    for (auto i = 0; i < million / 10; ++i)
        sum += co_await one;
}

TEST_P(TaskContract, AwaitingStreamsThatHaveTheirValueNeedsNoStack)
{
    onASmallStack([] {
        auto sum = std::int64_t(0);
        const auto task = subscribesAgainAndAgain(sum);
        EXPECT_EQ(sum, million / 10);
    });
}

/// Answers each number with the next, until there were enough.
Streams::Task answers(Subject questions, Subject replies, int& last)
{
    auto values = Streams::values(questions);
    while (const auto value = co_await values.next()) {
        last = *value;
        if (*value < million)
            replies.send(*value + 1);
    }
}

TEST_P(TaskContract, AMillionResumptionsFromInsideNeedNoStack)
{
    onASmallStack([] {
        const auto subject = Subject();
        auto last = 0;
        const auto task = answers(subject, subject, last);
        subject.send(1);
        EXPECT_EQ(last, million);
    });
}

TEST_P(TaskContract, TwoThatResumeEachOtherNeedNoStack)
{
    onASmallStack([] {
        const auto ping = Subject();
        const auto pong = Subject();
        auto last = 0;
        auto beforeLast = 0;
        const auto one = answers(ping, pong, last);
        const auto two = answers(pong, ping, beforeLast);
        ping.send(1);
        EXPECT_EQ(std::max(last, beforeLast), million);
    });
}

TEST_P(TaskContract, ValuesOfManyThreadsAreAllReadAndNeverTwoAtATime)
{
    const auto subject = Subject();
    auto sum = 0; // the coroutine runs once at a time
    auto task = addUp(subject, sum);
    auto threads = std::vector<std::thread>();
    for (auto thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (auto i = 0; i < 2'000; ++i)
                subject.send(1);
        });
    for (auto& thread : threads)
        thread.join();
    task.cancelAndWait();

    EXPECT_EQ(sum, 8'000);
}

TEST_P(TaskContract, CancellingWhileItRunsElsewhereWaitsForIt)
{
    const auto before = Streams::liveSubscriptionCount();
    for (auto round = 0; round < 200; ++round) {
        const auto subject = Subject();
        auto sum = 0;
        auto hasBegun = std::atomic(false);
        auto task = addUp(subject, sum);
        auto sender = std::thread([&] {
            for (auto i = 0; i < 100; ++i) {
                subject.send(1);
                hasBegun = true;
            }
        });
        while (!hasBegun)
            std::this_thread::yield();
        task.cancelAndWait();
        const auto sumThen = sum;
        sender.join();
        ASSERT_EQ(sum, sumThen);
        ASSERT_TRUE(task.isDone());
    }

    EXPECT_EQ(Streams::liveSubscriptionCount(), before);
}

INSTANTIATE_ON_BOTH_ENGINES(TaskContract);

} // namespace
