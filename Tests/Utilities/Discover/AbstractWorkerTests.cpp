#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"

#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "Tests/Support/DiscoverParts.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <type_traits>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryWorker;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Numbers = Streams::PassthroughSubject<int, Never>;

/// Notes in its hooks what is true at that moment.
class CuriousWorker : public AbstractWorker {
public:
    CuriousWorker(Diary& diary, Numbers numbers)
        : m_diary(&diary)
        , m_numbers(std::move(numbers))
    {}
    void remember(WeakRef<CuriousWorker> self) { m_self = std::move(self); }

protected:
    void didStart() override
    {
        note("start");
        m_numbers.asPublisher().bind([this](int) { m_diary->push_back("delivery"); }).store(*this);
    }
    void willStop() override
    {
        note("stop");
        m_numbers.send(1);
    }

private:
    void note(const std::string& what)
    {
        m_diary->push_back(
            what + (isWorking() ? ": working" : ": idle") + (m_self.expired() ? ", alone" : ", held"));
    }

    Diary* m_diary;
    Numbers m_numbers;
    WeakRef<CuriousWorker> m_self;
};

class FailingWorker : public AbstractWorker {
public:
    bool failsToStart = false;
    bool failsToStop = false;

protected:
    void didStart() override
    {
        if (failsToStart)
            throw std::runtime_error("cannot start");
    }
    void willStop() override
    {
        if (failsToStop)
            throw std::runtime_error("cannot stop");
    }
};

TEST(AbstractWorker, RunsItsSubscriptionsWhileItWorks)
{
    //! [Writing a worker]
    class Counter : public AbstractWorker {
    public:
        explicit Counter(Numbers numbers)
            : m_numbers(std::move(numbers))
        {}
        int sum() const { return m_sum; }

    protected:
        void didStart() override
        {
            m_numbers.asPublisher().bind([this](int number) { m_sum += number; }).store(*this);
        }

    private:
        Numbers m_numbers;
        int m_sum = 0;
    };

    const auto numbers = Numbers();
    const auto counter = make<Counter>(numbers);
    numbers.send(1); // not yet
    counter->start();
    numbers.send(20);
    numbers.send(300);
    counter->stop();
    numbers.send(4000); // no longer
    //! [Writing a worker]

    EXPECT_EQ(counter->sum(), 320);
}

TEST(AbstractWorker, IsIdleAtFirst)
{
    const auto worker = make<AbstractWorker>();

    EXPECT_FALSE(worker->isWorking());
    EXPECT_THAT(worker->cancellables(), IsEmpty());
}

TEST(AbstractWorker, StartedTwiceItStartsOnce)
{
    auto diary = Diary();
    const auto worker = make<DiaryWorker>(diary);

    worker->start();
    worker->start();

    EXPECT_TRUE(worker->isWorking());
    EXPECT_THAT(diary, ElementsAre("worker started"));
}

TEST(AbstractWorker, StoppedTwiceItStopsOnce)
{
    auto diary = Diary();
    const auto worker = make<DiaryWorker>(diary);
    worker->start();

    worker->stop();
    worker->stop();

    EXPECT_FALSE(worker->isWorking());
    EXPECT_THAT(diary, ElementsAre("worker started", "worker stops"));
}

TEST(AbstractWorker, StopOfAnIdleWorkerNeitherCallsTheHookNorCancels)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto worker = make<DiaryWorker>(diary);
    numbers.asPublisher().bind([&](int) { diary.push_back("delivery"); }).store(*worker);

    worker->stop();
    numbers.send(1);

    EXPECT_THAT(diary, ElementsAre("delivery"));
    EXPECT_EQ(worker->cancellables().size(), 1u);
}

TEST(AbstractWorker, WorksInBothHooksAndDeliversUntilWillStopIsOver)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto worker = make<CuriousWorker>(diary, numbers);
    worker->remember(worker);

    worker->start();
    worker->stop();
    numbers.send(2);

    EXPECT_THAT(diary, ElementsAre("start: working, held", "stop: working, held", "delivery"));
}

TEST(AbstractWorker, StopCancelsEverySubscriptionAndKeepsNone)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto worker = make<DiaryWorker>(diary);
    worker->start();
    diary.clear();
    const auto first = numbers.asPublisher().bind([&](int) { diary.push_back("first"); });
    const auto second = numbers.asPublisher().bind([&](int) { diary.push_back("second"); });
    first.store(*worker);
    second.store(*worker);

    worker->stop();
    numbers.send(1);

    EXPECT_THAT(diary, ElementsAre("worker stops"));
    EXPECT_THAT(worker->cancellables(), IsEmpty());
}

