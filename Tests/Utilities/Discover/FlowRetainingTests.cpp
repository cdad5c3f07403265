#include "Orrenby/Utilities/Discover/FlowRetaining.hpp"

#include "Orrenby/Testing/TestAccess.hpp"
#include "Tests/Support/DiscoverParts.hpp"
#include <gtest/gtest.h>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryFlow;
using orrenby::testing::TestAccess;

namespace {

//! [Keeping ended sub-flows]
class TabFlow : public DiaryFlow, public FlowRetaining {
public:
    using DiaryFlow::DiaryFlow;
};
//! [Keeping ended sub-flows]

class SpecialTabFlow : public TabFlow {
public:
    using TabFlow::TabFlow;
};

class RetainingInside : public DiaryFlow, private FlowRetaining {
public:
    using DiaryFlow::DiaryFlow;
};

TEST(FlowRetaining, LeavesLeakDetectionOnWhereItIsAbsent)
{
    auto diary = Diary();

    EXPECT_TRUE(TestAccess::isFlowLeakDetectionEnabled(*make<DiaryFlow>(diary)));
    EXPECT_TRUE(TestAccess::isFlowLeakDetectionEnabled(*make<FlowController>()));
}

TEST(FlowRetaining, SwitchesLeakDetectionOffForTheSubFlowsOfItsClass)
{
    auto diary = Diary();

    EXPECT_FALSE(TestAccess::isFlowLeakDetectionEnabled(*make<TabFlow>(diary)));
}

TEST(FlowRetaining, HoldsForSubclassesToo)
{
    auto diary = Diary();

    EXPECT_FALSE(TestAccess::isFlowLeakDetectionEnabled(*make<SpecialTabFlow>(diary)));
}

TEST(FlowRetaining, HoldsWhereItIsAPrivateBase)
{
    auto diary = Diary();

    EXPECT_FALSE(TestAccess::isFlowLeakDetectionEnabled(*make<RetainingInside>(diary)));
}

TEST(FlowRetaining, HoldsForFlowsOnTheStack)
{
    auto diary = Diary();
    const auto retaining = Object<TabFlow>(diary);
    const auto plain = Object<DiaryFlow>(diary);

    EXPECT_FALSE(TestAccess::isFlowLeakDetectionEnabled(retaining));
    EXPECT_TRUE(TestAccess::isFlowLeakDetectionEnabled(plain));
}

TEST(FlowRetaining, SaysNothingAboutTheSubFlowsOwnSubFlows)
{
    auto diary = Diary();
    const auto tabs = make<TabFlow>(diary);
    const auto child = make<DiaryFlow>(diary);

    tabs->attach(child);

    EXPECT_TRUE(TestAccess::isFlowLeakDetectionEnabled(*child));
}

} // namespace
