#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

#include "Tests/Platform/Scheduling/OperationQueueFixture.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <utility>

using namespace orrenby;
using orrenby::testing::ManualOperation;
using orrenby::testing::OperationQueueTest;
using orrenby::testing::ReadyWhenTold;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(OperationQueueTest, WaitsForTheOperationsOfOtherQueues)
{
    const auto other = OperationQueue();
    const auto first = make<ManualOperation>();
    const auto second = namedAfter(first, "second");
    other.addOperation(first);
    m_queue.addOperation(second);

    m_world.runUntilIdle();
    EXPECT_THAT(ran(), IsEmpty());
    first->end();
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("second"));
}

TEST_F(OperationQueueTest, WaitsForOperationsInNoQueue)
{
    const auto first = named("first");
    const auto second = namedAfter(first, "second");
    m_queue.addOperation(second);
    m_world.runUntilIdle();

    first->start();
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("first", "second"));
}

TEST_F(OperationQueueTest, AsksWhatDecidesByItselfWhenItIsReady)
{
    const auto operation = make<ReadyWhenTold>();
    m_queue.addOperation(operation);
    m_world.runUntilIdle();
    EXPECT_FALSE(operation->isFinished());

    operation->allow();
    m_world.runUntilIdle();

    EXPECT_TRUE(operation->isFinished());
}

TEST_F(OperationQueueTest, LeavesAloneWhatIsNoLongerReadyWhenItsTurnComes)
{
    const auto operation = make<ReadyWhenTold>();
    operation->allow();
    m_queue.setMaxConcurrentOperationCount(1);
    m_queue.addOperation(operation);
    m_queue.addOperation(writing("next"));

    operation->allow(false);
    m_world.runUntilIdle();
    EXPECT_FALSE(operation->isFinished());
    EXPECT_THAT(ran(), ElementsAre("next"));
    operation->allow();
    m_world.runUntilIdle();

    EXPECT_TRUE(operation->isFinished());
}

TEST_F(OperationQueueTest, WaitsForADependencyThatIsAddedAfterTheOperation)
{
    const auto other = make<Operation>();
    const auto operation = named("operation");
    m_queue.addOperation(operation);

    operation->addDependency(other);
    m_world.runUntilIdle();
    EXPECT_THAT(ran(), IsEmpty());
    other->start();
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("operation"));
}

TEST_F(OperationQueueTest, TakesOutWhatFinishesBeforeItIsStarted)
{
    const auto operation = make<ManualOperation>();
    m_queue.setSuspended(true);
    m_queue.addOperation(operation);
    m_queue.addOperation(writing("next"));

    operation->end();
    EXPECT_EQ(m_queue.operationCount(), 1U);
    m_queue.setSuspended(false);
    m_world.runUntilIdle();

    EXPECT_EQ(operation->startCount, 0);
    EXPECT_THAT(ran(), ElementsAre("next"));
}

TEST_F(OperationQueueTest, NoticesWhatFinishesInItsStartWithoutTelling)
{
    class Silent : public Operation {
    public:
        void start() override { m_isFinished = true; }
        bool isFinished() const override { return m_isFinished; }

    private:
        bool m_isFinished = false;
    };
    const auto operation = make<Silent>();

    m_queue.addOperation(operation);
    m_world.runUntilIdle();

    EXPECT_EQ(m_queue.operationCount(), 0U);
}

TEST_F(OperationQueueTest, LetsObserversOfAnEndAddTheNextOperation)
{
    class Adder final : public KeyValueObserver {
    public:
        Adder(OperationQueue queue, Ref<Operation> next)
            : m_queue(std::move(queue))
            , m_next(std::move(next))
        {}
        void observeValue(const std::string&, ObservableObject&, const KeyValueChange&) override
        {
            m_queue.addOperation(m_next);
        }

    private:
        OperationQueue m_queue;
        Ref<Operation> m_next;
    };
    const auto first = named("first");
    const auto adder = std::make_shared<Adder>(m_queue, named("second"));
    first->addObserver(adder, "isFinished");

    m_queue.addOperation(first);
    m_queue.waitUntilAllOperationsAreFinished();

    EXPECT_THAT(ran(), ElementsAre("first", "second"));
}
