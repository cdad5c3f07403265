#include "Examples/Fieldbook/Settings/SettingsFlow.hpp"

#include "Examples/Fieldbook/Tests/SessionTest.hpp"
#include "Orrenby/Testing/LocaleOverride.hpp"
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;

class SettingsFlowTest : public SessionTest {
protected:
    orrenby::testing::LocaleOverride place{{.locale = "en_US"}};
    orrenby::Ref<SettingsFlow> flow = orrenby::make<SettingsFlow>(session);
};

TEST_F(SettingsFlowTest, ShowsTheSettingsWhenItStarts)
{
    session.user = "ada@hut.example"_email;
    session.settings->sortOrder = SortOrder::byPlace;
    session.settings->isDetailed = false;

    flow->start();

    EXPECT_EQ(printed(), "| user: ada@hut.example\n| language: en_US\n| order: place\n| details: off\n");
}

TEST_F(SettingsFlowTest, ShowsThatNobodyIsSignedIn)
{
    flow->start();

    EXPECT_EQ(printed(), "| user: nobody\n| language: en_US\n| order: number\n| details: on\n");
}

TEST_F(SettingsFlowTest, ShowsEachSettingThatChangesWhileItIsThere)
{
    flow->start();
    const auto before = printed();

    session.settings->sortOrder = SortOrder::bySeverity;
    session.settings->isDetailed = false;

    EXPECT_EQ(printed(), before + "| order: severity\n| details: off\n");
}

TEST_F(SettingsFlowTest, ShowsNothingMoreOnceItIsGone)
{
    flow->start();
    const auto before = printed();

    flow.reset();
    session.settings->isDetailed = false;

    EXPECT_EQ(printed(), before);
}

TEST_F(SettingsFlowTest, IsCountedAsAScreen)
{
    flow->start();

    EXPECT_EQ(session.screens.at("settings"), 1);
}

} // namespace
