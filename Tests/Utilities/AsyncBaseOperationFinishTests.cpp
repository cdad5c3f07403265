#include "Orrenby/Utilities/AsyncBaseOperation.hpp"

#include "Tests/Utilities/AsyncBaseOperationParts.hpp"
#include <functional>
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::bothStates;
using orrenby::testing::finishing;
using orrenby::testing::Immediate;
using orrenby::testing::KeyRecorder;
using orrenby::testing::normalRun;
using orrenby::testing::Pending;
using orrenby::testing::states;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Its own idea of finishing is not to.
class Unfinishing : public Pending {
public:
    void finish() override { ++finishCalls; }

    int finishCalls = 0;
};

} // namespace

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

TEST(AsyncBaseOperation, WithoutOverriddenExecuteMayBeCancelled)
{
    const auto operation = make<AsyncBaseOperation>();
    operation->cancel();

    operation->start();

    EXPECT_TRUE(operation->isFinished());
}

TEST(AsyncBaseOperation, TellsOnceWhenItsCompletionIsCalledTwice)
{
    const auto operation = make<Pending>();
    operation->start();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    operation->complete();
    operation->complete();

    EXPECT_EQ(recorder->entries(), finishing);
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

    EXPECT_EQ(recorder->entries(), finishing);
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

TEST(AsyncBaseOperation, MayCompleteBeforeExecuteReturns)
{
    const auto operation = make<Immediate>();
    const auto recorder = KeyRecorder::of(*operation, bothStates);

    operation->start();

    EXPECT_EQ(recorder->entries(), normalRun);
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
