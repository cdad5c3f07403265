#include "Orrenby/Platform/Scheduling/Operation.hpp"

#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Support/OperationParts.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::Entries;
using orrenby::testing::KeyRecorder;
using orrenby::testing::ManualOperation;
using orrenby::testing::NamedOperation;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

//! [Doing work in an operation]
class Sum : public Operation {
public:
    explicit Sum(std::vector<int> numbers)
        : m_numbers(std::move(numbers))
    {}

    void main() override
    {
        for (const int number : m_numbers) {
            if (isCancelled())
                return;
            result += number;
        }
    }

    int result = 0;

private:
    std::vector<int> m_numbers;
};
//! [Doing work in an operation]

/// Ready, cancelled, executing, finished.
std::vector<bool> states(const Operation& operation)
{
    return {operation.isReady(), operation.isCancelled(), operation.isExecuting(), operation.isFinished()};
}

const std::vector<std::string> allStates = {"isReady", "isCancelled", "isExecuting", "isFinished"};

} // namespace

TEST(Operation, IsReadyAndNothingElseAtFirst)
{
    const auto operation = make<Operation>();

    EXPECT_THAT(states(*operation), ElementsAre(true, false, false, false));
    EXPECT_FALSE(operation->isAsynchronous());
    EXPECT_THAT(operation->dependencies(), IsEmpty());
    EXPECT_EQ(operation->queuePriority(), Operation::QueuePriority::Normal);
    EXPECT_EQ(operation->name(), "");
}

TEST(Operation, DoesItsWorkOnTheThreadThatStartsIt)
{
    const auto sum = make<Sum>(std::vector{1, 2, 3});

    sum->start();

    EXPECT_EQ(sum->result, 6);
    EXPECT_THAT(states(*sum), ElementsAre(true, false, false, true));
}

TEST(Operation, WorksOnTheStackWithoutQueue)
{
    auto sum = Object<Sum>(std::vector{1, 2, 3});

    sum.start();

    EXPECT_EQ(sum.result, 6);
}

TEST(Operation, TellsOfItsStatesAroundItsWork)
{
    const auto entries = std::make_shared<Entries>();
    const auto operation = make<NamedOperation>(entries, "main");
    const auto recorder = std::make_shared<KeyRecorder>(entries);
    recorder->observe(*operation, allStates);

    operation->start();

    EXPECT_THAT(*entries,
        ElementsAre("will isExecuting", "did isExecuting", "main", "will isFinished", "will isExecuting",
            "did isExecuting", "did isFinished"));
}

TEST(Operation, IsExecutingDuringItsWork)
{
    std::vector<bool> seen;
    auto operation = Ref<BlockOperation>();
    operation = make<BlockOperation>([&] { seen = states(*operation); });

    operation->start();

    EXPECT_THAT(seen, ElementsAre(true, false, true, false));
}

TEST(Operation, StartedAfterItHasFinishedDoesNothing)
{
    const auto entries = std::make_shared<Entries>();
    const auto operation = make<NamedOperation>(entries, "main");
    operation->start();
    const auto recorder = KeyRecorder::of(*operation, allStates);

    operation->start();

    EXPECT_THAT(*entries, ElementsAre("main"));
    EXPECT_THAT(recorder->entries(), IsEmpty());
}

TEST(Operation, CancelledBeforeItsStartFinishesWithoutExecuting)
{
    const auto entries = std::make_shared<Entries>();
    const auto operation = make<NamedOperation>(entries, "main");
    operation->cancel();
    const auto recorder = std::make_shared<KeyRecorder>(entries);
    recorder->observe(*operation, allStates);

    operation->start();

    EXPECT_THAT(*entries, ElementsAre("will isFinished", "did isFinished"));
    EXPECT_THAT(states(*operation), ElementsAre(true, true, false, true));
}

TEST(Operation, CancelledWhileExecutingGoesOnUntilItLooks)
{
    auto operation = Ref<BlockOperation>();
    std::vector<bool> seen;
    operation = make<BlockOperation>([&] {
        operation->cancel();
        seen = states(*operation);
    });

    operation->start();

    EXPECT_THAT(seen, ElementsAre(true, true, true, false));
    EXPECT_TRUE(operation->isFinished());
}

TEST(Operation, TellsOnceThatItIsCancelled)
{
    const auto operation = make<Operation>();
    const auto recorder = KeyRecorder::of(*operation, allStates);

    operation->cancel();
    operation->cancel();

    EXPECT_THAT(recorder->entries(), ElementsAre("will isCancelled", "did isCancelled"));
}

TEST(Operation, CancelAfterFinishingHasNoEffect)
{
    const auto operation = make<Operation>();
    operation->start();
    const auto recorder = KeyRecorder::of(*operation, allStates);

    operation->cancel();

    EXPECT_FALSE(operation->isCancelled());
    EXPECT_THAT(recorder->entries(), IsEmpty());
}

