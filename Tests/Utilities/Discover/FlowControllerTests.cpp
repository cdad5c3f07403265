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

TEST(FlowController, StartsWhatIsAttachedAndEndsWhatIsDetached)
{
    auto diary = Diary();

    //! [Attaching and detaching]
    const auto controller = make<FlowController>();
    const auto search = make<DiaryFlow>(diary, "search");
    const auto settings = make<SpecialFlow>(diary, "settings");

    controller->attach(search);
    controller->attach(settings);
    controller->detach(search);
    controller->detach<SpecialFlow>([](SpecialFlow& flow) { return flow.name() == "settings"; });
    //! [Attaching and detaching]

    EXPECT_THAT(diary,
        ElementsAre("search context became active", "search started", "settings context became active",
            "settings started", "search context resigns", "settings context resigns"));
    EXPECT_THAT(controller->flows(), IsEmpty());
}

TEST(FlowController, AttachesTheSameFlowOnce)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = foreignFlow(diary);
    auto starts = 0;
    flow->onStart = [&] { ++starts; };

    controller->attach(flow);
    controller->attach(flow);

    EXPECT_EQ(starts, 1);
    EXPECT_THAT(controller->flows(), ElementsAre(flow));
}

TEST(FlowController, AttachesAFlowThatEndedMeanwhileOnceAndDoesNotStartItAgain)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = foreignFlow(diary);
    auto starts = 0;
    flow->onStart = [&] { ++starts; };
    controller->attach(flow);
    flow->end();

    controller->attach(flow);

    EXPECT_EQ(starts, 1);
    EXPECT_THAT(controller->flows(), ElementsAre(flow));
}

TEST(FlowController, NeitherAttachesNorStartsAFlowThatIsActive)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = foreignFlow(diary);
    auto starts = 0;
    flow->onStart = [&] { ++starts; };
    flow->_context()->activate();

    controller->attach(flow);

    EXPECT_EQ(starts, 0);
    EXPECT_THAT(controller->flows(), IsEmpty());
}

TEST(FlowController, ShowsAFlowThatIsStarting)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = foreignFlow(diary);
    auto seen = Flows();
    flow->onStart = [&] { seen = controller->flows(); };

    controller->attach(flow);

    EXPECT_THAT(seen, ElementsAre(flow));
}

TEST(FlowController, ShowsAFlowThatIsEnding)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = foreignFlow(diary);
    auto seen = Flows();
    flow->onEnd = [&] { seen = controller->flows(); };
    controller->attach(flow);

    controller->detach(flow);

    EXPECT_THAT(seen, ElementsAre(flow));
    EXPECT_THAT(controller->flows(), IsEmpty());
}

TEST(FlowController, KeepsAFlowWhoseStartThrows)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = foreignFlow(diary);
    flow->onStart = [] { throw std::runtime_error("start"); };

    EXPECT_THROW(controller->attach(flow), std::runtime_error);
    EXPECT_THAT(controller->flows(), ElementsAre(flow));
}

TEST(FlowController, KeepsAFlowThatIsInactiveWhenItIsDetached)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = foreignFlow(diary);
    auto ends = 0;
    controller->attach(flow);
    flow->end();
    flow->onEnd = [&] { ++ends; };

    controller->detach(flow);

    EXPECT_EQ(ends, 0);
    EXPECT_THAT(controller->flows(), ElementsAre(flow));
}

TEST(FlowController, DoesNotEndAFlowThatIsNotAttached)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto attached = make<DiaryFlow>(diary, "attached");
    const auto stranger = make<DiaryFlow>(diary, "stranger");
    controller->attach(attached);
    stranger->start();

    controller->detach(stranger);

    EXPECT_TRUE(stranger->context()->isActive());
    EXPECT_THAT(controller->flows(), ElementsAre(attached));
}

TEST(FlowController, DetachesTwiceWithoutEffect)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = make<DiaryFlow>(diary);
    controller->attach(flow);
    controller->detach(flow);
    diary.clear();

    controller->detach(flow);

    EXPECT_THAT(diary, IsEmpty());
}

TEST(FlowController, KeepsTheOrderOfTheOthersWhenOneIsDetached)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto a = make<DiaryFlow>(diary, "A");
    const auto b = make<DiaryFlow>(diary, "B");
    const auto c = make<DiaryFlow>(diary, "C");
    for (const auto& flow : {a, b, c})
        controller->attach(flow);

    controller->detach(b);

    EXPECT_THAT(controller->flows(), ElementsAre(a, c));
}

TEST(FlowController, AttachesADetachedFlowAgainAtTheEnd)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto a = make<DiaryFlow>(diary, "A");
    const auto b = make<DiaryFlow>(diary, "B");
    controller->attach(a);
    controller->attach(b);
    controller->detach(a);

    controller->attach(a);

    EXPECT_TRUE(a->context()->isActive());
    EXPECT_THAT(controller->flows(), ElementsAre(b, a));
}

