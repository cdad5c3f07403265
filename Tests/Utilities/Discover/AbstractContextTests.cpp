#include "Orrenby/Utilities/Discover/AbstractContext.hpp"

#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "Tests/Support/DiscoverParts.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <type_traits>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryContext;
using orrenby::testing::DiaryWorker;
using orrenby::testing::SpecialWorker;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Numbers = Streams::PassthroughSubject<int, Never>;

/// An analytics type that has nothing to do with workers, as an application declares it.
class Tracker {
public:
    virtual ~Tracker() = default;
    virtual void track(const std::string& event) = 0;
};

class WorkingTracker : public DiaryWorker, public Tracker {
public:
    explicit WorkingTracker(Diary& diary)
        : DiaryWorker(diary, "X")
        , m_diary(&diary)
    {}
    void track(const std::string& event) override { m_diary->push_back("tracked " + event); }

private:
    Diary* m_diary;
};

class IdleTracker : public Tracker {
public:
    void track(const std::string&) override {}
};

/// Notes in its hooks what is true at that moment.
class CuriousContext : public AbstractContext<Tracker> {
public:
    CuriousContext(Diary& diary, Workers workers)
        : AbstractContext(std::move(workers), make<WorkingTracker>(diary))
        , m_diary(&diary)
    {}
    void remember(WeakRef<CuriousContext> self) { m_self = std::move(self); }

protected:
    void didBecomeActive() override { note("became active"); }
    void willResignActive() override { note("resigns"); }

private:
    void note(const std::string& what)
    {
        auto working = 0;
        withWorkers<AbstractWorker>([&](AbstractWorker& worker) { working += worker.isWorking(); });
        m_diary->push_back(what + (isActive() ? ": active" : ": inactive") + ", " + std::to_string(working)
            + " work, " + std::to_string(cancellables().size()) + " subscriptions"
            + (m_self.expired() ? ", alone" : ""));
    }

    Diary* m_diary;
    WeakRef<CuriousContext> m_self;
};

TEST(AbstractContext, RunsItsWorkersWhileItIsActive)
{
    auto diary = Diary();

    //! [Writing a context]
    class FeedContext : public AbstractContext<Tracker> {
    public:
        using AbstractContext::AbstractContext;

    protected:
        void didBecomeActive() override { analytics()->track("feed opened"); }
        void willResignActive() override { analytics()->track("feed closed"); }
    };

    const auto loader = make<DiaryWorker>(diary, "loader");
    const auto context = make<FeedContext>(Workers{loader}, make<WorkingTracker>(diary));
    context->activate();
    context->deactivate();
    //! [Writing a context]

    EXPECT_THAT(diary,
        ElementsAre("tracked feed opened", "loader started", "X started", "loader stops", "X stops",
            "tracked feed closed"));
}

TEST(AbstractContext, IsInactiveAtFirst)
{
    auto diary = Diary();
    const auto context = make<DiaryContext>(diary);

    EXPECT_FALSE(context->isActive());
    EXPECT_THAT(context->cancellables(), IsEmpty());
    EXPECT_THAT(diary, IsEmpty());
}

TEST(AbstractContext, ListsItsWorkersWithAnalyticsLast)
{
    auto diary = Diary();
    const auto a = make<DiaryWorker>(diary, "A");
    const auto b = make<DiaryWorker>(diary, "B");
    const auto x = make<WorkingTracker>(diary);
    const auto context = make<AbstractContext<Tracker>>(Workers{a, b}, x);

    context->activate();

    EXPECT_THAT(context->workers(), ElementsAre(a, b, x));
    EXPECT_EQ(context->analytics(), x);
    EXPECT_THAT(diary, ElementsAre("A started", "B started", "X started"));
}

TEST(AbstractContext, HasAnalyticsAsItsOnlyWorkerIfNoneIsGiven)
{
    auto diary = Diary();
    const auto x = make<WorkingTracker>(diary);
    const auto context = make<AbstractContext<Tracker>>(Workers(), x);

    EXPECT_THAT(context->workers(), ElementsAre(x));
}