TEST(Operation, CancelledWhileItIsNotReadyBecomesReady)
{
    const auto operation = make<Operation>();
    operation->addDependency(make<Operation>());
    const auto recorder = KeyRecorder::of(*operation, allStates);

    operation->cancel();

    EXPECT_THAT(recorder->entries(),
        ElementsAre("will isCancelled", "will isReady", "did isReady", "did isCancelled"));
    EXPECT_THAT(states(*operation), ElementsAre(true, true, false, false));
}

TEST(Operation, CancelFromAnObserverOfItsCancellationHasNoFurtherEffect)
{
    class Again final : public KeyValueObserver {
    public:
        void observeValue(const std::string&, ObservableObject& object, const KeyValueChange&) override
        {
            ++calls;
            static_cast<Operation&>(object).cancel();
        }
        int calls = 0;
    };
    const auto operation = make<Operation>();
    const auto observer = std::make_shared<Again>();
    operation->addObserver(observer, "isCancelled", {.prior = true});

    operation->cancel();

    EXPECT_EQ(observer->calls, 2);
}

TEST(OperationDeathTest, StartBeforeItIsReadyIsAProgrammingError)
{
    const auto operation = make<Operation>();
    operation->addDependency(make<Operation>());

    EXPECT_DEATH(operation->start(),
        "^Fatal error: start\\(\\) of an operation that is not ready: file Platform/Scheduling/Operation, line 48");
}

TEST(OperationDeathTest, StartFromItsOwnWorkIsAProgrammingError)
{
    auto operation = Ref<BlockOperation>();
    operation = make<BlockOperation>([&] { operation->start(); });

    EXPECT_DEATH(operation->start(),
        "^Fatal error: start\\(\\) of an operation that has begun already: file Platform/Scheduling/Operation, line 52");
}

TEST(OperationDeathTest, WorkThatThrowsEndsTheProcess)
{
    const auto operation = make<BlockOperation>([] { throw std::runtime_error("thrown by the work"); });

    EXPECT_DEATH(operation->start(), "thrown by the work");
}

TEST(Operation, HasItsStatesByKey)
{
    const auto operation = make<Operation>();
    const auto other = make<Operation>();
    operation->setName("one");
    operation->setQueuePriority(Operation::QueuePriority::High);
    operation->addDependency(other);

    EXPECT_EQ(operation->valueForKey("isReady"), Any(false));
    EXPECT_EQ(operation->valueForKey("isCancelled"), Any(false));
    EXPECT_EQ(operation->valueForKey("isExecuting"), Any(false));
    EXPECT_EQ(operation->valueForKey("isFinished"), Any(false));
    EXPECT_EQ(operation->valueForKey("isAsynchronous"), Any(false));
    EXPECT_EQ(operation->valueForKey("queuePriority"), Any(4));
    EXPECT_EQ(operation->valueForKey("name"), Any("one"));
    EXPECT_EQ(operation->valueForKey("dependencies"), Any(std::vector<Ref<Operation>>{other}));
    EXPECT_EQ(operation->valueForKey("isPurple"), std::nullopt);
}

TEST(Operation, TellsOfItsNameAndPriority)
{
    const auto operation = make<Operation>();
    const auto recorder = KeyRecorder::of(*operation, {"name", "queuePriority"});

    operation->setName("one");
    operation->setQueuePriority(Operation::QueuePriority::Low);

    EXPECT_THAT(
        recorder->entries(), ElementsAre("will name", "did name", "will queuePriority", "did queuePriority"));
    EXPECT_EQ(operation->name(), "one");
    EXPECT_EQ(operation->queuePriority(), Operation::QueuePriority::Low);
}

TEST(Operation, CallsItsCompletionBlockOnceSoonAfterItHasFinished)
{
    auto world = VirtualWorld();
    int calls = 0;
    const auto operation = make<Operation>();
    operation->setCompletionBlock([&] { calls += operation->isFinished() ? 1 : 100; });

    operation->start();
    EXPECT_EQ(calls, 0);
    world.runUntilIdle();
    operation->start();
    world.runUntilIdle();

    EXPECT_EQ(calls, 1);
}

TEST(Operation, CallsTheCompletionBlockThatWasSetLast)
{
    auto world = VirtualWorld();
    std::string called;
    const auto operation = make<Operation>();
    operation->setCompletionBlock([&] { called += "first"; });
    operation->setCompletionBlock([&] { called += "second"; });

    operation->start();
    world.runUntilIdle();

    EXPECT_EQ(called, "second");
}

