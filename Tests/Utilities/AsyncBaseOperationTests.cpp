#include "Orrenby/Utilities/AsyncBaseOperation.hpp"

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Utilities/AsyncBaseOperationParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>

using namespace orrenby;
using orrenby::testing::bothStates;
using orrenby::testing::Entries;
using orrenby::testing::finishing;
using orrenby::testing::KeyRecorder;
using orrenby::testing::Pending;
using orrenby::testing::states;
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

    EXPECT_EQ(recorder->entries(), finishing);
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

TEST(AsyncBaseOperation, StartedWhileExecutingTellsNothingYetExecutesAgain)
{
    const auto operation = make<Pending>();
    operation->start();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    operation->start();

    EXPECT_THAT(recorder->entries(), IsEmpty());
    EXPECT_EQ(operation->completions.size(), 2U);
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

TEST(AsyncBaseOperationDeathTest, StartWithoutOverriddenExecuteIsAProgrammingError)
{
    const auto operation = make<AsyncBaseOperation>();

    EXPECT_DEATH(operation->start(),
        "^Fatal error: Method in abstract base class must be overridden: "
        "file Utilities/AsyncBaseOperation, line 58");
}

TEST(AsyncBaseOperationDeathTest, StartOfOneThatNoReferenceHoldsIsAProgrammingError)
{
    auto operation = Object<Pending>();

    EXPECT_DEATH(operation.start(),
        "^Fatal error: start\\(\\) of an asynchronous operation that no reference holds: "
        "file Utilities/AsyncBaseOperation\n$");
}

TEST(AsyncBaseOperation, OnTheStackCanBeCancelledAndFinished)
{
    auto cancelled = Object<Pending>();
    auto finished = Object<Pending>();

    cancelled.cancel();
    cancelled.start();
    finished.finish();

    EXPECT_THAT(states(cancelled), ElementsAre(false, true));
    EXPECT_THAT(states(finished), ElementsAre(false, true));
    EXPECT_THAT(cancelled.completions, IsEmpty());
}

TEST(AsyncBaseOperationState, IsComparedAndHashedByItsCase)
{
    using State = AsyncBaseOperation::State;
    const auto all = std::unordered_set{State::ready, State::executing, State::finished, State::ready};

    EXPECT_EQ(all.size(), 3U);
    EXPECT_EQ(static_cast<int>(State::ready), 0);
    EXPECT_EQ(static_cast<int>(State::finished), 2);
}
