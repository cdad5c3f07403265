#include "Tests/Support/Queues.hpp"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <thread>

using namespace orrenby;
using orrenby::testing::QueueContract;

namespace {

/// Several real threads at one queue, under the platform's own world.
class QueueThreadsContract : public QueueContract {};
/// Those that a thread can wait for which is on the main queue.
class QueueTurnThreadsContract : public QueueContract {};

constexpr auto threadCount = 4;

/// Runs `body(index)` on several threads and waits for all of them.
template <class Body> void onThreads(Body body)
{
    auto threads = std::vector<std::thread>();
    for (auto index = 0; index < threadCount; ++index)
        threads.emplace_back(body, index);
    for (auto& thread : threads)
        thread.join();
}

std::vector<int> numbersBelow(int end)
{
    auto numbers = std::vector<int>(static_cast<std::size_t>(end));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

TEST_P(QueueThreadsContract, LosesNothingThatManyThreadsHandOver)
{
    constexpr auto workCount = 2'500;
    auto ordered = std::vector<std::vector<int>>(threadCount);
    auto guard = std::mutex();

    onThreads([&](int thread) {
        for (int number = 0; number < workCount; ++number)
            queue->async([&, thread, number] {
                // A serial queue is the guard itself.
                auto lock = isOrdered() ? std::unique_lock<std::mutex>() : std::unique_lock(guard);
                ordered[static_cast<std::size_t>(thread)].push_back(number);
            });
    });
    settle();

    for (auto& numbers : ordered) {
        if (!isOrdered())
            std::sort(numbers.begin(), numbers.end());
        EXPECT_EQ(numbers, numbersBelow(workCount));
    }
}

TEST_P(QueueThreadsContract, LosesNoDelayedWork)
{
    constexpr auto workCount = 200;
    auto left = std::atomic(threadCount * workCount);
    auto done = detail::Signal();

    onThreads([&](int thread) {
        for (int number = 0; number < workCount; ++number)
            queue->asyncAfter(0.0001 * ((number + thread) % 7), [&] {
                if (--left == 0)
                    queue->barrierAsync([&] { done.set(); });
            });
    });
    waitFor(done);

    EXPECT_EQ(left, 0);
}

TEST_P(QueueTurnThreadsContract, GuardsWhatManyThreadsTouch)
{
    constexpr auto roundCount = 2'000;
    auto sum = 0;

    onThreads([&](int thread) {
        for (int round = 0; round < roundCount; ++round)
            if (thread == 0)
                queue->barrierAsync([&] { ++sum; });
            else
                queue->barrierSync([&] { ++sum; });
    });

    EXPECT_EQ(queue->barrierSync([&] { return sum; }), threadCount * roundCount);
}

TEST_P(QueueTurnThreadsContract, LetsReadersAndWritersTakeTurns)
{
    auto first = 0;
    auto second = 0;
    auto differences = std::atomic(0);

    onThreads([&](int) {
        for (int round = 0; round < 1'000; ++round) {
            differences += queue->sync([&] { return first != second; });
            queue->barrierAsync([&] {
                ++first;
                ++second;
            });
        }
    });
    settle();

    EXPECT_EQ(differences, 0);
    EXPECT_EQ(first, 4'000);
}

TEST_P(QueueTurnThreadsContract, ComesAndGoesWhileOthersUseIt)
{
    auto total = std::atomic(0);

    onThreads([&](int) {
        for (int round = 0; round < 300; ++round) {
            const auto own = GetParam().make();
            own.async([&total] { ++total; });
            own.async([own, &total] { ++total; });
            own.sync([&total] { ++total; });
            own.barrierSync([] {});
        }
    });

    EXPECT_EQ(total, threadCount * 900);
}

bool isReal(const orrenby::testing::QueueCase& each) { return !each.isVirtual; }

INSTANTIATE_TEST_SUITE_P(Queues, QueueThreadsContract,
    ::testing::ValuesIn(orrenby::testing::queueCasesWhere(isReal)), orrenby::testing::nameOf);

INSTANTIATE_TEST_SUITE_P(Queues, QueueTurnThreadsContract,
    ::testing::ValuesIn(orrenby::testing::queueCasesWhere(
        [](const auto& each) { return isReal(each) && each.kind != DispatchQueue::Kind::Main; })),
    orrenby::testing::nameOf);

} // namespace
