#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"

#include "Tests/Support/DiscoverParts.hpp"
#include <functional>
#include <gmock/gmock.h>
#include <stdexcept>
#include <type_traits>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryContext;
using orrenby::testing::DiaryFlow;
using orrenby::testing::DiaryPart;
using orrenby::testing::DiaryWorker;
using orrenby::testing::SpecialFlow;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const auto always = [](const Flow&) { return true; };

/// A context that an application hides behind an interface of its own.
class FeedState {
public:
    virtual ~FeedState() = default;
    virtual int unread() const = 0;
};

class FeedContext : public DiaryContext, public FeedState {
public:
    using DiaryContext::DiaryContext;
    int unread() const override { return 3; }
};

class OtherState : public FeedState {
public:
    int unread() const override { return 0; }
};

/// Calls a function in its hook.
class HookedFlow : public DiaryFlow {
public:
    using DiaryFlow::DiaryFlow;
    std::function<void()> onStart = [] {};

protected:
    void didStart() override
    {
        DiaryFlow::didStart();
        onStart();
    }
};

/// Calls a function when its context resigns.
class HookedContext : public DiaryContext {
public:
    using DiaryContext::DiaryContext;
    std::function<void()> onResign = [] {};

protected:
    void willResignActive() override
    {
        DiaryContext::willResignActive();
        const auto hook = onResign; // which may replace itself
        hook();
    }
};

TEST(AbstractFlow, StartsItsContextAndItsSubFlows)
{
    auto diary = Diary();

    //! [Writing a flow]
    class HomeFlow : public AbstractFlow<DiaryContext, std::string> {
    public:
        HomeFlow(Diary& diary, std::string view)
            : AbstractFlow(make<DiaryContext>(diary, "home"), std::move(view))
            , m_feed(make<DiaryFlow>(diary, "feed"))
        {}

    protected:
        void didStart() override { attach(m_feed); }

    private:
        Ref<Flow> m_feed;
    };

    const auto home = make<HomeFlow>(diary, "the window");
    home->start();
    //! [Writing a flow]

    EXPECT_THAT(diary, ElementsAre("home became active", "feed context became active", "feed started"));
    EXPECT_EQ(home->subFlows().size(), 1u);
}

TEST(AbstractFlow, KeepsWhatItWasMadeWith)
{
    auto diary = Diary();
    const auto context = make<DiaryContext>(diary);
    const auto flow = make<AbstractFlow<DiaryContext, std::string>>(context, "view");

    EXPECT_EQ(flow->context(), context);
    EXPECT_EQ(flow->_context(), context);
    EXPECT_EQ(flow->viewController(), "view");
    EXPECT_THAT(flow->subFlows(), IsEmpty());
    EXPECT_FALSE(context->isActive());
}

TEST(AbstractFlow, FindsTheContextBehindAnyInterface)
{
    auto diary = Diary();
    const auto context = make<FeedContext>(diary);
    const auto flow = make<AbstractFlow<FeedState, int>>(context, 0);

    flow->start();

    EXPECT_TRUE(context->isActive());
    EXPECT_EQ(flow->context()->unread(), 3);
    EXPECT_TRUE(isSameObject(flow->_context(), context));
}

TEST(AbstractFlow, StartedTwiceItStartsOnce)
{
    auto diary = Diary();
    const auto flow = make<DiaryFlow>(diary);

    flow->start();
    flow->start();

    EXPECT_THAT(diary, ElementsAre("flow context became active", "flow started"));
}

TEST(AbstractFlow, DoesNotStartOverAContextThatIsActive)
{
    auto diary = Diary();
    const auto flow = make<DiaryFlow>(diary);
    flow->context()->activate();

    flow->start();

    EXPECT_THAT(diary, ElementsAre("flow context became active"));
}

TEST(AbstractFlow, StartsWhenItsContextAndWorkersRun)
{
    auto diary = Diary();
    const auto worker = make<DiaryWorker>(diary);
    const auto flow = make<HookedFlow>(diary, "flow", Workers{worker});
    auto active = false;
    flow->onStart = [&] { active = flow->context()->isActive() && worker->isWorking(); };

    flow->start();

    EXPECT_TRUE(active);
    EXPECT_THAT(diary, ElementsAre("flow context became active", "worker started", "flow started"));
    flow->onStart = [] {};
}

