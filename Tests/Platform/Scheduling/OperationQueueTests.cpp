#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

#include "Tests/Platform/Scheduling/OperationQueueFixture.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace orrenby;
using orrenby::testing::ManualOperation;
using orrenby::testing::OperationQueueDeathTest;
using orrenby::testing::OperationQueueTest;
using orrenby::testing::Priority;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(OperationQueue, RunsWhatWaitsForOthersAfterThem)
{
    auto world = VirtualWorld();
    //! [Running operations]
    std::string text;
    const auto queue = OperationQueue();
    const auto load = make<BlockOperation>([&] { text += "loaded"; });
    const auto show = make<BlockOperation>([&] { text += ", shown"; });
    show->addDependency(load);

    queue.addOperation(show);
    queue.addOperation(load);
    queue.waitUntilAllOperationsAreFinished();
    //! [Running operations]

    EXPECT_EQ(text, "loaded, shown");
}

TEST_F(OperationQueueTest, IsEmptyAndGoingAtFirst)
{
    EXPECT_EQ(m_queue.operationCount(), 0U);
    EXPECT_THAT(m_queue.operations(), IsEmpty());
    EXPECT_FALSE(m_queue.isSuspended());
    EXPECT_EQ(m_queue.maxConcurrentOperationCount(), OperationQueue::defaultMaxConcurrentOperationCount);
    EXPECT_EQ(m_queue.underlyingQueue(), std::nullopt);
    EXPECT_EQ(m_queue.name(), "");
}

TEST_F(OperationQueueTest, RunsNothingBeforeAddingReturns)
{
    m_queue.addOperation(writing("a"));
    EXPECT_THAT(ran(), IsEmpty());

    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("a"));
}

TEST_F(OperationQueueTest, RunsInTheOrderOfAdding)
{
    for (const auto* name : {"a", "b", "c"})
        m_queue.addOperation(writing(name));
    m_queue.addOperation(named("d"));

    m_queue.waitUntilAllOperationsAreFinished();

    EXPECT_THAT(ran(), ElementsAre("a", "b", "c", "d"));
}

TEST_F(OperationQueueTest, RunsWhatItsOperationsAdd)
{
    m_queue.addOperation([&] {
        m_queue.addOperation(writing("inner"));
        writing("outer")();
    });
    m_queue.addOperation(writing("next"));

    m_queue.waitUntilAllOperationsAreFinished();

    EXPECT_THAT(ran(), ElementsAre("outer", "next", "inner"));
}

TEST_F(OperationQueueTest, HasAName)
{
    m_queue.setName("uploads");

    EXPECT_EQ(m_queue.name(), "uploads");
}

TEST_F(OperationQueueTest, IsTheSameInAllCopies)
{
    const auto copy = m_queue;

    copy.setName("uploads");

    EXPECT_EQ(m_queue.name(), "uploads");
    EXPECT_EQ(copy, m_queue);
    EXPECT_EQ(copy.sharedIdentity(), m_queue.sharedIdentity());
    EXPECT_NE(OperationQueue(), m_queue);
}

TEST_F(OperationQueueTest, ListsWhatHasNotFinishedInTheOrderOfAdding)
{
    const auto executing = make<ManualOperation>();
    const auto high = named("high", Priority::High);
    const auto waiting = namedAfter(executing, "waiting");
    m_queue.addOperations({executing, waiting, high});
    EXPECT_THAT(m_queue.operations(), ElementsAre(executing, waiting, high));

    m_world.runUntilIdle();
    EXPECT_THAT(m_queue.operations(), ElementsAre(executing, waiting));
    EXPECT_EQ(m_queue.operationCount(), 2U);
    executing->end();
    m_world.runUntilIdle();

    EXPECT_EQ(m_queue.operationCount(), 0U);
}

TEST_F(OperationQueueTest, KeepsAnOperationUntilItHasFinished)
{
    auto operation = make<ManualOperation>();
    auto* const bare = operation.get();
    const auto weak = WeakRef<ManualOperation>(operation);
    m_queue.addOperation(std::move(operation));

    m_world.runUntilIdle();
    EXPECT_FALSE(weak.expired());
    bare->end();

    EXPECT_TRUE(weak.expired());
}

