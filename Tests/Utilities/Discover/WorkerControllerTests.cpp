#include "Orrenby/Utilities/Discover/WorkerController.hpp"

#include "Tests/Support/DiscoverParts.hpp"
#include <functional>
#include <gmock/gmock.h>
#include <stdexcept>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryWorker;
using orrenby::testing::SpecialWorker;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// What a worker may also be.
class Named {
public:
    virtual ~Named() = default;
    virtual std::string title() const = 0;
};

class NamedWorker : public AbstractWorker, public Named {
public:
    std::string title() const override { return "named"; }
};

/// A worker that shares no class with the others.
class ForeignWorker : public Worker {
public:
    explicit ForeignWorker(Diary& diary)
        : m_diary(&diary)
    {}
    bool isWorking() const override { return false; }
    void start() override { m_diary->push_back("foreign started"); }
    void stop() override { m_diary->push_back("foreign stopped"); }

private:
    Diary* m_diary;
};

class LeavingWorker : public DiaryWorker {
public:
    using DiaryWorker::DiaryWorker;
    ~LeavingWorker() override { onEnd(); }
    std::function<void()> onEnd = [] {};
};

TEST(WorkerController, DrivesItsWorkersInListOrder)
{
    auto diary = Diary();

    //! [Driving several workers]
    const auto loader = make<DiaryWorker>(diary, "loader");
    const auto monitor = make<DiaryWorker>(diary, "monitor");
    const auto controller = make<WorkerController>(Workers{loader, monitor});

    controller->startWorkers();
    controller->stopWorkers();
    //! [Driving several workers]

    EXPECT_THAT(diary, ElementsAre("loader started", "monitor started", "loader stops", "monitor stops"));
    EXPECT_THAT(controller->workers(), ElementsAre(loader, monitor));
}

TEST(WorkerController, WithoutWorkersItDoesNothing)
{
    const auto controller = make<WorkerController>(Workers());

    controller->startWorkers();
    controller->stopWorkers();

    EXPECT_THAT(controller->workers(), IsEmpty());
    EXPECT_EQ(controller->firstWorker<AbstractWorker>(), nullptr);
}

TEST(WorkerController, FindsTheFirstWorkerOfAType)
{
    auto diary = Diary();
    const auto a1 = make<SpecialWorker>(diary, "A1");
    const auto b = make<NamedWorker>();
    const auto a2 = make<SpecialWorker>(diary, "A2");
    const auto controller = make<WorkerController>(Workers{a1, b, a2});

    EXPECT_EQ(controller->firstWorker<SpecialWorker>(), a1);
    EXPECT_EQ(controller->firstWorker<NamedWorker>(), b);
    EXPECT_EQ(controller->firstWorker<ForeignWorker>(), nullptr);
}

TEST(WorkerController, FindsAllWorkersOfATypeInListOrder)
{
    auto diary = Diary();
    const auto a1 = make<SpecialWorker>(diary, "A1");
    const auto b = make<NamedWorker>();
    const auto a2 = make<SpecialWorker>(diary, "A2");
    const auto controller = make<WorkerController>(Workers{a1, b, a2});

    EXPECT_THAT(controller->workers<SpecialWorker>(), ElementsAre(a1, a2));
    EXPECT_THAT(controller->workers<AbstractWorker>(), ElementsAre(a1, b, a2));
    EXPECT_THAT(controller->workers<ForeignWorker>(), IsEmpty());
}

TEST(WorkerController, FindsWorkersByAnInterface)
{
    auto diary = Diary();
    const auto named = make<NamedWorker>();
    const auto controller = make<WorkerController>(Workers{make<DiaryWorker>(diary), named});

    const auto found = controller->firstWorker<Named>();

    ASSERT_TRUE(found);
    EXPECT_EQ(found->title(), "named");
    EXPECT_TRUE(isSameObject(found, named));
    EXPECT_THAT(controller->workers<Named>(), ElementsAre(found));
}

TEST(WorkerController, PerformsOnceWithTheFirstWorkerOfAType)
{
    auto diary = Diary();
    const auto controller = make<WorkerController>(Workers{
        make<DiaryWorker>(diary, "B"), make<SpecialWorker>(diary, "A1"), make<SpecialWorker>(diary, "A2")});
    auto names = std::vector<std::string>();

    controller->withFirstWorker<SpecialWorker>(
        [&](SpecialWorker& worker) { names.push_back(worker.name()); });

    EXPECT_THAT(names, ElementsAre("A1"));
}

TEST(WorkerController, PerformsNothingWithoutAWorkerOfTheType)
{
    auto diary = Diary();
    const auto controller = make<WorkerController>(Workers{make<DiaryWorker>(diary)});
    auto calls = 0;

    controller->withFirstWorker<SpecialWorker>([&](SpecialWorker&) { ++calls; });
    controller->withWorkers<SpecialWorker>([&](SpecialWorker&) { ++calls; });

    EXPECT_EQ(calls, 0);
}

TEST(WorkerController, PerformsWithEveryWorkerOfATypeInListOrder)
{
    auto diary = Diary();
    const auto controller = make<WorkerController>(Workers{
        make<SpecialWorker>(diary, "A1"), make<DiaryWorker>(diary, "B"), make<SpecialWorker>(diary, "A2")});
    auto names = std::vector<std::string>();

    controller->withWorkers<SpecialWorker>([&](SpecialWorker& worker) { names.push_back(worker.name()); });

    EXPECT_THAT(names, ElementsAre("A1", "A2"));
}