TEST(AbstractFlow, EndedWhileInactiveItDoesNothing)
{
    auto diary = Diary();
    const auto flow = make<DiaryFlow>(diary);

    flow->end();

    EXPECT_THAT(diary, IsEmpty());
}

TEST(AbstractFlow, EndedTwiceItEndsOnce)
{
    auto diary = Diary();
    const auto flow = make<DiaryFlow>(diary);
    flow->start();
    diary.clear();

    flow->end();
    flow->end();

    EXPECT_THAT(diary, ElementsAre("flow context resigns"));
}

TEST(AbstractFlow, StartsAgainAfterItsEnd)
{
    auto diary = Diary();
    const auto flow = make<DiaryFlow>(diary);
    flow->start();
    flow->end();
    diary.clear();

    flow->start();

    EXPECT_THAT(diary, ElementsAre("flow context became active", "flow started"));
}

TEST(AbstractFlow, LeavesSubFlowsAttachedAndActiveWhenItEnds)
{
    auto diary = Diary();
    const auto parent = make<DiaryFlow>(diary, "parent");
    const auto child = make<DiaryFlow>(diary, "child");
    parent->start();
    parent->attach(child);

    parent->end();

    EXPECT_TRUE(child->context()->isActive());
    EXPECT_THAT(parent->subFlows(), ElementsAre(child));
}

TEST(AbstractFlow, AttachesSubFlowsEvenWhileItIsNotStarted)
{
    auto diary = Diary();
    const auto parent = make<DiaryFlow>(diary, "parent");
    const auto child = make<DiaryFlow>(diary, "child");

    parent->attach(child);

    EXPECT_FALSE(parent->context()->isActive());
    EXPECT_TRUE(child->context()->isActive());
}

TEST(AbstractFlow, PassesOnToItsController)
{
    auto diary = Diary();
    const auto parent = make<DiaryFlow>(diary, "parent");
    const auto a1 = make<SpecialFlow>(diary, "A1");
    const auto b = make<DiaryFlow>(diary, "B");
    const auto a2 = make<SpecialFlow>(diary, "A2");
    auto names = std::vector<std::string>();
    const auto note = [&](SpecialFlow& flow) { names.push_back(flow.name()); };

    for (const auto& flow : Flows{a1, b, a2, a2})
        parent->attach(flow);
    parent->withFirstSubFlow<SpecialFlow>(note);
    parent->withSubFlows<SpecialFlow>(note);

    EXPECT_THAT(parent->subFlows(), ElementsAre(a1, b, a2));
    EXPECT_EQ(parent->firstSubFlow<SpecialFlow>(), a1);
    EXPECT_EQ(parent->firstSubFlow<HookedFlow>(), nullptr);
    EXPECT_THAT(parent->subFlows<SpecialFlow>(), ElementsAre(a1, a2));
    EXPECT_THAT(names, ElementsAre("A1", "A1", "A2"));
}

TEST(AbstractFlow, DetachesSubFlowsOneByOneAndByType)
{
    auto diary = Diary();
    const auto parent = make<DiaryFlow>(diary, "parent");
    const auto a = make<SpecialFlow>(diary, "A");
    const auto b = make<DiaryFlow>(diary, "B");
    const auto c = make<SpecialFlow>(diary, "C");
    for (const auto& flow : Flows{a, b, c})
        parent->attach(flow);
    diary.clear();

    parent->detach<SpecialFlow>([](const Ref<SpecialFlow>&) { return true; });
    parent->detach(b);

    EXPECT_THAT(diary, ElementsAre("C context resigns", "A context resigns", "B context resigns"));
    EXPECT_THAT(parent->subFlows(), IsEmpty());
}

