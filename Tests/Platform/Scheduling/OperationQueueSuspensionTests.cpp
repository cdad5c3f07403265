#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

#include "Tests/Platform/Scheduling/OperationQueueFixture.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using orrenby::testing::ManualOperation;
using orrenby::testing::OperationQueueTest;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(OperationQueueTest, BeginsNothingWhileItIsSuspended)
{
    const auto executing = make<ManualOperation>();
    m_queue.addOperation(executing);
    m_world.runUntilIdle();

    m_queue.setSuspended(true);
    m_queue.addOperation(writing("a"));
    executing->end();
    m_world.runUntilIdle();
    EXPECT_THAT(ran(), IsEmpty());
    EXPECT_TRUE(m_queue.isSuspended());
    EXPECT_EQ(m_queue.operationCount(), 1U);
    m_queue.setSuspended(false);
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("a"));
}

TEST_F(OperationQueueTest, SuspendedBetweenAddingAndBeginningDoesNotBegin)
{
    m_queue.addOperation(writing("a"));
    m_queue.setSuspended(true);
    m_world.runUntilIdle();
    EXPECT_THAT(ran(), IsEmpty());

    m_queue.setSuspended(false);
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("a"));
}

TEST_F(OperationQueueTest, SuspendedByAnOperationStopsAfterIt)
{
    m_queue.addOperation([&] { m_queue.setSuspended(true); });
    m_queue.addOperation(writing("b"));
    m_world.runUntilIdle();
    EXPECT_THAT(ran(), IsEmpty());

    m_queue.setSuspended(false);
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("b"));
}

TEST_F(OperationQueueTest, SuspendedIsWaitedForUntilItIsResumed)
{
    m_queue.setSuspended(true);
    m_queue.addOperation(writing("a"));
    DispatchQueue::global().asyncAfter(3600, [&] { m_queue.setSuspended(false); });

    m_queue.waitUntilAllOperationsAreFinished();

    EXPECT_THAT(ran(), ElementsAre("a"));
    EXPECT_EQ(m_world.elapsed(), 3600);
}
