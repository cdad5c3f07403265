#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

#include "Tests/Platform/Scheduling/OperationQueueFixture.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using orrenby::testing::ManualOperation;
using orrenby::testing::OperationQueueTest;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(OperationQueueTest, StartsCancelledOperationsSoThatTheyLeave)
{
    const auto operation = make<ManualOperation>();
    m_queue.addOperation(operation);
    m_queue.addOperation(writing("next"));
    m_queue.setMaxConcurrentOperationCount(1);

    operation->cancel();
    m_world.runUntilIdle();

    EXPECT_EQ(operation->startCount, 1);
    EXPECT_TRUE(operation->isFinished());
    EXPECT_THAT(ran(), ElementsAre("next"));
}

TEST_F(OperationQueueTest, StartsCancelledOperationsWhateverTheyDependOn)
{
    const auto operation = namedAfter(make<Operation>(), "cancelled");
    m_queue.addOperation(operation);
    m_world.runUntilIdle();
    EXPECT_EQ(m_queue.operationCount(), 1U);

    operation->cancel();
    m_world.runUntilIdle();

    EXPECT_TRUE(operation->isFinished());
    EXPECT_EQ(m_queue.operationCount(), 0U);
    EXPECT_THAT(ran(), IsEmpty());
}

TEST_F(OperationQueueTest, CancelsEverythingItHas)
{
    const auto executing = make<ManualOperation>();
    const auto waiting = namedAfter(executing, "waiting");
    const auto ready = named("ready");
    m_queue.setMaxConcurrentOperationCount(1);
    m_queue.addOperations({executing, waiting, ready});
    m_world.runUntilIdle();

    m_queue.cancelAllOperations();
    EXPECT_TRUE(executing->isCancelled() && waiting->isCancelled() && ready->isCancelled());
    EXPECT_EQ(m_queue.operationCount(), 3U);
    executing->end();
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), IsEmpty());
    EXPECT_EQ(m_queue.operationCount(), 0U);
}

TEST_F(OperationQueueTest, CancelsNothingThatIsAddedAfterwards)
{
    m_queue.addOperation(writing("a"));
    m_queue.cancelAllOperations();
    m_queue.addOperation(writing("b"));

    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("b"));
}