TEST(AbstractFlow, LetsErrorsOfPerformPass)
{
    auto diary = Diary();
    const auto parent = make<DiaryFlow>(diary, "parent");
    parent->attach(make<DiaryFlow>(diary, "A"));
    parent->attach(make<DiaryFlow>(diary, "B"));
    auto names = std::vector<std::string>();
    const auto fail = [&](DiaryFlow& flow) {
        names.push_back(flow.name());
        throw std::out_of_range("perform");
    };

    EXPECT_THROW(parent->withFirstSubFlow<DiaryFlow>(fail), std::out_of_range);
    EXPECT_THROW(parent->withSubFlows<DiaryFlow>(fail), std::out_of_range);
    EXPECT_THAT(names, ElementsAre("A", "A"));
}

TEST(AbstractFlow, SearchesItsOwnListWhateverAnOverrideShows)
{
    class Secretive : public DiaryFlow {
    public:
        using DiaryFlow::DiaryFlow;
        using DiaryFlow::subFlows;
        Flows subFlows() const override { return {}; }
    };
    auto diary = Diary();
    const auto parent = make<Secretive>(diary, "parent");
    const auto child = make<DiaryFlow>(diary, "child");

    parent->attach(child);

    EXPECT_THAT(parent->subFlows(), IsEmpty());
    EXPECT_THAT(parent->subFlows<DiaryFlow>(), ElementsAre(child));
}

TEST(AbstractFlow, MayAttachMoreFlowsToItsParentWhileItStarts)
{
    auto diary = Diary();
    const auto parent = make<DiaryFlow>(diary, "parent");
    const auto first = make<HookedFlow>(diary, "first");
    const auto second = make<DiaryFlow>(diary, "second");
    first->onStart = [&] { parent->attach(second); };

    parent->attach(first);

    EXPECT_THAT(parent->subFlows(), ElementsAre(first, second));
    EXPECT_TRUE(second->context()->isActive());
}

TEST(AbstractFlow, MayDetachItselfWhileItStarts)
{
    auto diary = Diary();
    const auto parent = make<DiaryFlow>(diary, "parent");
    auto child = make<HookedFlow>(diary, "child");
    child->onStart = [&, flow = child.get()] {
        parent->detach<DiaryFlow>([&](DiaryFlow& other) { return &other == flow; });
    };

    parent->attach(std::move(child));

    EXPECT_THAT(diary, ElementsAre("child context became active", "child started", "child context resigns"));
    EXPECT_THAT(parent->subFlows(), IsEmpty());
}

TEST(AbstractFlow, MayLoseItsLastReferenceWhileASubFlowEnds)
{
    auto diary = Diary();
    const auto context = make<HookedContext>(diary, "child");
    auto parent = make<DiaryFlow>(diary, "parent");
    parent->start();
    parent->attach(make<AbstractFlow<DiaryContext, int>>(context, 0));
    context->onResign = [&] {
        context->onResign = [] {};
        parent.reset();
    };
    diary.clear();
    auto& reference = *parent;

    reference.detach<Flow>(always);

    EXPECT_EQ(parent, nullptr);
    EXPECT_FALSE(context->isActive());
    EXPECT_THAT(diary, ElementsAre("child resigns", "child resigns", "parent context resigns"));
}

TEST(AbstractFlow, ReleasedItEndsSubFlowsFirstToLastThenItsContext)
{
    auto diary = Diary();
    auto parent = make<DiaryFlow>(diary, "parent");
    parent->start();
    for (const auto* name : {"A", "B"})
        parent->attach(make<DiaryFlow>(diary, name));
    diary.clear();

    parent.reset();

    EXPECT_THAT(diary, ElementsAre("A context resigns", "B context resigns", "parent context resigns"));
}

TEST(AbstractFlow, ReleasedItEndsSubFlowsThatOthersHold)
{
    auto diary = Diary();
    auto parent = make<DiaryFlow>(diary, "parent");
    const auto child = make<DiaryFlow>(diary, "child");
    parent->attach(child);

    parent.reset();

    EXPECT_FALSE(child->context()->isActive());
}

TEST(AbstractFlow, ReleasedItDeactivatesAContextThatOthersHold)
{
    auto diary = Diary();
    const auto context = make<DiaryContext>(diary);
    auto flow = make<AbstractFlow<DiaryContext, int>>(context, 0);
    context->activate();

    flow.reset();

    EXPECT_FALSE(context->isActive());
}