TEST(AbstractContext, ActivatedTwiceItActivatesOnce)
{
    auto diary = Diary();
    const auto context = make<DiaryContext>(diary, "context", Workers{make<DiaryWorker>(diary)});

    context->activate();
    context->activate();

    EXPECT_TRUE(context->isActive());
    EXPECT_THAT(diary, ElementsAre("context became active", "worker started"));
}

TEST(AbstractContext, DeactivatedWhileInactiveItDoesNothing)
{
    auto diary = Diary();
    const auto worker = make<DiaryWorker>(diary);
    const auto context = make<DiaryContext>(diary, "context", Workers{worker});
    worker->start();

    context->deactivate();

    EXPECT_TRUE(worker->isWorking());
    EXPECT_THAT(diary, ElementsAre("worker started"));
}

TEST(AbstractContext, CallsItsHooksWhileActiveAndNoWorkerWorks)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto context = make<CuriousContext>(diary, Workers{make<DiaryWorker>(diary, "A")});
    context->remember(context);

    context->activate();
    numbers.asPublisher().bind([](int) {}).store(*context);
    context->deactivate();

    EXPECT_THAT(diary,
        ElementsAre("became active: active, 0 work, 0 subscriptions", "A started", "X started", "A stops",
            "X stops", "resigns: active, 0 work, 1 subscriptions"));
    EXPECT_FALSE(context->isActive());
}

TEST(AbstractContext, IsStillActiveWhileItsWorkersStop)
{
    class Asking : public AbstractWorker {
    public:
        WeakRef<Context> context;
        std::vector<bool> answers;

    protected:
        void didStart() override { answers.push_back(context.lock()->isActive()); }
        void willStop() override { answers.push_back(context.lock()->isActive()); }
    };
    auto diary = Diary();
    const auto worker = make<Asking>();
    const auto context = make<DiaryContext>(diary, "context", Workers{worker});
    worker->context = context;

    context->activate();
    context->deactivate();

    EXPECT_THAT(worker->answers, ElementsAre(true, true));
}

TEST(AbstractContext, IsActiveUntilItsSubscriptionsAreGone)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto context = make<DiaryContext>(diary);
    auto subscriber = std::shared_ptr<void>(nullptr, [&diary, context = context.get()](void*) {
        diary.push_back(context->isActive() ? "gone while active" : "gone too late");
    });
    context->activate();
    numbers.asPublisher().bind([subscriber = std::move(subscriber)](int) {}).store(*context);

    context->deactivate();

    EXPECT_THAT(diary, ElementsAre("context became active", "context resigns", "gone while active"));
    EXPECT_FALSE(context->isActive());
}

TEST(AbstractContext, DeactivationCancelsItsSubscriptions)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto context = make<DiaryContext>(diary);
    context->activate();
    const auto first = numbers.asPublisher().bind([&](int) { diary.push_back("first"); });
    const auto second = numbers.asPublisher().bind([&](int) { diary.push_back("second"); });
    first.store(*context);
    second.store(*context);

    numbers.send(1);
    context->deactivate();
    numbers.send(2);

    EXPECT_THAT(diary, ElementsAre("context became active", "first", "second", "context resigns"));
    EXPECT_THAT(context->cancellables(), IsEmpty());
}

TEST(AbstractContext, ActivatesAgainWithoutOldSubscriptions)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    const auto context = make<CuriousContext>(diary, Workers());
    context->remember(context);
    context->activate();
    numbers.asPublisher().bind([](int) {}).store(*context);
    context->deactivate();
    diary.clear();

    context->activate();

    EXPECT_THAT(diary, ElementsAre("became active: active, 0 work, 0 subscriptions", "X started"));
}

TEST(AbstractContext, ReleasedWhileActiveItDeactivatesWithItsOwnHook)
{
    auto diary = Diary();
    const auto numbers = Numbers();
    auto context = make<CuriousContext>(diary, Workers{make<DiaryWorker>(diary, "A")});
    context->remember(context);
    context->activate();
    numbers.asPublisher().bind([&](int) { diary.push_back("delivery"); }).store(*context);
    diary.clear();

    context.reset();
    numbers.send(1);

    EXPECT_THAT(diary, ElementsAre("A stops", "X stops", "resigns: active, 0 work, 1 subscriptions, alone"));
}

