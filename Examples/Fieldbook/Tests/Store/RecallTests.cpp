#include "Examples/Fieldbook/Store/Recall.hpp"

#include "Examples/Fieldbook/Settings/Language.hpp"
#include "Orrenby/Testing/LocaleOverride.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using orrenby::operator""_email;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

const Report rope = {"Rope frayed", "Quay", "Nils", Severity::high, std::nullopt};

class RecallTest : public ::testing::Test {
protected:
    void remember(const std::string& name, const std::string& text)
    {
        session.memory->commit([&] { session.memory->set(name, text); });
    }

    orrenby::testing::LocaleOverride place; // what is recalled may be a language
    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, "folder", Course::watch};
};

TEST_F(RecallTest, ChangesNothingWhereNothingIsRemembered)
{
    recall(session);

    EXPECT_THAT(session.remembered, IsEmpty());
    EXPECT_EQ(session.settings->sortOrder.get(), SortOrder::byNumber);
    EXPECT_TRUE(session.settings->isDetailed.get());
    EXPECT_EQ(session.settings->language.get(), "");
    EXPECT_EQ(session.user, std::nullopt);
    EXPECT_EQ(session.catalogue.numberOf("a.json"), 1);
}

TEST_F(RecallTest, BringsReportsBackAndLeavesTheNumbersOfThoseThatAreGoneToThem)
{
    session.memory->commit([this] {
        session.memory->put("a.json", 2, rope);
        session.memory->put("b.json", 5, rope);
        session.memory->takeAway("b.json");
    });

    recall(session);

    EXPECT_THAT(session.remembered, ElementsAre(Pair("a.json", rope)));
    EXPECT_EQ(session.catalogue.numberOf("a.json"), 2);
    EXPECT_EQ(session.catalogue.numberOf("c.json"), 6);
    EXPECT_EQ(session.catalogue.numberOf("b.json"), 5);
}

TEST_F(RecallTest, BringsSettingsBack)
{
    remember(settingNames::order, "severity");
    remember(settingNames::details, "off");
    remember(settingNames::language, "de");
    remember(settingNames::user, "ada@hut.example");

    recall(session);

    EXPECT_EQ(session.settings->sortOrder.get(), SortOrder::bySeverity);
    EXPECT_FALSE(session.settings->isDetailed.get());
    EXPECT_EQ(session.settings->language.get(), "de");
    EXPECT_EQ(orrenby::Locale::current().identifier(), "de");
    EXPECT_EQ(session.user, "ada@hut.example"_email);
}

TEST_F(RecallTest, LeavesWhatWasChosenForThisRun)
{
    remember(settingNames::language, "de");
    remember(settingNames::user, "ada@hut.example");
    session.settings->language = "fr";
    session.user = "bo@hut.example"_email;

    recall(session);

    EXPECT_EQ(session.settings->language.get(), "fr");
    EXPECT_EQ(session.user, "bo@hut.example"_email);
}

TEST_F(RecallTest, LeavesNobodySignedInAfterSomebodySignedOut)
{
    remember(settingNames::user, "ada@hut.example");

    forgetUser(session);
    recall(session);

    EXPECT_EQ(session.user, std::nullopt);
}

TEST_F(RecallTest, PassesOverSettingsThatAreNone)
{
    remember(settingNames::order, "colour");
    remember(settingNames::language, "../de");
    remember(settingNames::user, "nobody");

    recall(session);

    EXPECT_EQ(session.settings->sortOrder.get(), SortOrder::byNumber);
    EXPECT_EQ(session.settings->language.get(), "");
    EXPECT_EQ(session.user, std::nullopt);
}

} // namespace
