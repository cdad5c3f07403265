#include "Examples/Fieldbook/Settings/SettingsFlow.hpp"

#include "Examples/Fieldbook/Settings/Language.hpp"
#include <cstdio>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;

class SettingsFlowTest : public ::testing::Test {
protected:
    SettingsFlowTest() { choose(orrenby::Locale("en_US")); }

    void TearDown() override
    {
        flow.reset();
        std::fclose(output);
    }

    std::string printed() const
    {
        std::string text(static_cast<std::size_t>(::lseek(::fileno(output), 0, SEEK_END)), '\0');
        EXPECT_EQ(::pread(::fileno(output), text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
        return text;
    }

    std::FILE* output = std::tmpfile();
    EventLoop loop;
    Terminal terminal{::fileno(output), false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, {}, Course::watch};
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