TEST(AbstractContext, ReleasedWhileInactiveItCallsNoHook)
{
    auto diary = Diary();
    auto context = make<DiaryContext>(diary, "context", Workers{make<DiaryWorker>(diary)});

    context.reset();

    EXPECT_THAT(diary, IsEmpty());
}

TEST(AbstractContext, LetsGoOfSubscriptionsThenAnalyticsThenWorkers)
{
    class Witness : public AbstractWorker {
    public:
        Witness(Diary& diary, WeakRef<Tracker> analytics)
            : m_diary(&diary)
            , m_analytics(std::move(analytics))
        {}
        ~Witness() override
        {
            m_diary->push_back(
                "worker, analytics held " + std::to_string(m_analytics.use_count()) + " times");
        }

    private:
        Diary* m_diary;
        WeakRef<Tracker> m_analytics;
    };
    auto diary = Diary();
    const auto numbers = Numbers();
    auto analytics = make<WorkingTracker>(diary);
    auto worker = make<Witness>(diary, analytics);
    auto context = make<AbstractContext<Tracker>>(Workers{std::move(worker)}, std::move(analytics));
    auto subscriber = std::shared_ptr<void>(nullptr, [&diary, context = context.get()](void*) {
        const auto count = std::to_string(context->analytics().use_count());
        diary.push_back("subscription, analytics held " + count + " times");
    });
    numbers.asPublisher().bind([subscriber = std::move(subscriber)](int) {}).store(*context);

    context.reset();

    EXPECT_THAT(diary, ElementsAre("subscription, analytics held 2 times", "worker, analytics held 1 times"));
}

TEST(AbstractContext, StopsItsWorkersOnceMoreAtItsEnd)
{
    auto diary = Diary();
    const auto worker = make<DiaryWorker>(diary);
    auto context = make<DiaryContext>(diary, "context", Workers{worker});
    worker->start();

    context.reset();

    EXPECT_FALSE(worker->isWorking());
    EXPECT_THAT(diary, ElementsAre("worker started", "worker stops"));
}

TEST(AbstractContext, StartsAnalyticsThatStandInTheListAsWellOnce)
{
    auto diary = Diary();
    const auto x = make<WorkingTracker>(diary);
    const auto a = make<DiaryWorker>(diary, "A");
    const auto context = make<AbstractContext<Tracker>>(Workers{x, a}, x);

    context->activate();
    context->deactivate();

    EXPECT_THAT(context->workers(), ElementsAre(x, a, x));
    EXPECT_THAT(diary, ElementsAre("X started", "A started", "X stops", "A stops"));
}

TEST(AbstractContext, SharesAWorkerThatStopsWithEitherContext)
{
    auto diary = Diary();
    const auto shared = make<DiaryWorker>(diary, "shared");
    const auto first = make<DiaryContext>(diary, "first", Workers{shared});
    auto second = make<DiaryContext>(diary, "second", Workers{shared});
    first->activate();
    second->activate();

    second.reset();

    EXPECT_TRUE(first->isActive());
    EXPECT_FALSE(shared->isWorking());
    EXPECT_THAT(diary,
        ElementsAre("first became active", "shared started", "second became active", "shared stops",
            "second resigns"));
}

TEST(AbstractContext, SearchesItsWorkersByType)
{
    auto diary = Diary();
    const auto a1 = make<SpecialWorker>(diary, "A1");
    const auto b = make<DiaryWorker>(diary, "B");
    const auto a2 = make<SpecialWorker>(diary, "A2");
    const auto context = make<DiaryContext>(diary, "context", Workers{a1, b, a2});
    auto names = std::vector<std::string>();
    const auto note = [&](SpecialWorker& worker) { names.push_back(worker.name()); };

    context->withFirstWorker<SpecialWorker>(note);
    context->withWorkers<SpecialWorker>(note);

    EXPECT_EQ(context->firstWorker<SpecialWorker>(), a1);
    EXPECT_EQ(context->firstWorker<Tracker>(), nullptr);
    EXPECT_THAT(context->workers<SpecialWorker>(), ElementsAre(a1, a2));
    EXPECT_THAT(names, ElementsAre("A1", "A1", "A2"));
}

