#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"

#include "Tests/Support/DiscoverParts.hpp"
#include "Tests/Utilities/Discover/HookedFlowParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <string>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryContext;
using orrenby::testing::DiaryFlow;
using orrenby::testing::DiaryPart;
using orrenby::testing::HookedContext;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
