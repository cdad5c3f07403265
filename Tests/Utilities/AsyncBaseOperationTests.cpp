#include "Orrenby/Utilities/AsyncBaseOperation.hpp"

#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Support/OperationParts.hpp"
#include <atomic>
#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <thread>
#include <unordered_set>
#include <vector>

using namespace orrenby;
using orrenby::testing::Entries;
using orrenby::testing::KeyRecorder;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

//! [Loading in an operation]
class Loading : public AsyncBaseOperation {
public:
    explicit Loading(DispatchQueue network)
        : m_network(std::move(network))
    {}

    void execute(Completion completion) override
    {
        // The answer takes two seconds. If nobody wants the operation any more, it is gone by then.
        m_network.asyncAfter(2, [this, weak = weak_from_this(), completion] {
            if (const auto self = weak.lock())
                answer = "42";
            completion();
        });
    }

    std::string answer;

private:
    DispatchQueue m_network;
};
//! [Loading in an operation]

/// Leaves its completions to the test.
class Pending : public AsyncBaseOperation {
public:
    void execute(Completion completion) override { completions.push_back(std::move(completion)); }

    void complete() { completions.back()(); }

    std::vector<Completion> completions;
};

/// Is done at once.
class Immediate : public AsyncBaseOperation {
public:
    void execute(Completion completion) override
    {
        ++executions;
        completion();
    }

    int executions = 0;
};

/// Its own idea of finishing is not to.
class Unfinishing : public Pending {
public:
    void finish() override { ++finishCalls; }

    int finishCalls = 0;
};

const std::vector<std::string> bothStates = {"isExecuting", "isFinished"};

/// Executing, finished.
std::vector<bool> states(const AsyncBaseOperation& operation)
{
    return {operation.isExecuting(), operation.isFinished()};
}

} // namespace

TEST(AsyncBaseOperation, KeepsItsPlaceInAQueueUntilItsWorkIsDone)
{
    auto world = VirtualWorld();
    const auto queue = OperationQueue();
    const auto loading = make<Loading>(DispatchQueue::serial("network"));

    queue.addOperation(loading);
    world.advance(1);
    EXPECT_EQ(queue.operationCount(), 1U);
    world.advance(1);

    EXPECT_EQ(loading->answer, "42");
    EXPECT_EQ(queue.operationCount(), 0U);
}

TEST(AsyncBaseOperation, IsReadyAtFirstAndAlwaysAsynchronous)
{
    const auto operation = make<Pending>();

    EXPECT_THAT(states(*operation), ElementsAre(false, false));
    EXPECT_TRUE(operation->isReady());
    EXPECT_TRUE(operation->isAsynchronous());
}

TEST(AsyncBaseOperation, ExecutesFromItsStartUntilItsCompletion)
{
    const auto operation = make<Pending>();

    operation->start();
    EXPECT_THAT(states(*operation), ElementsAre(true, false));
    operation->complete();

    EXPECT_THAT(states(*operation), ElementsAre(false, true));
}

TEST(AsyncBaseOperation, TellsOfANormalRunInNestedOrder)
{
    const auto operation = make<Pending>();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    operation->start();
    EXPECT_THAT(recorder->entries(), ElementsAre("will isExecuting", "did isExecuting"));
    recorder->clear();
    operation->complete();

    EXPECT_THAT(recorder->entries(),
        ElementsAre("will isFinished", "will isExecuting", "did isExecuting", "did isFinished"));
}

TEST(AsyncBaseOperation, TellsTheOldStatesBeforeAndTheNewOnesAfterAStep)
{
    class StateRecorder final : public KeyValueObserver {
    public:
        void observeValue(
            const std::string& key, ObservableObject& object, const KeyValueChange& change) override
        {
            const auto& operation = static_cast<AsyncBaseOperation&>(object);
            entries.push_back((change.isPrior ? "will " : "did ") + key
                + (operation.isExecuting() ? " E" : " -") + (operation.isFinished() ? "F" : "-"));
        }
        Entries entries;
    };
    const auto operation = make<Pending>();
    const auto recorder = std::make_shared<StateRecorder>();
    for (const auto& key : bothStates)
        operation->addObserver(recorder, key, {.prior = true});

    operation->start();
    operation->complete();

    EXPECT_THAT(recorder->entries,
        ElementsAre("will isExecuting --", "did isExecuting E-", "will isFinished E-", "will isExecuting E-",
            "did isExecuting -F", "did isFinished -F"));
}

TEST(AsyncBaseOperation, CancelledBeforeItsStartFinishesWithoutExecuting)
{
    const auto operation = make<Pending>();
    operation->cancel();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    operation->start();

    EXPECT_THAT(recorder->entries(), ElementsAre("will isFinished", "did isFinished"));
    EXPECT_THAT(operation->completions, IsEmpty());
    EXPECT_THAT(states(*operation), ElementsAre(false, true));
}

TEST(AsyncBaseOperation, CancelledWhileExecutingGoesOnUntilItsCompletion)
{
    const auto operation = make<Pending>();
    operation->start();

    operation->cancel();
    EXPECT_THAT(states(*operation), ElementsAre(true, false));
    operation->complete();

    EXPECT_THAT(states(*operation), ElementsAre(false, true));
    EXPECT_TRUE(operation->isCancelled());
}

TEST(AsyncBaseOperation, CancelAfterFinishingHasNoEffect)
{
    const auto operation = make<Immediate>();
    operation->start();

    operation->cancel();

    EXPECT_FALSE(operation->isCancelled());
}