TEST(AbstractContext, LetsErrorsOfPerformPass)
{
    auto diary = Diary();
    const auto context = make<DiaryContext>(
        diary, "context", Workers{make<DiaryWorker>(diary, "A"), make<DiaryWorker>(diary, "B")});
    auto names = std::vector<std::string>();
    const auto fail = [&](DiaryWorker& worker) {
        names.push_back(worker.name());
        throw std::out_of_range("perform");
    };

    EXPECT_THROW(context->withFirstWorker<DiaryWorker>(fail), std::out_of_range);
    EXPECT_THROW(context->withWorkers<DiaryWorker>(fail), std::out_of_range);
    EXPECT_THAT(names, ElementsAre("A", "A"));
}

TEST(AbstractContext, DrivesItsOwnListWhateverAnOverrideShows)
{
    class Secretive : public DiaryContext {
    public:
        using DiaryContext::DiaryContext;
        using DiaryContext::workers;
        Workers workers() const override { return {}; }
    };
    auto diary = Diary();
    const auto worker = make<DiaryWorker>(diary);
    const auto context = make<Secretive>(diary, "context", Workers{worker});

    context->activate();

    EXPECT_THAT(context->workers(), IsEmpty());
    EXPECT_THAT(context->workers<DiaryWorker>(), ElementsAre(worker));
    EXPECT_TRUE(worker->isWorking());
}

TEST(AbstractContext, BelievesAnOverrideThatSaysItIsActiveAlready)
{
    class AlwaysActive : public DiaryContext {
    public:
        using DiaryContext::DiaryContext;
        bool isActive() const override { return true; }
    };
    auto diary = Diary();
    const auto context = make<AlwaysActive>(diary);

    context->activate();
    context->deactivate();

    EXPECT_THAT(diary, ElementsAre("context resigns"));
}

TEST(AbstractContext, IsCreatedByMakeAlone) { EXPECT_TRUE(std::is_abstract_v<AbstractContext<Tracker>>); }

TEST(AbstractContextDeathTest, NeedsAnalyticsThatAreAWorker)
{
    EXPECT_DEATH((void)make<AbstractContext<Tracker>>(Workers(), std::make_shared<IdleTracker>()),
        "Fatal error: Could not convert value of type 'IdleTracker' to 'Worker': file Utilities/Discover");
}

TEST(AbstractContextDeathTest, NeedsAnalytics)
{
    EXPECT_DEATH((void)make<AbstractContext<Tracker>>(Workers(), nullptr),
        "Fatal error: Could not convert value of type 'Tracker' to 'Worker': file Utilities/Discover");
    EXPECT_DEATH((void)make<AbstractContext<DiaryWorker>>(Workers(), nullptr),
        "Fatal error: Could not convert value of type 'DiaryWorker' to 'Worker': file Utilities/Discover");
}

TEST(AbstractContextDeathTest, NeedsAnalyticsOfAClassThatCanBeAWorker)
{
    struct Plain {};

    EXPECT_DEATH((void)make<AbstractContext<Plain>>(Workers(), std::make_shared<Plain>()),
        "Could not convert value of type 'Plain' to 'Worker'");
}

TEST(AbstractContextDeathTest, AHookThatThrowsAtTheEndEndsTheProcess)
{
    class Failing : public DiaryContext {
    public:
        using DiaryContext::DiaryContext;
        bool fails = true;

    protected:
        void willResignActive() override
        {
            if (fails)
                throw std::runtime_error("cannot resign");
        }
    };
    auto diary = Diary();
    auto context = make<Failing>(diary);
    context->activate();

    EXPECT_DEATH(context.reset(), "cannot resign");

    context->fails = false;
}

} // namespace
