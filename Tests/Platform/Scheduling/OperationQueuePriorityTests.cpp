#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

#include "Tests/Platform/Scheduling/OperationQueueFixture.hpp"
#include <algorithm>
#include <gmock/gmock.h>
#include <random>
#include <utility>
#include <vector>

using namespace orrenby;
using orrenby::testing::OperationQueueTest;
using orrenby::testing::Priority;
using ::testing::ElementsAre;

TEST_F(OperationQueueTest, BeginsTheHighestPriorityFirstAndEqualOnesInOrder)
{
    m_queue.addOperations({named("normal 1"), named("very low", Priority::VeryLow),
        named("high 1", Priority::High), named("low", Priority::Low), named("very high", Priority::VeryHigh),
        named("normal 2"), named("high 2", Priority::High)});

    m_world.runUntilIdle();

    EXPECT_THAT(
        ran(), ElementsAre("very high", "high 1", "high 2", "normal 1", "normal 2", "low", "very low"));
}

TEST_F(OperationQueueTest, TakesAPriorityBetweenForTheOneTowardsNormal)
{
    m_queue.addOperations(
        {named("-3", Priority(-3)), named("-7", Priority(-7)), named("-100", Priority(-100)),
            named("3", Priority(3)), named("7", Priority(7)), named("100", Priority(100)), named("0")});

    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("100", "7", "-3", "3", "0", "-7", "-100"));
}

TEST_F(OperationQueueTest, BeginsWhatIsReadyBeforeWhatHasAHigherPriorityButIsNot)
{
    const auto first = named("first", Priority::VeryLow);
    const auto second = named("second", Priority::VeryHigh);
    second->addDependency(first);

    m_queue.addOperations({second, first, named("third", Priority::Low)});
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("third", "first", "second"));
}

TEST_F(OperationQueueTest, GoesByTheOrderOfAddingNotOfBecomingReady)
{
    const auto gate = make<Operation>();
    const auto early = namedAfter(gate, "early");
    m_queue.setSuspended(true);
    m_queue.addOperations({early, named("late")});

    gate->start();
    m_queue.setSuspended(false);
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("early", "late"));
}

TEST_F(OperationQueueTest, HeedsAPriorityThatChangesWhileTheOperationWaits)
{
    const auto all = std::vector<Ref<Operation>>{named("a"), named("b"), named("c"), named("d")};
    m_queue.addOperations(all);

    all[2]->setQueuePriority(Priority::High);
    all[0]->setQueuePriority(Priority::Low);
    all[3]->setQueuePriority(Priority::Low);
    all[3]->setQueuePriority(Priority::Normal);
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("c", "b", "d", "a"));
}

TEST_F(OperationQueueTest, HeedsAPriorityThatChangesBeforeTheOperationIsReady)
{
    const auto gate = make<Operation>();
    const auto first = namedAfter(gate, "first");
    m_queue.addOperations({named("second"), first});

    first->setQueuePriority(Priority::High);
    gate->start();
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("first", "second"));
}

TEST_F(OperationQueueTest, RunsManyInTheOrderOfTheirPriorities)
{
    constexpr std::size_t count = 100'000;
    constexpr Priority priorities[] = {
        Priority::VeryLow, Priority::Low, Priority::Normal, Priority::High, Priority::VeryHigh};
    auto random = std::mt19937(7);
    std::vector<std::pair<int, std::size_t>> order;
    m_queue.setSuspended(true);
    for (std::size_t index = 0; index < count; ++index) {
        const auto operation = make<BlockOperation>();
        operation->setQueuePriority(priorities[random() % 5]);
        m_queue.addOperation(operation);
        operation->setQueuePriority(priorities[random() % 5]);
        const auto rank = -static_cast<int>(operation->queuePriority());
        operation->addExecutionBlock([&order, rank, index] { order.emplace_back(rank, index); });
    }

    m_queue.setSuspended(false);
    m_queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(order.size(), count);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}