TEST(WorkerController, HandsAReferenceToThoseWhoKeepIt)
{
    auto diary = Diary();
    const auto worker = make<SpecialWorker>(diary);
    const auto controller = make<WorkerController>(Workers{worker});
    auto kept = std::vector<Ref<SpecialWorker>>();

    controller->withFirstWorker<SpecialWorker>(
        [&](const Ref<SpecialWorker>& found) { kept.push_back(found); });
    controller->withWorkers<SpecialWorker>(
        [&](Ref<SpecialWorker> found) { kept.push_back(std::move(found)); });

    EXPECT_THAT(kept, ElementsAre(worker, worker));
}

TEST(WorkerController, LetsErrorsOfPerformPass)
{
    auto diary = Diary();
    const auto controller = make<WorkerController>(
        Workers{make<DiaryWorker>(diary, "A"), make<DiaryWorker>(diary, "B"), make<DiaryWorker>(diary, "C")});
    auto names = std::vector<std::string>();
    const auto failAtB = [&](DiaryWorker& worker) {
        names.push_back(worker.name());
        if (worker.name() == "B")
            throw std::out_of_range("B");
    };

    EXPECT_THROW(controller->withWorkers<DiaryWorker>(failAtB), std::out_of_range);
    EXPECT_THAT(names, ElementsAre("A", "B"));
    EXPECT_THROW(controller->withFirstWorker<DiaryWorker>([](DiaryWorker&) { throw 7; }), int);
}

TEST(WorkerController, StopsWorkersAtItsEndThenLetsThemGoFirstToLast)
{
    auto diary = Diary();
    auto workers = Workers();
    for (const auto* name : {"A", "B"}) {
        const auto worker = make<LeavingWorker>(diary, name);
        worker->onEnd = [&diary, name] { diary.push_back(std::string(name) + " gone"); };
        workers.push_back(worker);
    }
    auto controller = make<WorkerController>(std::move(workers));
    controller->startWorkers();
    diary.clear();

    controller.reset();

    EXPECT_THAT(diary, ElementsAre("A stops", "B stops", "A gone", "B gone"));
}

TEST(WorkerController, StopsAtItsEndAlsoWorkersThatOthersHold)
{
    auto diary = Diary();
    const auto shared = make<DiaryWorker>(diary, "shared");
    auto first = make<WorkerController>(Workers{shared});
    const auto second = make<WorkerController>(Workers{shared});
    first->startWorkers();
    second->startWorkers();

    first.reset();

    EXPECT_FALSE(shared->isWorking());
    EXPECT_THAT(diary, ElementsAre("shared started", "shared stops"));
}

TEST(WorkerController, LeavesIdleWorkersAloneAtItsEnd)
{
    auto diary = Diary();
    auto controller = make<WorkerController>(Workers{make<DiaryWorker>(diary)});

    controller.reset();

    EXPECT_THAT(diary, IsEmpty());
}

TEST(WorkerController, StartsAWorkerThatStandsTwiceOnce)
{
    auto diary = Diary();
    const auto worker = make<DiaryWorker>(diary);
    const auto controller = make<WorkerController>(Workers{worker, worker});

    controller->startWorkers();
    controller->stopWorkers();

    EXPECT_THAT(diary, ElementsAre("worker started", "worker stops"));
}

TEST(WorkerController, CallsWorkersOfAnyKindEachTime)
{
    auto diary = Diary();

    {
        const auto controller = make<WorkerController>(Workers{std::make_shared<ForeignWorker>(diary)});
        controller->startWorkers();
        controller->stopWorkers();
    }

    EXPECT_THAT(diary, ElementsAre("foreign started", "foreign stopped", "foreign stopped"));
}

TEST(WorkerController, MayGoAwayWhileItStartsItsWorkers)
{
    class Saboteur : public DiaryWorker {
    public:
        using DiaryWorker::DiaryWorker;
        Ref<WorkerController> victim;

    protected:
        void didStart() override
        {
            DiaryWorker::didStart();
            victim.reset();
        }
    };
    auto diary = Diary();
    const auto saboteur = make<Saboteur>(diary, "saboteur");
    auto controller = make<WorkerController>(Workers{saboteur, make<DiaryWorker>(diary, "other")});
    saboteur->victim = controller;
    auto& reference = *controller;
    controller.reset();

    reference.startWorkers();

    EXPECT_THAT(diary, ElementsAre("saboteur started", "saboteur stops", "other started", "other stops"));
}

TEST(WorkerController, EndsOnTheStackAsWell)
{
    auto diary = Diary();
    const auto worker = make<DiaryWorker>(diary);

    {
        auto controller = Object<WorkerController>(Workers{worker});
        controller.startWorkers();
    }

    EXPECT_THAT(diary, ElementsAre("worker started", "worker stops"));
}

TEST(WorkerControllerDeathTest, TakesNoEmptyReference)
{
    auto diary = Diary();

    EXPECT_DEATH((void)make<WorkerController>(Workers{make<DiaryWorker>(diary), nullptr}),
        "Fatal error: Empty reference in a list of workers: file Utilities/Discover");
}

} // namespace