TEST(AsyncBaseOperation, TellsOnceWhenItsCompletionIsCalledTwice)
{
    const auto operation = make<Pending>();
    operation->start();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    operation->complete();
    operation->complete();

    EXPECT_THAT(recorder->entries(),
        ElementsAre("will isFinished", "will isExecuting", "did isExecuting", "did isFinished"));
}

TEST(AsyncBaseOperation, FinishesThroughACopyOfItsCompletion)
{
    const auto operation = make<Pending>();
    operation->start();
    auto copies = std::vector(2, operation->completions.back());
    const auto passedOn = std::function<void()>(copies[0]);

    passedOn();

    EXPECT_TRUE(operation->isFinished());
}

TEST(AsyncBaseOperation, FinishesByFinish)
{
    const auto operation = make<Pending>();
    operation->start();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    operation->finish();
    operation->finish();
    operation->complete();

    EXPECT_THAT(recorder->entries(),
        ElementsAre("will isFinished", "will isExecuting", "did isExecuting", "did isFinished"));
}

TEST(AsyncBaseOperation, FinishedBeforeItsStartTellsNothingAtTheStartYetExecutes)
{
    const auto operation = make<Pending>();
    const auto recorder = KeyRecorder::of(*operation, bothStates);
    operation->finish();
    EXPECT_THAT(recorder->entries(), ElementsAre("will isFinished", "did isFinished"));
    recorder->clear();

    operation->start();
    operation->complete();

    EXPECT_THAT(recorder->entries(), IsEmpty());
    EXPECT_EQ(operation->completions.size(), 1U);
    EXPECT_THAT(states(*operation), ElementsAre(false, true));
}

TEST(AsyncBaseOperation, StartedWhileExecutingTellsNothingYetExecutesAgain)
{
    const auto operation = make<Pending>();
    operation->start();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    operation->start();

    EXPECT_THAT(recorder->entries(), IsEmpty());
    EXPECT_EQ(operation->completions.size(), 2U);
}

TEST(AsyncBaseOperation, MayCompleteBeforeExecuteReturns)
{
    const auto operation = make<Immediate>();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    operation->start();

    EXPECT_THAT(recorder->entries(),
        ElementsAre("will isExecuting", "did isExecuting", "will isFinished", "will isExecuting",
            "did isExecuting", "did isFinished"));
}

TEST(AsyncBaseOperation, CompletesWithoutAnOverriddenFinish)
{
    const auto operation = make<Unfinishing>();
    operation->start();

    operation->finish();
    EXPECT_FALSE(operation->isFinished());
    operation->complete();

    EXPECT_TRUE(operation->isFinished());
    EXPECT_EQ(operation->finishCalls, 1);
}

TEST(AsyncBaseOperation, IsNotKeptByItsCompletion)
{
    auto operation = make<Pending>();
    operation->start();
    const auto completion = operation->completions.back();
    const auto weak = WeakRef<Pending>(operation);

    operation.reset();

    EXPECT_TRUE(weak.expired());
}

TEST(AsyncBaseOperation, IsNotMissedByACompletionThatIsCalledWhenItIsGone)
{
    auto operation = make<Pending>();
    const auto recorder = KeyRecorder::of(*operation, bothStates);
    operation->start();
    const auto completion = operation->completions.back();
    operation.reset();
    recorder->clear();

    completion();

    EXPECT_THAT(recorder->entries(), IsEmpty());
}

TEST(AsyncBaseOperation, FinishedFromAnObserverOfItsStartStillExecutes)
{
    class Finisher final : public KeyValueObserver {
    public:
        void observeValue(const std::string&, ObservableObject& object, const KeyValueChange&) override
        {
            static_cast<AsyncBaseOperation&>(object).finish();
        }
    };
    const auto operation = make<Pending>();
    const auto finisher = std::make_shared<Finisher>();
    operation->addObserver(finisher, "isExecuting");

    operation->start();

    EXPECT_THAT(states(*operation), ElementsAre(false, true));
    EXPECT_EQ(operation->completions.size(), 1U);
}

TEST(AsyncBaseOperationDeathTest, StartWithoutOverriddenExecuteIsAProgrammingError)
{
    const auto operation = make<AsyncBaseOperation>();

    EXPECT_DEATH(operation->start(),
        "^Fatal error: Method in abstract base class must be overridden: "
        "file Utilities/AsyncBaseOperation, line 58");
}

TEST(AsyncBaseOperation, WithoutOverriddenExecuteMayBeCancelled)
{
    const auto operation = make<AsyncBaseOperation>();
    operation->cancel();

    operation->start();

    EXPECT_TRUE(operation->isFinished());
}

TEST(AsyncBaseOperationState, IsComparedAndHashedByItsCase)
{
    using State = AsyncBaseOperation::State;
    const auto all = std::unordered_set{State::ready, State::executing, State::finished, State::ready};

    EXPECT_EQ(all.size(), 3U);
    EXPECT_EQ(static_cast<int>(State::ready), 0);
    EXPECT_EQ(static_cast<int>(State::finished), 2);
}

TEST(AsyncBaseOperationInAQueue, TellsOfANormalRunInNestedOrder)
{
    auto world = VirtualWorld();
    const auto queue = OperationQueue();
    const auto operation = make<Pending>();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    queue.addOperation(operation);
    world.runUntilIdle();
    operation->complete();

    EXPECT_THAT(recorder->entries(),
        ElementsAre("will isExecuting", "did isExecuting", "will isFinished", "will isExecuting",
            "did isExecuting", "did isFinished"));
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
