#include "Orrenby/Utilities/Discover/FlowController.hpp"

#include "Tests/Support/DiscoverParts.hpp"
#include <functional>
#include <gmock/gmock.h>
#include <stdexcept>
#include <tuple>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryContext;
using orrenby::testing::DiaryFlow;
using orrenby::testing::foreignFlow;
using orrenby::testing::ForeignFlow;
using orrenby::testing::Named;
using orrenby::testing::NamedFlow;
using orrenby::testing::SpecialFlow;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const auto always = [](const Flow&) { return true; };

TEST(FlowController, DetachesFlowsOfATypeLastToFirst)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    for (const auto* name : {"A", "B", "C"})
        controller->attach(make<DiaryFlow>(diary, name));
    diary.clear();

    controller->detach<DiaryFlow>(always);

    EXPECT_THAT(diary, ElementsAre("C context resigns", "B context resigns", "A context resigns"));
    EXPECT_THAT(controller->flows(), IsEmpty());
}

TEST(FlowController, AsksThePredicateOnlyAboutFlowsOfTheType)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto a = make<SpecialFlow>(diary, "A");
    const auto b = make<DiaryFlow>(diary, "B");
    const auto c = make<SpecialFlow>(diary, "C");
    for (const auto& flow : Flows{a, b, c})
        controller->attach(flow);
    auto asked = std::vector<std::string>();

    controller->detach<SpecialFlow>([&](const Ref<SpecialFlow>& flow) {
        asked.push_back(flow->name());
        return flow == a;
    });

    EXPECT_THAT(asked, ElementsAre("C", "A"));
    EXPECT_THAT(controller->flows(), ElementsAre(b, c));
}

TEST(FlowController, AsksThePredicateAboutInactiveFlowsButLeavesThem)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = make<DiaryFlow>(diary);
    controller->attach(flow);
    flow->end();
    auto asked = 0;

    controller->detach<DiaryFlow>([&](DiaryFlow&) { return ++asked > 0; });

    EXPECT_EQ(asked, 1);
    EXPECT_THAT(controller->flows(), ElementsAre(flow));
}

TEST(FlowController, DetachesNothingWhenEmpty)
{
    const auto controller = make<FlowController>();
    auto asked = 0;

    controller->detach<Flow>([&](Flow&) { return ++asked > 0; });

    EXPECT_EQ(asked, 0);
}

TEST(FlowController, WalksASnapshotWhileFlowsDetachOneAnother)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto a = foreignFlow(diary);
    const auto b = foreignFlow(diary);
    const auto c = foreignFlow(diary);
    for (const auto& flow : {a, b, c})
        controller->attach(flow);
    auto ended = std::vector<std::string>();
    a->onEnd = [&] { ended.push_back("A"); };
    b->onEnd = [&] { ended.push_back("B"); };
    c->onEnd = [&] {
        ended.push_back("C");
        controller->detach(b);
    };
    auto asked = 0;

    controller->detach<ForeignFlow>([&](ForeignFlow&) { return ++asked > 0; });

    EXPECT_THAT(ended, ElementsAre("C", "B", "A"));
    EXPECT_EQ(asked, 3);
    EXPECT_THAT(controller->flows(), IsEmpty());
}

TEST(FlowController, LeavesFlowsAloneThatComeDuringTheWalk)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto newcomer = make<DiaryFlow>(diary, "newcomer");
    controller->attach(make<DiaryFlow>(diary, "A"));

    controller->detach<DiaryFlow>([&](DiaryFlow&) {
        controller->attach(newcomer);
        return true;
    });

    EXPECT_TRUE(newcomer->context()->isActive());
    EXPECT_THAT(controller->flows(), ElementsAre(newcomer));
}

TEST(FlowController, LetsErrorsOfThePredicatePass)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = make<DiaryFlow>(diary);
    controller->attach(flow);

    EXPECT_THROW(controller->detach<DiaryFlow>([](DiaryFlow&) -> bool { throw 7; }), int);
    EXPECT_THAT(controller->flows(), ElementsAre(flow));
}

TEST(FlowController, FindsFlowsByTypeInTheirOrder)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto a1 = make<SpecialFlow>(diary, "A1");
    const auto b = make<NamedFlow>(diary, "B");
    const auto a2 = make<SpecialFlow>(diary, "A2");
    for (const auto& flow : Flows{a1, b, a2})
        controller->attach(flow);

    EXPECT_EQ(controller->firstFlow<SpecialFlow>(), a1);
    EXPECT_EQ(controller->firstFlow<Named>(), b);
    EXPECT_EQ(controller->firstFlow<ForeignFlow>(), nullptr);
    EXPECT_THAT(controller->flows<SpecialFlow>(), ElementsAre(a1, a2));
    EXPECT_THAT(controller->flows<DiaryFlow>(), ElementsAre(a1, b, a2));
    EXPECT_THAT(controller->flows<ForeignFlow>(), IsEmpty());
}

TEST(FlowController, PerformsWithTheFirstFlowOfATypeOnce)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    controller->attach(make<NamedFlow>(diary, "A"));
    controller->attach(make<NamedFlow>(diary, "B"));
    auto titles = std::vector<std::string>();

    controller->withFirstFlow<Named>([&](Named& flow) { titles.push_back(flow.title()); });

    EXPECT_THAT(titles, ElementsAre("named A"));
}

TEST(FlowController, PerformsNothingWithoutAFlowOfTheType)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    controller->attach(make<DiaryFlow>(diary));
    auto calls = 0;

    controller->withFirstFlow<SpecialFlow>([&](SpecialFlow&) { ++calls; });
    controller->withFlows<SpecialFlow>([&](SpecialFlow&) { ++calls; });

    EXPECT_EQ(calls, 0);
}

TEST(FlowController, PerformsWithAllFlowsOfATypeAsTheyWereBefore)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    for (const auto* name : {"A", "B"})
        controller->attach(make<DiaryFlow>(diary, name));
    auto names = std::vector<std::string>();

    controller->withFlows<DiaryFlow>([&](const Ref<DiaryFlow>& flow) {
        controller->attach(make<DiaryFlow>(diary, "newcomer"));
        controller->detach<DiaryFlow>(always);
        names.push_back(flow->name());
    });

    EXPECT_THAT(names, ElementsAre("A", "B"));
}

TEST(FlowController, HoldsAFlowWhilePerformDetachesIt)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    controller->attach(make<DiaryFlow>(diary, "A"));
    auto name = std::string();

    controller->withFirstFlow<DiaryFlow>([&](DiaryFlow& flow) {
        controller->detach<DiaryFlow>(always);
        name = flow.name();
    });

    EXPECT_EQ(name, "A");
    EXPECT_THAT(controller->flows(), IsEmpty());
}

TEST(FlowController, LetsErrorsOfPerformPass)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    for (const auto* name : {"A", "B", "C"})
        controller->attach(make<DiaryFlow>(diary, name));
    auto names = std::vector<std::string>();
    const auto failAtB = [&](DiaryFlow& flow) {
        names.push_back(flow.name());
        if (flow.name() == "B")
            throw std::out_of_range("B");
    };

    EXPECT_THROW(controller->withFlows<DiaryFlow>(failAtB), std::out_of_range);
    EXPECT_THAT(names, ElementsAre("A", "B"));
    EXPECT_THROW(controller->withFirstFlow<DiaryFlow>([](DiaryFlow&) { throw 7; }), int);
}

} // namespace
