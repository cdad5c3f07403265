#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

#include "Tests/Platform/Scheduling/OperationQueueFixture.hpp"
#include <gmock/gmock.h>
#include <optional>
#include <vector>

using namespace orrenby;
using orrenby::testing::OperationQueueDeathTest;
using orrenby::testing::OperationQueueTest;
using ::testing::ElementsAre;

TEST_F(OperationQueueTest, IsCurrentInItsOperations)
{
    std::vector<bool> seen;
    m_queue.addOperation([&] {
        seen = {
            OperationQueue::current() == m_queue, m_queue.isCurrent(), OperationQueue::main().isCurrent()};
    });

    m_world.runUntilIdle();

    EXPECT_THAT(seen, ElementsAre(true, true, false));
    EXPECT_FALSE(m_queue.isCurrent());
}

TEST_F(OperationQueueTest, IsCurrentInWhatItsOperationsStartByHand)
{
    auto seen = std::optional<OperationQueue>();
    m_queue.addOperation([&] { make<BlockOperation>([&] { seen = OperationQueue::current(); })->start(); });

    m_world.runUntilIdle();

    EXPECT_EQ(seen, m_queue);
}

TEST_F(OperationQueueTest, IsNotCurrentInWhatRunsWhileItsOperationWaits)
{
    const auto other = OperationQueue();
    auto seen = std::optional<OperationQueue>();
    m_queue.addOperation([&] {
        other.addOperation([&] { seen = OperationQueue::current(); });
        other.waitUntilAllOperationsAreFinished();
    });

    m_world.runUntilIdle();

    EXPECT_EQ(seen, other);
}

TEST_F(OperationQueueTest, RunsItsOperationsOnTheUnderlyingQueueAmongItsOtherWork)
{
    const auto underlying = DispatchQueue::serial("underlying");
    m_queue.setUnderlyingQueue(underlying);
    auto isThere = false;
    m_queue.addOperation([&] {
        isThere = underlying.isCurrent() && m_queue.isCurrent();
        writing("operation 1")();
    });
    underlying.async(writing("work"));
    m_queue.addOperation(writing("operation 2"));

    m_world.runUntilIdle();

    EXPECT_TRUE(isThere);
    EXPECT_THAT(ran(), ElementsAre("operation 1", "work", "operation 2"));
    EXPECT_EQ(m_queue.underlyingQueue(), underlying);
}

TEST_F(OperationQueueDeathTest, ChangingTheUnderlyingQueueOfABusyQueueIsAProgrammingError)
{
    m_queue.addOperation(writing("a"));

    EXPECT_DEATH(m_queue.setUnderlyingQueue(DispatchQueue::global()),
        "^Fatal error: The underlying queue cannot change while there are operations: "
        "file Platform/Scheduling/OperationQueue, line 258");
}