TEST(FlowController, KnowsAFlowByItsObjectNotByItsInterface)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = make<NamedFlow>(diary, "flow");
    const auto named = Ref<Named>(flow);
    controller->attach(flow);
    diary.clear();

    controller->attach(std::dynamic_pointer_cast<Flow>(named));
    controller->detach(std::dynamic_pointer_cast<Flow>(named));

    EXPECT_THAT(diary, ElementsAre("flow context resigns"));
    EXPECT_THAT(controller->flows(), IsEmpty());
}

TEST(FlowController, EndsItsFlowsFirstToLastAtItsEnd)
{
    auto diary = Diary();
    auto controller = make<FlowController>();
    for (const auto* name : {"A", "B", "C"})
        controller->attach(make<DiaryFlow>(diary, name));
    diary.clear();

    controller.reset();

    EXPECT_THAT(diary, ElementsAre("A context resigns", "B context resigns", "C context resigns"));
}

TEST(FlowController, LeavesInactiveFlowsAloneAtItsEnd)
{
    auto diary = Diary();
    auto controller = make<FlowController>();
    const auto flow = foreignFlow(diary);
    auto ends = 0;
    controller->attach(flow);
    flow->end();
    flow->onEnd = [&] { ++ends; };

    controller.reset();

    EXPECT_EQ(ends, 0);
    EXPECT_EQ(flow.use_count(), 1);
}

TEST(FlowController, EndsEachFlowOnceAtItsEndWhenFlowsDetachOneAnother)
{
    auto diary = Diary();
    auto controller = make<FlowController>();
    auto& reference = *controller;
    const auto a = foreignFlow(diary);
    const auto b = foreignFlow(diary);
    controller->attach(a);
    controller->attach(b);
    auto ended = std::vector<std::string>();
    a->onEnd = [&] {
        ended.push_back("A");
        reference.detach(b);
    };
    b->onEnd = [&] { ended.push_back("B"); };

    controller.reset();

    EXPECT_THAT(ended, ElementsAre("A", "B"));
}

TEST(FlowController, LetsGoOfAFlowThatIsAttachedDuringItsEnd)
{
    auto diary = Diary();
    auto controller = make<FlowController>();
    auto& reference = *controller;
    const auto flow = foreignFlow(diary);
    controller->attach(flow);
    flow->onEnd = [&] { reference.attach(make<DiaryFlow>(diary, "late")); };
    diary.clear();

    controller.reset();

    EXPECT_THAT(diary,
        ElementsAre("late context became active", "late started", "context resigns", "late context resigns"));
}

TEST(FlowController, EndsOnTheStackAsWell)
{
    auto diary = Diary();
    const auto flow = make<DiaryFlow>(diary, "flow");

    {
        auto controller = Object<FlowController>();
        controller.attach(flow);
    }

    EXPECT_FALSE(flow->context()->isActive());
}

std::vector<std::tuple<Trace::Kind, std::string, std::string>> traced;

TEST(FlowController, ReportsWhatItAttachesAndDetachesInTheDiagnosticBuildOnly)
{
    auto diary = Diary();
    const auto controller = make<FlowController>();
    const auto flow = make<DiaryFlow>(diary);
    Trace::onEvent([](const Trace::Event& event) {
        if (event.kind == Trace::Kind::Attach || event.kind == Trace::Kind::Detach)
            traced.emplace_back(event.kind, event.subject, event.site.function());
    });

    controller->attach(flow);
    controller->attach(flow);
    controller->detach<DiaryFlow>(always);
    controller->detach(flow);
    Trace::onEvent(nullptr);

#ifdef ORRENBY_DIAGNOSTICS
    EXPECT_THAT(traced,
        ElementsAre(std::tuple(Trace::Kind::Attach, "DiaryFlow", "TestBody"),
            std::tuple(Trace::Kind::Detach, "DiaryFlow", "TestBody")));
#else
    EXPECT_THAT(traced, IsEmpty());
#endif
}

TEST(FlowControllerDeathTest, TakesNoEmptyReference)
{
    const auto controller = make<FlowController>();

    EXPECT_DEATH(controller->attach(nullptr),
        "Fatal error: Empty reference in place of a flow: file Utilities/Discover");
    EXPECT_DEATH(controller->detach(Ref<Flow>()),
        "Fatal error: Empty reference in place of a flow: file Utilities/Discover");
}

TEST(FlowControllerDeathTest, TakesNoFlowWithoutAContext)
{
    const auto controller = make<FlowController>();
    const auto flow = std::make_shared<ForeignFlow>(nullptr);

    EXPECT_DEATH(controller->attach(flow), "Fatal error: Flow without a context: file Utilities/Discover");
}

} // namespace
