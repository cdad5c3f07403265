#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

#include "Tests/Platform/Scheduling/OperationQueueFixture.hpp"
#include <gmock/gmock.h>
#include <vector>

using namespace orrenby;
using orrenby::testing::ManualOperation;
using orrenby::testing::OperationQueueDeathTest;
using orrenby::testing::OperationQueueTest;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(OperationQueueTest, BeginsAsManyAtATimeAsAllowed)
{
    const auto all = std::vector{make<ManualOperation>(), make<ManualOperation>(), make<ManualOperation>()};
    const auto startCounts = [&] {
        return std::vector<int>{all[0]->startCount, all[1]->startCount, all[2]->startCount};
    };
    m_queue.setMaxConcurrentOperationCount(2);
    for (const auto& operation : all)
        m_queue.addOperation(operation);

    m_world.runUntilIdle();
    EXPECT_THAT(startCounts(), ElementsAre(1, 1, 0));
    all[1]->end();
    m_world.runUntilIdle();

    EXPECT_THAT(startCounts(), ElementsAre(1, 1, 1));
    all[0]->end();
    all[2]->end();
}

TEST_F(OperationQueueTest, BeginsNothingWithALimitOfZero)
{
    m_queue.setMaxConcurrentOperationCount(0);
    m_queue.addOperation(writing("a"));
    m_world.runUntilIdle();
    EXPECT_THAT(ran(), IsEmpty());

    m_queue.setMaxConcurrentOperationCount(1);
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("a"));
}

TEST_F(OperationQueueTest, BeginsMoreWhenTheLimitIsRaised)
{
    const auto first = make<ManualOperation>();
    m_queue.setMaxConcurrentOperationCount(1);
    m_queue.addOperation(first);
    m_queue.addOperation(writing("second"));
    m_world.runUntilIdle();
    EXPECT_THAT(ran(), IsEmpty());

    m_queue.setMaxConcurrentOperationCount(OperationQueue::defaultMaxConcurrentOperationCount);
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("second"));
    first->end();
}

TEST_F(OperationQueueDeathTest, ALimitBelowTheDefaultIsAProgrammingError)
{
    EXPECT_DEATH(m_queue.setMaxConcurrentOperationCount(-2),
        "^Fatal error: A queue cannot have a negative limit: file Platform/Scheduling/OperationQueue, line 238");
}