TEST(AbstractFlow, ReleasedWithoutAStartItCallsNoHook)
{
    auto diary = Diary();
    auto flow = make<DiaryFlow>(diary);

    flow.reset();

    EXPECT_THAT(diary, IsEmpty());
}

TEST(AbstractFlow, LetsGoOfContextThenViewControllerThenSubFlows)
{
    class PartContext : public DiaryContext {
    public:
        explicit PartContext(Diary& diary)
            : DiaryContext(diary)
            , m_part(diary, "context gone")
        {}

    private:
        DiaryPart m_part;
    };
    using PartFlow = AbstractFlow<PartContext, Ref<DiaryPart>>;
    auto diary = Diary();
    auto flow = make<PartFlow>(make<PartContext>(diary), std::make_shared<DiaryPart>(diary, "view gone"));
    auto child = make<AbstractFlow<DiaryContext, Ref<DiaryPart>>>(
        make<DiaryContext>(diary), std::make_shared<DiaryPart>(diary, "sub-flow gone"));
    flow->attach(child);
    child->end(); // so that it stays attached until the list itself goes away
    child.reset();
    diary.clear();

    flow.reset();

    EXPECT_THAT(diary, ElementsAre("context gone", "view gone", "sub-flow gone"));
}

TEST(AbstractFlow, IsWholeInHooksAtItsEndButNobodyCanHoldIt)
{
    auto diary = Diary();
    const auto context = make<HookedContext>(diary, "context");
    auto flow = make<AbstractFlow<HookedContext, std::string>>(context, "view");
    flow->start();
    const auto weak = WeakRef<Flow>(flow);
    context->onResign = [&, address = flow.get()] {
        diary.push_back(address->viewController() + (weak.lock() ? " held" : " alone"));
    };
    diary.clear();

    flow.reset();

    EXPECT_THAT(diary, ElementsAre("context resigns", "view alone"));
}

TEST(AbstractFlow, EndsOnTheStackAsWell)
{
    auto diary = Diary();

    {
        auto flow = Object<DiaryFlow>(diary);
        flow.start();
    }

    EXPECT_THAT(diary, ElementsAre("flow context became active", "flow started", "flow context resigns"));
}

TEST(AbstractFlow, IsCreatedByMakeAlone)
{
    EXPECT_TRUE((std::is_abstract_v<AbstractFlow<DiaryContext, int>>));
}

TEST(AbstractFlowDeathTest, NeedsAContext)
{
    using NumberFlow = AbstractFlow<int, int>;
    using StateFlow = AbstractFlow<FeedState, int>;
    using PlainFlow = AbstractFlow<DiaryContext, int>;

    EXPECT_DEATH((void)make<NumberFlow>(std::make_shared<int>(1), 0),
        "Fatal error: Could not convert value of type 'Int32' to 'Context': file Utilities/Discover");
    EXPECT_DEATH((void)make<StateFlow>(std::make_shared<OtherState>(), 0),
        "Fatal error: Could not convert value of type 'OtherState' to 'Context': file Utilities/Discover");
    EXPECT_DEATH((void)make<PlainFlow>(nullptr, 0),
        "Fatal error: Could not convert value of type 'DiaryContext' to 'Context': file Utilities/Discover");
}

TEST(AbstractFlowDeathTest, AHookThatThrowsAtTheEndEndsTheProcess)
{
    auto diary = Diary();
    const auto context = make<HookedContext>(diary);
    auto flow = make<AbstractFlow<DiaryContext, int>>(context, 0);
    flow->start();
    context->onResign = [] { throw std::runtime_error("cannot resign"); };

    EXPECT_DEATH(flow.reset(), "cannot resign");

    context->onResign = [] {};
}

TEST(AbstractFlowDeathTest, HasNoViewControllerInADestructor)
{
    class Late : public DiaryFlow {
    public:
        using DiaryFlow::DiaryFlow;
        ~Late() override
        {
            if (readsTooLate)
                (void)viewController().size();
        }
        bool readsTooLate = true;
    };
    auto diary = Diary();
    auto flow = make<Late>(diary);

    EXPECT_DEATH(
        flow.reset(), "Fatal error: Use of a value after the end of its owner: file Utilities/Discover");

    flow->readsTooLate = false;
}

} // namespace