TEST_F(OperationQueueTest, GoesOnWithoutHandles)
{
    auto queue = std::make_unique<OperationQueue>();
    queue->setMaxConcurrentOperationCount(1);
    queue->addOperation(writing("a"));
    queue->addOperation(writing("b"));

    queue.reset();
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("a", "b"));
}

TEST_F(OperationQueueTest, MayLoseItsLastHandleInItsOwnWork)
{
    auto queue = std::make_unique<OperationQueue>();
    queue->addOperation([&] {
        queue.reset();
        writing("a")();
    });
    queue->addOperation(writing("b"));

    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("a", "b"));
}

TEST_F(OperationQueueTest, DropsWhatATestLeavesBehind)
{
    const auto token = std::make_shared<int>();
    {
        auto world = VirtualWorld();
        const auto serial = OperationQueue();
        serial.setMaxConcurrentOperationCount(1);
        const auto queue = OperationQueue();
        queue.setUnderlyingQueue(DispatchQueue::serial("underlying"));
        const auto waiting = make<BlockOperation>([token] {});
        waiting->addDependency(make<Operation>());
        serial.addOperation([token] {});
        serial.addOperation([token] {});
        serial.addOperation(waiting);
        queue.addOperation([token] {});
        queue.addBarrierBlock([token] {});
    }

    EXPECT_EQ(token.use_count(), 1);
}

TEST_F(OperationQueueDeathTest, AddingAnOperationTwiceIsAProgrammingError)
{
    const auto operation = named("a");
    m_queue.addOperation(operation);
    const auto other = OperationQueue();
    const auto message = "^Fatal error: An operation cannot be added to a queue twice: "
                         "file Platform/Scheduling/OperationQueue, line 50";

    EXPECT_DEATH(m_queue.addOperation(operation), message);
    EXPECT_DEATH(other.addOperation(operation), message);
}

TEST_F(OperationQueueDeathTest, AddingAFinishedOperationIsAProgrammingError)
{
    const auto operation = named("a");
    operation->start();

    EXPECT_DEATH(m_queue.addOperation(operation),
        "^Fatal error: An operation that has finished cannot be added to a queue: "
        "file Platform/Scheduling/OperationQueue, line 46");
}

TEST_F(OperationQueueDeathTest, AddingAnExecutingOperationIsAProgrammingError)
{
    const auto operation = make<ManualOperation>();
    operation->start();

    EXPECT_DEATH(m_queue.addOperation(operation),
        "^Fatal error: An operation that is executing cannot be added to a queue: "
        "file Platform/Scheduling/OperationQueue, line 48");
}

TEST_F(OperationQueueDeathTest, AddingNoOperationIsAProgrammingError)
{
    EXPECT_DEATH(m_queue.addOperation(Ref<Operation>()),
        "^Fatal error: There is no operation to add: file Platform/Scheduling/OperationQueue, line 44");
}

TEST_F(OperationQueueTest, ReportsInTheDiagnosticBuildWhoAddsOperations)
{
    static std::vector<std::pair<std::string, std::string>> scheduled;
    scheduled.clear();
    const auto operation = make<Operation>();
    Trace::onEvent([](const Trace::Event& event) {
        if (event.kind == Trace::Kind::Schedule)
            scheduled.emplace_back(event.subject, event.site.function());
    });

    m_queue.addOperation(operation);
    m_queue.addOperation([] {});
    m_queue.addOperations({make<Operation>()});
    m_queue.addBarrierBlock([] {});
    Trace::onEvent(nullptr);

#ifdef ORRENBY_DIAGNOSTICS
    EXPECT_EQ(scheduled, std::vector(4, std::pair<std::string, std::string>("OperationQueue", "TestBody")));
#else
    EXPECT_THAT(scheduled, IsEmpty());
#endif
}
