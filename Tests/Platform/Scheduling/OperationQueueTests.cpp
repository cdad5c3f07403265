#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Support/OperationParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::Entries;
using orrenby::testing::KeyRecorder;
using orrenby::testing::ManualOperation;
using orrenby::testing::NamedOperation;
using orrenby::testing::ReadyWhenTold;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Priority = Operation::QueuePriority;

/// Everything here runs on one thread that the test drives.
class OperationQueueTest : public ::testing::Test {
protected:
    Ref<NamedOperation> named(const std::string& name, Priority priority = Priority::Normal) const
    {
        auto operation = make<NamedOperation>(m_ran, name);
        operation->setQueuePriority(priority);
        return operation;
    }

    /// A block that writes its name.
    auto writing(const std::string& name) const
    {
        return [ran = m_ran, name] { ran->push_back(name); };
    }

    const Entries& ran() const { return *m_ran; }

    VirtualWorld m_world;
    OperationQueue m_queue;

private:
    std::shared_ptr<Entries> m_ran = std::make_shared<Entries>();
};

using OperationQueueDeathTest = OperationQueueTest;

} // namespace

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
    const auto early = named("early");
    early->addDependency(gate);
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
    const auto first = named("first");
    first->addDependency(gate);
    m_queue.addOperations({named("second"), first});

    first->setQueuePriority(Priority::High);
    gate->start();
    m_world.runUntilIdle();

    EXPECT_THAT(ran(), ElementsAre("first", "second"));
}

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

TEST_F(OperationQueueTest, ListsWhatHasNotFinishedInTheOrderOfAdding)
{
    const auto executing = make<ManualOperation>();
    const auto high = named("high", Priority::High);
    const auto waiting = named("waiting");
    waiting->addDependency(executing);
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
    const auto operation = named("cancelled");
    operation->addDependency(make<Operation>());
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
    const auto waiting = named("waiting");
    waiting->addDependency(executing);
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

TEST_F(OperationQueueTest, WaitsForTheOperationsOfOtherQueues)
{
    const auto other = OperationQueue();
    const auto first = make<ManualOperation>();
    const auto second = named("second");
    second->addDependency(first);
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
    const auto second = named("second");
    second->addDependency(first);
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
