#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

#include "Tests/Platform/Scheduling/OperationQueueFixture.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using orrenby::testing::OperationQueueDeathTest;
using orrenby::testing::OperationQueueTest;
using ::testing::ElementsAre;

TEST_F(OperationQueueTest, IsEmptyWhenTheWaitForItIsOver)
{
    const auto operation = named("a");
    m_queue.addOperation(operation);

    operation->waitUntilFinished();

    EXPECT_EQ(m_queue.operationCount(), 0U);
}

TEST_F(OperationQueueTest, ReturnsFromAddingWhenEverythingAddedHasFinished)
{
    m_queue.addOperation(writing("before"));

    m_queue.addOperations({named("a"), named("b")}, {.waitUntilFinished = true});

    EXPECT_THAT(ran(), ElementsAre("before", "a", "b"));
}

TEST_F(OperationQueueTest, AddsNoOperationsFromAnEmptyList)
{
    m_queue.addOperations({}, {.waitUntilFinished = true});

    EXPECT_EQ(m_queue.operationCount(), 0U);
}

TEST_F(OperationQueueTest, IsWaitedForByAnOperationOfAnotherQueue)
{
    const auto other = OperationQueue();
    other.addOperation([&] {
        m_queue.addOperation(writing("inner"));
        m_queue.waitUntilAllOperationsAreFinished();
        writing("outer")();
    });

    other.waitUntilAllOperationsAreFinished();

    EXPECT_THAT(ran(), ElementsAre("inner", "outer"));
}

TEST_F(OperationQueueTest, LetsItsOperationsWaitForEachOther)
{
    const auto later = named("later");
    m_queue.addOperation([&] {
        later->waitUntilFinished();
        writing("sooner")();
    });
    m_queue.addOperation(later);

    m_queue.waitUntilAllOperationsAreFinished();

    EXPECT_THAT(ran(), ElementsAre("later", "sooner"));
}

TEST_F(OperationQueueDeathTest, AnOperationThatWaitsForItsOwnQueueIsAProgrammingError)
{
    m_queue.addOperation([&] { m_queue.waitUntilAllOperationsAreFinished(); });

    EXPECT_DEATH(m_world.runUntilIdle(),
        "^Fatal error: An operation waits for its own queue to become empty: "
        "file Platform/Scheduling/OperationQueue, line 184");
}
