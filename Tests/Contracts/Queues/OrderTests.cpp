#include "Tests/Support/Queues.hpp"

#include <algorithm>
#include <numeric>
#include <thread>

using namespace orrenby;
using orrenby::testing::Notes;
using orrenby::testing::QueueContract;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAreArray;

namespace {

class QueueOrderContract : public QueueContract {};

/// What is defined only where one thread does everything.
class QueueMomentContract : public QueueContract {};

std::vector<int> numbersBelow(int end)
{
    auto numbers = std::vector<int>(static_cast<std::size_t>(end));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

TEST_P(QueueOrderContract, RunsAllWorkInTheOrderOfTheCalls)
{
    constexpr auto count = 1000; // more than a queue does in one go
    auto notes = Notes();

    for (int number = 0; number < count; ++number)
        queue->async(notes.adding(number));
    settle();

    if (isOrdered())
        EXPECT_EQ(notes.numbers(), numbersBelow(count));
    else
        EXPECT_THAT(notes.numbers(), UnorderedElementsAreArray(numbersBelow(count)));
}

TEST_P(QueueOrderContract, PutsWorkOfWorkBehindWhatWaits)
{
    auto notes = Notes();
    auto done = detail::Signal();

    queue->barrierAsync([&] {
        queue->barrierAsync([&] {
            queue->barrierAsync([&] {
                notes.add(3);
                done.set();
            });
            notes.add(1);
        });
        queue->barrierAsync(notes.adding(2));
    });
    waitFor(done);

    EXPECT_THAT(notes.numbers(), ElementsAre(1, 2, 3));
}

TEST_P(QueueOrderContract, RunsLongChainsOfWorkWithoutStack)
{
    struct Chain {
        void next()
        {
            if (++length == 20'000)
                done.set();
            else
                queue.async([this] { next(); });
        }
        DispatchQueue queue;
        detail::Signal& done;
        int length = 0;
    };
    auto done = detail::Signal();
    auto chain = Chain{*queue, done};

    chain.queue.async([&] { chain.next(); });
    waitFor(done);

    EXPECT_EQ(chain.length, 20'000);
}

TEST_P(QueueOrderContract, BarriersRunAfterWhatWasBeforeAndBeforeTheRest)
{
    auto notes = Notes();

    for (int round = 0; round < 50; ++round) {
        for (int count = 0; count < 5; ++count)
            queue->async(notes.adding(2 * round));
        queue->barrierAsync(notes.adding(2 * round + 1));
    }
    settle();

    const auto numbers = notes.numbers();
    EXPECT_THAT(numbers, SizeIs(300));
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
}

TEST_P(QueueOrderContract, BarriersRunAlone)
{
    auto running = std::atomic(0);
    auto wasAlone = true;

    for (int count = 0; count < 100; ++count) {
        queue->async([&] {
            ++running;
            std::this_thread::yield();
            --running;
        });
        if (count % 3 == 0)
            queue->barrierAsync([&] { wasAlone = wasAlone && running == 0; }); // unguarded, being alone
    }
    settle();

    EXPECT_TRUE(wasAlone);
}

TEST_P(QueueOrderContract, TakesDelayedWorkByItsMomentAndThenByTheOrderOfTheCalls)
{
    auto notes = Notes();
    auto done = detail::Signal();
    auto missing = std::atomic(3);
    const auto noting = [&](int number) {
        return [&, note = notes.adding(number)]() mutable {
            note();
            if (--missing == 0)
                done.set();
        };
    };

    queue->asyncAfter(0.003, noting(3));
    queue->asyncAfter(0.001, noting(1));
    queue->asyncAfter(0.002, noting(2));
    waitFor(done);

    // In real time this thread may be held up between the calls.
    if (isVirtual())
        EXPECT_THAT(notes.numbers(), ElementsAre(1, 2, 3));
    else
        EXPECT_THAT(notes.numbers(), UnorderedElementsAreArray({1, 2, 3}));
}

TEST_P(QueueOrderContract, TakesWorkAtOnceWhoseDelayIsNone)
{
    auto notes = Notes();
    auto done = detail::Signal();

    queue->asyncAfter(0, notes.adding(1));
    queue->asyncAfter(-5, notes.adding(2));
    queue->asyncAfter(std::numeric_limits<double>::quiet_NaN(), notes.adding(3));
    settle();

    EXPECT_THAT(notes.numbers(), SizeIs(3));
    if (isVirtual()) {
        EXPECT_EQ(world->elapsed(), 0);
    }
}

TEST_P(QueueMomentContract, KeepsTheOrderOfOneMoment)
{
    auto notes = Notes();

    for (int number = 0; number < 1000; ++number)
        queue->asyncAfter(5, notes.adding(number));
    world->advance(4.999);
    EXPECT_THAT(notes.numbers(), IsEmpty());
    world->advance(0.001);

    EXPECT_EQ(notes.numbers(), numbersBelow(1000));
}

TEST_P(QueueMomentContract, LetsOthersHaveTheirTurnWhileItIsBusy)
{
    auto notes = Notes();
    for (int number = 0; number < 1000; ++number)
        queue->async(notes.adding(0));
    DispatchQueue::serial("other").async(notes.adding(1));

    world->runUntilIdle();

    const auto numbers = notes.numbers();
    EXPECT_LE(std::find(numbers.begin(), numbers.end(), 1) - numbers.begin(), 256);
}

INSTANTIATE_TEST_SUITE_P(Queues, QueueOrderContract, ::testing::ValuesIn(orrenby::testing::queueCases()),
    orrenby::testing::nameOf);

INSTANTIATE_TEST_SUITE_P(Queues, QueueMomentContract,
    ::testing::ValuesIn(orrenby::testing::queueCasesWhere([](const auto& each) { return each.isVirtual; })),
    orrenby::testing::nameOf);

} // namespace
