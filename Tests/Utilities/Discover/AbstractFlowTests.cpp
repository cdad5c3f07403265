#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"

#include "Tests/Support/DiscoverParts.hpp"
#include "Tests/Utilities/Discover/HookedFlowParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryContext;
using orrenby::testing::DiaryFlow;
using orrenby::testing::DiaryWorker;
using orrenby::testing::HookedFlow;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

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

} // namespace

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
