#include "Orrenby/Utilities/AsyncBaseOperation.hpp"

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Utilities/AsyncBaseOperationParts.hpp"
#include <gmock/gmock.h>
#include <thread>
#include <utility>
#include <vector>

using namespace orrenby;
using orrenby::testing::bothStates;
using orrenby::testing::Immediate;
using orrenby::testing::KeyRecorder;
using orrenby::testing::normalRun;
using orrenby::testing::Pending;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(AsyncBaseOperationInAQueue, TellsOfANormalRunInNestedOrder)
{
    auto world = VirtualWorld();
    const auto queue = OperationQueue();
    const auto operation = make<Pending>();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    queue.addOperation(operation);
    world.runUntilIdle();
    operation->complete();

    EXPECT_EQ(recorder->entries(), normalRun);
    EXPECT_EQ(queue.operationCount(), 0U);
}

TEST(AsyncBaseOperationInAQueue, CancelledBeforeItsStartLeavesWithoutExecuting)
{
    auto world = VirtualWorld();
    const auto queue = OperationQueue();
    const auto operation = make<Pending>();
    const auto recorder = KeyRecorder::of(*operation, bothStates);
    queue.addOperation(operation);

    operation->cancel();
    world.runUntilIdle();

    EXPECT_THAT(recorder->entries(), ElementsAre("will isFinished", "did isFinished"));
    EXPECT_THAT(operation->completions, IsEmpty());
    EXPECT_EQ(queue.operationCount(), 0U);
}

TEST(AsyncBaseOperationInAQueue, FinishedBeforeItsStartLeavesWithoutBeingStarted)
{
    auto world = VirtualWorld();
    const auto queue = OperationQueue();
    const auto operation = make<Pending>();
    queue.setSuspended(true);
    queue.addOperation(operation);

    operation->finish();
    EXPECT_EQ(queue.operationCount(), 0U);
    queue.setSuspended(false);
    world.runUntilIdle();

    EXPECT_THAT(operation->completions, IsEmpty());
}

TEST(AsyncBaseOperationInAQueue, KeepsTheNextOneWaitingInASerialQueue)
{
    auto world = VirtualWorld();
    const auto queue = OperationQueue();
    queue.setMaxConcurrentOperationCount(1);
    const auto first = make<Pending>();
    const auto second = make<Pending>();
    queue.addOperations({first, second});

    world.runUntilIdle();
    EXPECT_THAT(second->completions, IsEmpty());
    first->complete();
    first->complete();
    world.runUntilIdle();

    EXPECT_TRUE(second->isExecuting());
    second->complete();
}

TEST(AsyncBaseOperationInAQueue, KeepsItsDependentsWaiting)
{
    auto world = VirtualWorld();
    const auto queue = OperationQueue();
    const auto first = make<Pending>();
    const auto second = make<Immediate>();
    second->addDependency(first);
    queue.addOperations({second, first});

    world.runUntilIdle();
    EXPECT_EQ(second->executions, 0);
    first->complete();
    world.runUntilIdle();

    EXPECT_EQ(second->executions, 1);
}

TEST(AsyncBaseOperationInAQueue, IsKeptByTheQueueUntilItHasFinished)
{
    auto world = VirtualWorld();
    const auto queue = OperationQueue();
    auto operation = make<Pending>();
    const auto weak = WeakRef<Pending>(operation);
    queue.addOperation(operation);
    world.runUntilIdle();
    const auto completion = operation->completions.back();

    operation.reset();
    EXPECT_FALSE(weak.expired());
    completion();

    EXPECT_TRUE(weak.expired());
}

TEST(AsyncBaseOperationInAQueue, CallsItsCompletionBlockOnce)
{
    auto world = VirtualWorld();
    const auto queue = OperationQueue();
    const auto operation = make<Immediate>();
    int calls = 0;
    operation->setCompletionBlock([&] { ++calls; });

    queue.addOperation(operation);
    queue.waitUntilAllOperationsAreFinished();
    world.runUntilIdle();
    operation->finish();
    world.runUntilIdle();

    EXPECT_EQ(calls, 1);
}

TEST(AsyncBaseOperationInAQueue, MayFillItsQueueFromItsExecution)
{
    class Repeated : public AsyncBaseOperation {
    public:
        Repeated(OperationQueue queue, int& left)
            : m_queue(std::move(queue))
            , m_left(left)
        {}
        void execute(Completion completion) override
        {
            if (--m_left > 0)
                m_queue.addOperation(make<Repeated>(m_queue, m_left));
            completion();
        }

    private:
        OperationQueue m_queue;
        int& m_left;
    };
    auto world = VirtualWorld();
    int left = 10'000;
    const auto queue = OperationQueue();
    queue.setMaxConcurrentOperationCount(1);
    queue.addOperation(make<Repeated>(queue, left));

    queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(left, 0);
}

TEST(AsyncBaseOperationThreads, FinishOnOthersThanTheyWereStartedOn)
{
    const auto queue = OperationQueue();
    queue.setMaxConcurrentOperationCount(2);
    class Handed : public AsyncBaseOperation {
    public:
        void execute(Completion completion) override
        {
            DispatchQueue::global().async([completion] { completion(); });
        }
    };
    std::vector<Ref<Operation>> all;
    for (int index = 0; index < 500; ++index)
        all.push_back(make<Handed>());
    for (std::size_t index = 1; index < all.size(); index += 2)
        all[index]->addDependency(all[index - 1]);

    queue.addOperations(all, {.waitUntilFinished = true});
    queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(queue.operationCount(), 0U);
}

TEST(AsyncBaseOperationThreads, LeaveTheirQueueOnceWhenTwoThreadsFinishThem)
{
    const auto queue = OperationQueue();
    for (int round = 0; round < 200; ++round) {
        const auto operation = make<Pending>();
        queue.addOperation(operation);
        auto other = std::thread([&] { operation->finish(); });
        operation->finish();
        operation->waitUntilFinished();
        other.join();
    }

    queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(queue.operationCount(), 0U);
}
