#include "Orrenby/Platform/Scheduling/Operation.hpp"

#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Support/OperationParts.hpp"
#include <gmock/gmock.h>
#include <vector>

using namespace orrenby;
using orrenby::testing::Entries;
using orrenby::testing::KeyRecorder;
using orrenby::testing::ManualOperation;
using orrenby::testing::ReadyWhenTold;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Operations = std::vector<Ref<Operation>>;

Operations operations(std::size_t count)
{
    Operations made;
    for (std::size_t index = 0; index < count; ++index)
        made.push_back(make<Operation>());
    return made;
}

/// Each waits for the one before it.
Operations chain(std::size_t length)
{
    auto made = operations(length);
    for (std::size_t index = 1; index < length; ++index)
        made[index]->addDependency(made[index - 1]);
    return made;
}

constexpr std::size_t many = 100'000;

} // namespace

TEST(OperationDependencies, AreListedInTheOrderOfAdding)
{
    const auto others = operations(20);
    const auto operation = make<Operation>();

    for (const auto& other : others)
        operation->addDependency(other);

    EXPECT_EQ(operation->dependencies(), others);
}

TEST(OperationDependencies, CountOnceHoweverOftenTheyAreAdded)
{
    const auto other = make<Operation>();
    const auto operation = make<Operation>();
    operation->addDependency(other);
    const auto recorder = KeyRecorder::of(*operation, {"dependencies", "isReady"});

    operation->addDependency(other);
    EXPECT_THAT(recorder->entries(), IsEmpty());
    other->start();

    EXPECT_THAT(operation->dependencies(), ElementsAre(other));
    EXPECT_TRUE(operation->isReady());
}

TEST(OperationDependencies, MakeItReadyWhenTheLastOneHasFinished)
{
    const auto others = operations(2);
    const auto operation = make<Operation>();
    const auto recorder = KeyRecorder::of(*operation, {"dependencies", "isReady"});

    operation->addDependency(others[0]);
    operation->addDependency(others[1]);
    others[1]->start();
    EXPECT_FALSE(operation->isReady());
    others[0]->start();

    EXPECT_TRUE(operation->isReady());
    EXPECT_THAT(recorder->entries(),
        ElementsAre("will dependencies", "will isReady", "did isReady", "did dependencies",
            "will dependencies", "did dependencies", "will isReady", "did isReady"));
}

TEST(OperationDependencies, AreOverWhenTheyFinishCancelled)
{
    const auto other = make<Operation>();
    const auto operation = make<Operation>();
    operation->addDependency(other);

    other->cancel();
    EXPECT_FALSE(operation->isReady());
    other->start();

    EXPECT_TRUE(operation->isReady());
}

TEST(OperationDependencies, ThatHaveFinishedAreListedButNotWaitedFor)
{
    const auto other = make<Operation>();
    other->start();
    const auto operation = make<Operation>();
    const auto recorder = KeyRecorder::of(*operation, {"isReady"});

    operation->addDependency(other);

    EXPECT_TRUE(operation->isReady());
    EXPECT_THAT(operation->dependencies(), ElementsAre(other));
    EXPECT_THAT(recorder->entries(), IsEmpty());
}

TEST(OperationDependencies, AreKeptUntilTheOperationHasFinished)
{
    auto other = make<Operation>();
    const auto weak = WeakRef<Operation>(other);
    const auto operation = make<Operation>();
    operation->addDependency(other);

    other->start();
    other.reset();
    EXPECT_FALSE(weak.expired());
    operation->start();

    EXPECT_TRUE(weak.expired());
    EXPECT_THAT(operation->dependencies(), IsEmpty());
}

TEST(OperationDependencies, AreNotTakenByAnOperationThatHasFinished)
{
    const auto operation = make<Operation>();
    operation->start();

    operation->addDependency(make<Operation>());

    EXPECT_THAT(operation->dependencies(), IsEmpty());
}

TEST(OperationDependencies, NoLongerCountOnceTheyAreRemoved)
{
    const auto others = operations(2);
    const auto operation = make<Operation>();
    operation->addDependency(others[0]);
    operation->addDependency(others[1]);
    const auto recorder = KeyRecorder::of(*operation, {"dependencies", "isReady"});

    operation->removeDependency(others[0]);
    operation->removeDependency(others[1]);

    EXPECT_TRUE(operation->isReady());
    EXPECT_THAT(operation->dependencies(), IsEmpty());
    EXPECT_THAT(recorder->entries(),
        ElementsAre("will dependencies", "did dependencies", "will dependencies", "did dependencies",
            "will isReady", "did isReady"));
}

TEST(OperationDependencies, ThatWereRemovedMayFinishLater)
{
    const auto others = operations(2);
    const auto operation = make<Operation>();
    operation->addDependency(others[0]);
    operation->addDependency(others[1]);
    operation->removeDependency(others[0]);

    others[0]->start();

    EXPECT_FALSE(operation->isReady());
}

TEST(OperationDependencies, CanBeRemovedAndAddedAgain)
{
    const auto other = make<Operation>();
    const auto operation = make<Operation>();

    for (int round = 0; round < 1000; ++round) {
        operation->addDependency(other);
        operation->removeDependency(other);
    }
    operation->addDependency(other);
    EXPECT_FALSE(operation->isReady());
    other->start();

    EXPECT_TRUE(operation->isReady());
}

