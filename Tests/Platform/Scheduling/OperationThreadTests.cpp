#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Tests/Support/OperationParts.hpp"
#include <atomic>
#include <gmock/gmock.h>
#include <random>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::ManualOperation;

// These run on the threads of the platform's executor.

namespace {

constexpr int producers = 4;
constexpr int each = 500;

template <class Work> void onSeveralThreads(Work&& work)
{
    std::vector<std::thread> threads;
    for (int producer = 0; producer < producers; ++producer)
        threads.emplace_back([&, producer] { work(producer); });
    for (auto& thread : threads)
        thread.join();
}

} // namespace

TEST(OperationThreads, ASerialQueueRunsOneAtATimeAndKeepsTheOrderOfEachThread)
{
    const auto queue = OperationQueue();
    queue.setMaxConcurrentOperationCount(1);
    std::vector<std::vector<int>> ran(producers); // without a lock: the queue is one

    onSeveralThreads([&](int producer) {
        for (int number = 0; number < each; ++number)
            queue.addOperation([&ran, producer, number] { ran[std::size_t(producer)].push_back(number); });
    });
    queue.waitUntilAllOperationsAreFinished();

    for (const auto& numbers : ran) {
        EXPECT_EQ(numbers.size(), std::size_t(each));
        EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
    }
}

TEST(OperationThreads, AQueueNeverExceedsItsLimit)
{
    const auto queue = OperationQueue();
    queue.setMaxConcurrentOperationCount(2);
    std::atomic<int> inside = 0;
    std::atomic<int> most = 0;
    std::atomic<int> ran = 0;

    onSeveralThreads([&](int) {
        for (int number = 0; number < each; ++number)
            queue.addOperation([&] {
                const int now = ++inside;
                int seen = most;
                while (seen < now && !most.compare_exchange_weak(seen, now)) {}
                ++ran;
                --inside;
            });
    });
    queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(ran, producers * each);
    EXPECT_LE(most, 2);
}

TEST(OperationThreads, DependenciesHoldAcrossThreadsAndQueues)
{
    constexpr std::size_t count = 600;
    const OperationQueue queues[] = {OperationQueue(), OperationQueue(), OperationQueue()};
    std::vector<std::atomic<bool>> done(count);
    std::atomic<int> early = 0;
    auto random = std::mt19937(11);
    std::vector<Ref<Operation>> all;
    for (std::size_t index = 0; index < count; ++index) {
        std::vector<std::size_t> needed;
        for (int edge = 0; edge < 3 && index > 0; ++edge)
            needed.push_back(random() % index);
        all.push_back(make<BlockOperation>([&done, &early, needed, index] {
            for (const auto other : needed)
                early += !done[other];
            done[index] = true;
        }));
        for (const auto other : needed)
            all.back()->addDependency(all[other]);
        // Some dependencies run already while others are still being added.
        queues[index % 3].addOperation(all.back());
    }

    for (const auto& operation : all)
        operation->waitUntilFinished();

    EXPECT_EQ(early, 0);
}

TEST(OperationThreads, OperationsMayFinishOnAnyThread)
{
    const auto queue = OperationQueue();
    queue.setMaxConcurrentOperationCount(3);
    std::vector<Ref<ManualOperation>> all;
    for (int index = 0; index < 200; ++index) {
        all.push_back(make<ManualOperation>());
        queue.addOperation(all.back());
    }
    std::atomic<std::size_t> next = 0;

    onSeveralThreads([&](int) {
        for (auto index = next++; index < all.size(); index = next++) {
            while (!all[index]->isExecuting())
                std::this_thread::yield();
            all[index]->end();
        }
    });
    queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(queue.operationCount(), 0U);
}

TEST(OperationThreads, CancellingRacesWithRunning)
{
    const auto queue = OperationQueue();
    std::atomic<int> ran = 0;
    std::atomic<int> completed = 0;
    std::vector<Ref<Operation>> all;
    for (int index = 0; index < 1000; ++index) {
        all.push_back(make<BlockOperation>([&] { ++ran; }));
        if (index > 0)
            all[std::size_t(index)]->addDependency(all[std::size_t(index) - 1]);
    }
    auto canceller = std::thread([&] {
        for (int round = 0; round < 20; ++round)
            queue.cancelAllOperations();
    });

    queue.addOperations(all, {.waitUntilFinished = true});
    canceller.join();

    for (const auto& operation : all)
        completed += operation->isFinished();
    EXPECT_EQ(completed, 1000);
    EXPECT_LE(ran, 1000);
}

TEST(OperationThreads, OperationsWaitForOthersOfTheirQueueWithoutStarvingIt)
{
    // More that wait than there are processors: others must take their place.
    const auto queue = OperationQueue();
    std::atomic<int> ran = 0;
    std::vector<Ref<Operation>> awaited;
    for (int index = 0; index < 16; ++index)
        awaited.push_back(make<BlockOperation>([&] { ++ran; }));
    for (const auto& operation : awaited)
        queue.addOperation([&ran, operation] {
            operation->waitUntilFinished();
            ++ran;
        });

    queue.addOperations(awaited);
    queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(ran, 32);
}

TEST(OperationThreads, SuspendingRacesWithRunning)
{
    const auto queue = OperationQueue();
    std::atomic<int> ran = 0;
    auto switcher = std::thread([&] {
        for (int round = 0; round < 500; ++round)
            queue.setSuspended(round % 2 == 0);
        queue.setSuspended(false);
    });

    for (int index = 0; index < 2000; ++index)
        queue.addOperation([&] { ++ran; });
    queue.waitUntilAllOperationsAreFinished();
    switcher.join();

    EXPECT_EQ(ran, 2000);
}

TEST(OperationThreads, BarriersRunAlone)
{
    const auto queue = OperationQueue();
    int guarded = 0; // written by barriers, read by the others, without a lock
    std::atomic<int> read = 0;

    for (int round = 0; round < 50; ++round) {
        for (int reader = 0; reader < 4; ++reader)
            queue.addOperation([&] { read += guarded; });
        queue.addBarrierBlock([&] { ++guarded; });
    }
    queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(guarded, 50);
    EXPECT_EQ(read, 4 * (49 * 50) / 2);
}
