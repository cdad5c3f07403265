#include "Tests/Support/OperationParts.hpp"
#include "Tests/Support/OperationQueues.hpp"

#include <algorithm>
#include <memory>
#include <numeric>
#include <thread>

using namespace orrenby;
using orrenby::testing::ManualOperation;
using orrenby::testing::Notes;
using orrenby::testing::OperationQueueContract;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAreArray;

namespace {

std::vector<int> numbersBelow(int end)
{
    auto numbers = std::vector<int>(static_cast<std::size_t>(end));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

TEST_P(OperationQueueContract, RunsAllBlocksInTheOrderOfTheCalls)
{
    constexpr auto count = 1000; // more than a queue does in one go
    auto notes = Notes();

    for (int number = 0; number < count; ++number)
        queue->addOperation(notes.adding(number));
    settle();

    if (isOrdered())
        EXPECT_EQ(notes.numbers(), numbersBelow(count));
    else
        EXPECT_THAT(notes.numbers(), UnorderedElementsAreArray(numbersBelow(count)));
}

TEST_P(OperationQueueContract, RunsAChainInItsOrderHoweverItIsAdded)
{
    constexpr std::size_t count = 300;
    auto notes = Notes();
    auto all = std::vector<Ref<Operation>>();
    for (std::size_t index = 0; index < count; ++index) {
        all.push_back(make<BlockOperation>(notes.adding(static_cast<int>(index))));
        if (index > 0)
            all[index]->addDependency(all[index - 1]);
    }
    std::reverse(all.begin(), all.end());

    queue->addOperations(all);
    settle();

    EXPECT_EQ(notes.numbers(), numbersBelow(count));
}

TEST_P(OperationQueueContract, BeginsByPriorityOnceItGoes)
{
    auto notes = Notes();
    queue->setSuspended(true);
    for (const int priority : {0, -8, 8, 4, -4, 0, 8}) {
        const auto operation = make<BlockOperation>(notes.adding(priority));
        operation->setQueuePriority(Operation::QueuePriority(priority));
        queue->addOperation(operation);
    }

    queue->setSuspended(false);
    settle();

    if (isOrdered())
        EXPECT_THAT(notes.numbers(), ElementsAre(8, 8, 4, 0, 0, -4, -8));
    else
        EXPECT_THAT(notes.numbers(), UnorderedElementsAreArray({8, 8, 4, 0, 0, -4, -8}));
}

TEST_P(OperationQueueContract, RunsBarriersBetweenWhatWasBeforeAndTheRest)
{
    auto notes = Notes();

    for (int round = 0; round < 50; ++round) {
        for (int count = 0; count < 5; ++count)
            queue->addOperation(notes.adding(2 * round));
        queue->addBarrierBlock(notes.adding(2 * round + 1));
    }
    settle();

    const auto numbers = notes.numbers();
    EXPECT_EQ(numbers.size(), 300U);
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
}

TEST_P(OperationQueueContract, RunsNothingThatWasCancelledInTime)
{
    auto notes = Notes();
    queue->setSuspended(true);
    for (int number = 0; number < 10; ++number)
        queue->addOperation(notes.adding(number));

    queue->cancelAllOperations();
    queue->setSuspended(false);
    settle();

    EXPECT_THAT(notes.numbers(), IsEmpty());
}

TEST_P(OperationQueueContract, RunsWhatItsBlocksAdd)
{
    auto notes = Notes();

    queue->addOperation([&] {
        queue->addOperation([&] {
            queue->addOperation(notes.adding(2));
            notes.add(1);
        });
        notes.add(0);
    });
    settle();

    EXPECT_THAT(notes.numbers(), UnorderedElementsAreArray({0, 1, 2}));
}

TEST_P(OperationQueueContract, RunsLongChainsOfBlocksWithoutStack)
{
    struct Chain {
        void next()
        {
            if (++length < 10'000)
                queue.addOperation([this] { next(); });
        }
        OperationQueue queue;
        int length = 0;
    };
    auto chain = Chain{*queue};

    queue->addOperation([&] { chain.next(); });
    settle();

    EXPECT_EQ(chain.length, 10'000);
}

TEST_P(OperationQueueContract, IsCurrentInItsBlocks)
{
    auto isCurrent = false;

    queue->addOperation([&] { isCurrent = queue->isCurrent() && OperationQueue::current() == queue; });
    settle();

    EXPECT_TRUE(isCurrent);
}

TEST_P(OperationQueueContract, SuspendsItselfFromABlock)
{
    auto notes = Notes();
    const auto stopping = make<BlockOperation>([&] { queue->setSuspended(true); });
    const auto stopped = make<BlockOperation>();
    stopped->addDependency(stopping);
    const auto other = OperationQueue();
    other.addOperation(stopped);
    queue->addOperation(stopping);
    queue->addBarrierBlock(notes.adding(1));
    if (isVirtual())
        world->runUntilIdle();
    else if (GetParam().isMain)
        while (!stopped->isFinished())
            RunLoop::main().runFor(0.001);
    else
        stopped->waitUntilFinished();
    EXPECT_THAT(notes.numbers(), IsEmpty());

    queue->setSuspended(false);
    settle();

    EXPECT_THAT(notes.numbers(), ElementsAre(1));
}

TEST_P(OperationQueueContract, KeepsThePlaceOfWhatGoesOnAfterItsStart)
{
    auto notes = Notes();
    const auto operation = make<ManualOperation>();
    queue->addOperation(operation);
    queue->addBarrierBlock(notes.adding(2));

    DispatchQueue::global().asyncAfter(0.001, [&] {
        while (!operation->isExecuting())
            std::this_thread::yield();
        notes.add(1);
        operation->end();
    });
    settle();

    EXPECT_THAT(notes.numbers(), ElementsAre(1, 2));
}

TEST_P(OperationQueueContract, GoesOnWithoutHandles)
{
    auto notes = Notes();
    for (int number = 0; number < 10; ++number)
        queue->addOperation(notes.adding(number));
    const auto last = make<BlockOperation>();
    queue->addBarrierBlock([&, last] {
        notes.add(10);
        last->start();
    });

    if (!GetParam().isMain)
        queue.reset();
    if (isVirtual())
        world->runUntilIdle();
    else if (GetParam().isMain)
        settle();
    else
        last->waitUntilFinished();

    EXPECT_THAT(notes.numbers(), UnorderedElementsAreArray(numbersBelow(11)));
}

TEST_P(OperationQueueContract, TakesOperationsFromManyThreads)
{
    constexpr auto producers = 4;
    constexpr auto each = 500;
    auto notes = Notes();
    auto threads = std::vector<std::thread>();

    for (int producer = 0; producer < producers; ++producer)
        threads.emplace_back([&, producer] {
            for (int number = 0; number < each; ++number)
                queue->addOperation(notes.adding(producer * each + number));
        });
    for (auto& thread : threads)
        thread.join();
    settle();

    EXPECT_THAT(notes.numbers(), UnorderedElementsAreArray(numbersBelow(producers * each)));
}

INSTANTIATE_TEST_SUITE_P(OperationQueues, OperationQueueContract,
    ::testing::ValuesIn(orrenby::testing::operationQueueCases()), orrenby::testing::nameOfOperationQueue);

} // namespace