TEST(OperationDependencies, AreIgnoredByRemovingWhenTheyDoNotExist)
{
    const auto operation = make<Operation>();
    const auto recorder = KeyRecorder::of(*operation, {"dependencies", "isReady"});

    operation->removeDependency(make<Operation>());
    operation->removeDependency(nullptr);

    EXPECT_THAT(recorder->entries(), IsEmpty());
}

TEST(OperationDependencies, DoNotKeepTheOperationThatWaits)
{
    const auto other = make<Operation>();
    auto operation = make<Operation>();
    const auto weak = WeakRef<Operation>(operation);
    operation->addDependency(other);

    operation.reset();
    other->start();

    EXPECT_TRUE(weak.expired());
}

TEST(OperationDependencies, OnOperationsWithStatesOfTheirOwnGoByTheirNotifications)
{
    const auto other = make<ManualOperation>();
    const auto operation = make<Operation>();
    operation->addDependency(other);

    other->start();
    EXPECT_FALSE(operation->isReady());
    other->end();

    EXPECT_TRUE(operation->isReady());
}

TEST(OperationDependencies, StandBesideAReadinessOfItsOwn)
{
    const auto other = make<Operation>();
    const auto operation = make<ReadyWhenTold>();
    operation->addDependency(other);

    operation->allow();
    EXPECT_FALSE(operation->isReady());
    other->start();

    EXPECT_TRUE(operation->isReady());
}

TEST(OperationDependencies, InACircleAreNeverReadyUntilOneIsCancelled)
{
    const auto all = chain(3);
    all[0]->addDependency(all[2]);

    EXPECT_FALSE(all[0]->isReady() || all[1]->isReady() || all[2]->isReady());
    all[0]->cancel();
    for (const auto& operation : all)
        operation->start();

    EXPECT_TRUE(all[2]->isFinished());
}

TEST(OperationDependencies, AddedFromAnObserverOfReadinessKeepItWaiting)
{
    class Adder final : public KeyValueObserver {
    public:
        void observeValue(const std::string&, ObservableObject& object, const KeyValueChange&) override
        {
            if (auto other = std::move(m_other))
                static_cast<Operation&>(object).addDependency(other);
        }
        explicit Adder(Ref<Operation> other)
            : m_other(std::move(other))
        {}

    private:
        Ref<Operation> m_other;
    };
    const auto others = operations(2);
    const auto operation = make<Operation>();
    operation->addDependency(others[0]);
    const auto adder = std::make_shared<Adder>(others[1]);
    operation->addObserver(adder, "isReady");

    others[0]->start();
    EXPECT_FALSE(operation->isReady());
    others[1]->start();

    EXPECT_TRUE(operation->isReady());
}

TEST(OperationDependenciesDeathTest, OnItselfAreAProgrammingError)
{
    const auto operation = make<Operation>();

    EXPECT_DEATH(operation->addDependency(operation),
        "^Fatal error: An operation cannot depend on itself: file Platform/Scheduling/Operation, line 50");
}

TEST(OperationDependenciesDeathTest, OnNothingAreAProgrammingError)
{
    EXPECT_DEATH(make<Operation>()->addDependency(nullptr),
        "^Fatal error: There is no operation to depend on: file Platform/Scheduling/Operation, line 48");
}

TEST(OperationDependenciesDeathTest, OfAnOperationOnTheStackAreAProgrammingError)
{
    auto operation = Object<Operation>();

    EXPECT_DEATH(operation.addDependency(make<Operation>()),
        "^Fatal error: An operation with dependencies is held by Ref: make it with make<T>: "
        "file Platform/Scheduling/Operation, line 53");
}

TEST(OperationDependencies, InALongChainAreReleasedWithoutRecursion)
{
    auto all = chain(many);
    auto last = std::move(all.back());
    const auto first = WeakRef<Operation>(all.front());
    all.clear();
    EXPECT_FALSE(first.expired());

    last.reset();

    EXPECT_TRUE(first.expired());
}

TEST(OperationDependencies, InALongChainRunOneAfterTheOther)
{
    auto world = VirtualWorld();
    const auto queue = OperationQueue();
    const auto all = chain(many);

    // The last first, so that none is ready when it is added.
    for (auto operation = all.rbegin(); operation != all.rend(); ++operation)
        queue.addOperation(*operation);
    queue.waitUntilAllOperationsAreFinished();

    EXPECT_TRUE(all.back()->isFinished());
}

TEST(OperationDependencies, OfManyOnOneAreFastToAddAndToRemove)
{
    const auto one = make<Operation>();
    const auto all = operations(many);

    for (const auto& operation : all)
        operation->addDependency(one);
    for (std::size_t index = 0; index < many; index += 2)
        all[index]->removeDependency(one);
    one->start();

    EXPECT_TRUE(all[many - 1]->isReady());
}

TEST(OperationDependencies, OfOneOnManyAreFastToAddAndToRemove)
{
    const auto one = make<Operation>();
    const auto all = operations(many);

    for (const auto& operation : all)
        one->addDependency(operation);
    for (std::size_t index = 0; index < many; index += 2)
        one->removeDependency(all[index]);
    EXPECT_EQ(one->dependencies().size(), many / 2);
    for (const auto& operation : all)
        operation->start();

    EXPECT_TRUE(one->isReady());
}
