#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"

#include "Tests/Support/DiscoverParts.hpp"
#include "Tests/Utilities/Discover/HookedFlowParts.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryContext;
using orrenby::testing::DiaryFlow;
using orrenby::testing::HookedContext;
using orrenby::testing::HookedFlow;
using orrenby::testing::SpecialFlow;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const auto always = [](const Flow&) { return true; };

} // namespace

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