TEST(Operation, CallsNoCompletionBlockThatWasTakenBack)
{
    auto world = VirtualWorld();
    int calls = 0;
    const auto operation = make<Operation>();
    operation->setCompletionBlock([&] { ++calls; });
    operation->setCompletionBlock(nullptr);

    operation->start();
    world.runUntilIdle();

    EXPECT_EQ(calls, 0);
}

TEST(Operation, CallsACompletionBlockThatIsSetAfterItHasFinished)
{
    auto world = VirtualWorld();
    int calls = 0;
    const auto operation = make<Operation>();
    operation->start();

    operation->setCompletionBlock([&] { ++calls; });
    EXPECT_EQ(calls, 0);
    world.runUntilIdle();

    EXPECT_EQ(calls, 1);
}

TEST(Operation, CallsTheCompletionBlockOfACancelledOneToo)
{
    auto world = VirtualWorld();
    int calls = 0;
    const auto operation = make<Operation>();
    operation->setCompletionBlock([&] { ++calls; });
    operation->cancel();

    operation->start();
    world.runUntilIdle();

    EXPECT_EQ(calls, 1);
}

TEST(Operation, LetsGoOfItsCompletionBlockAfterTheCall)
{
    auto world = VirtualWorld();
    const auto token = std::make_shared<int>();
    const auto operation = make<Operation>();
    operation->setCompletionBlock([token] {});

    operation->start();
    world.runUntilIdle();

    EXPECT_EQ(token.use_count(), 1);
}

TEST(Operation, IsNotWaitedForOnceItHasFinished)
{
    const auto operation = make<Operation>();
    operation->start();

    operation->waitUntilFinished();

    EXPECT_TRUE(operation->isFinished());
}

TEST(Operation, IsWaitedForUntilAnotherThreadHasFinishedIt)
{
    const auto operation = make<Sum>(std::vector{1, 2, 3});
    auto worker = std::thread([&] { operation->start(); });

    operation->waitUntilFinished();

    EXPECT_EQ(operation->result, 6);
    worker.join();
}

TEST(Operation, IsWaitedForBySeveralThreads)
{
    const auto operation = make<ManualOperation>();
    std::vector<std::thread> waiting;
    for (int index = 0; index < 4; ++index)
        waiting.emplace_back([&] { operation->waitUntilFinished(); });

    operation->start();
    operation->end();
    for (auto& thread : waiting)
        thread.join();

    EXPECT_TRUE(operation->isFinished());
}

TEST(OperationDeathTest, WaitingForItselfIsAProgrammingError)
{
    auto operation = Ref<BlockOperation>();
    operation = make<BlockOperation>([&] { operation->waitUntilFinished(); });

    EXPECT_DEATH(operation->start(),
        "^Fatal error: An operation waits for itself to finish: file Platform/Scheduling/Operation, line 134");
}

TEST(OperationDeathTest, WaitingForTheOneThatStartedItByHandIsAProgrammingError)
{
    auto outer = Ref<BlockOperation>();
    const auto inner = make<BlockOperation>([&] { outer->waitUntilFinished(); });
    outer = make<BlockOperation>([&] { inner->start(); });

    EXPECT_DEATH(outer->start(), "^Fatal error: An operation waits for itself to finish");
}

TEST(Operation, MayDropTheLastReferenceToItselfInItsWork)
{
    auto operation = Ref<Operation>();
    WeakRef<Operation> weak;
    operation = make<BlockOperation>([&] { operation.reset(); });
    weak = operation;

    auto* const bare = operation.get();
    const auto kept = operation; // who calls start() keeps it
    bare->start();

    EXPECT_FALSE(operation);
    EXPECT_EQ(weak.use_count(), 1);
}

TEST(Operation, WithStatesOfItsOwnIsWaitedForThroughItsNotifications)
{
    auto world = VirtualWorld();
    int calls = 0;
    const auto operation = make<ManualOperation>();
    operation->setCompletionBlock([&] { ++calls; });

    operation->start();
    world.runUntilIdle();
    EXPECT_EQ(calls, 0);
    operation->end();
    world.runUntilIdle();

    EXPECT_EQ(calls, 1);
}

TEST(Operation, ThatTellsOfItsEndTwiceIsOverOnce)
{
    auto world = VirtualWorld();
    int calls = 0;
    const auto operation = make<ManualOperation>();
    operation->setCompletionBlock([&] { ++calls; });

    operation->end();
    operation->end();
    world.runUntilIdle();

    EXPECT_EQ(calls, 1);
}

TEST(Operation, ThatTellsOfAnEndThatDidNotComeIsNotOver)
{
    auto world = VirtualWorld();
    int calls = 0;
    const auto operation = make<ManualOperation>();
    operation->setCompletionBlock([&] { ++calls; });

    operation->willChangeValue("isFinished");
    operation->didChangeValue("isFinished");
    world.runUntilIdle();

    EXPECT_EQ(calls, 0);
}