TEST(AbstractWorker, WorksUntilItsSubscriptionsAreGone)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto worker = make<DiaryWorker>(diary);
    auto subscriber = std::shared_ptr<void>(nullptr, [&diary, worker = worker.get()](void*) {
        diary.push_back(worker->isWorking() ? "gone while it works" : "gone too late");
    });
    worker->start();
    numbers.asPublisher().bind([subscriber = std::move(subscriber)](int) {}).store(*worker);

    worker->stop();

    EXPECT_THAT(diary, ElementsAre("worker started", "worker stops", "gone while it works"));
    EXPECT_FALSE(worker->isWorking());
}

TEST(AbstractWorker, StartsAgainWithoutOldSubscriptions)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto worker = make<CuriousWorker>(diary, numbers);
    worker->start();
    worker->stop();
    diary.clear();

    worker->start();
    numbers.send(3);

    EXPECT_THAT(diary, ElementsAre("start: working, alone", "delivery"));
    EXPECT_EQ(worker->cancellables().size(), 1u);
}

TEST(AbstractWorker, ReleasedWhileWorkingItStopsWithItsOwnHook)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    auto worker = make<CuriousWorker>(diary, numbers);
    worker->remember(worker);
    worker->start();

    worker.reset();
    numbers.send(2);

    EXPECT_THAT(diary, ElementsAre("start: working, held", "stop: working, alone", "delivery"));
}

TEST(AbstractWorker, ReleasedWhileIdleItLetsGoOfItsSubscriptionsOnly)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    auto worker = make<DiaryWorker>(diary);
    numbers.asPublisher().bind([&](int) { diary.push_back("delivery"); }).store(*worker);

    worker.reset();
    numbers.send(1);

    EXPECT_THAT(diary, IsEmpty());
}

TEST(AbstractWorker, EndsOnTheStackAsWell)
{
    auto diary = Diary();

    {
        auto worker = Object<DiaryWorker>(diary, "local");
        worker.start();
    }

    EXPECT_THAT(diary, ElementsAre("local started", "local stops"));
}

TEST(AbstractWorker, MayStopItselfWhileItStarts)
{
    class Hasty : public DiaryWorker {
    public:
        using DiaryWorker::DiaryWorker;

    protected:
        void didStart() override
        {
            DiaryWorker::didStart();
            stop();
        }
    };
    auto diary = Diary();
    const auto worker = make<Hasty>(diary);

    worker->start();

    EXPECT_FALSE(worker->isWorking());
    EXPECT_THAT(diary, ElementsAre("worker started", "worker stops"));
}

TEST(AbstractWorker, BelievesAnOverrideThatSaysItWorksAlready)
{
    class Busy : public DiaryWorker {
    public:
        using DiaryWorker::DiaryWorker;
        bool isWorking() const override { return true; }
    };
    auto diary = Diary();
    const auto worker = make<Busy>(diary);

    worker->start();
    worker->stop();

    EXPECT_THAT(diary, ElementsAre("worker stops"));
}

TEST(AbstractWorker, WorksAfterAFailedStart)
{
    const auto worker = make<FailingWorker>();
    worker->failsToStart = true;

    EXPECT_THROW(worker->start(), std::runtime_error);
    EXPECT_TRUE(worker->isWorking());
}

TEST(AbstractWorker, GoesOnWorkingAfterAFailedStop)
{
    const auto numbers = Numbers();
    const auto worker = make<FailingWorker>();
    worker->start();
    numbers.asPublisher().bind([](int) {}).store(*worker);
    worker->failsToStop = true;

    EXPECT_THROW(worker->stop(), std::runtime_error);

    EXPECT_TRUE(worker->isWorking());
    EXPECT_EQ(worker->cancellables().size(), 1u);
    worker->failsToStop = false; // or its end would end the process
}

TEST(AbstractWorkerDeathTest, AHookThatThrowsAtTheEndEndsTheProcess)
{
    auto worker = make<FailingWorker>();
    worker->start();
    worker->failsToStop = true;

    EXPECT_DEATH(worker.reset(), "cannot stop");

    worker->failsToStop = false;
}

TEST(AbstractWorker, IsCreatedByMakeAlone)
{
    EXPECT_TRUE(std::is_abstract_v<AbstractWorker>);
    EXPECT_TRUE(std::is_abstract_v<DiaryWorker>);
    EXPECT_FALSE(std::is_copy_constructible_v<Object<DiaryWorker>>);
}

} // namespace
