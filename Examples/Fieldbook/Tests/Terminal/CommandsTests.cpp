#include "Examples/Fieldbook/Terminal/Commands.hpp"

#include "Examples/Fieldbook/Card/DeepLink.hpp"
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;

TEST(Commands, AreReadAsTheyStand)
{
    EXPECT_EQ(parseCommand("sort severity"), Command(Sort{SortOrder::bySeverity}));
    EXPECT_EQ(parseCommand("sort place"), Command(Sort{SortOrder::byPlace}));
    EXPECT_EQ(parseCommand("details off"), Command(ShowDetails{false}));
    EXPECT_EQ(parseCommand("fieldbook://report/4"), Command(Follow{"fieldbook://report/4"}));
    EXPECT_EQ(parseCommand("sign in ada@hut.example"), Command(SignIn{"ada@hut.example"}));
    EXPECT_EQ(parseCommand("sign in at the hut"), Command(SignIn{"at the hut"}));
    EXPECT_EQ(parseCommand("guest"), Command(EnterAsGuest{}));
    EXPECT_EQ(parseCommand("sign out"), Command(SignOut{}));
    EXPECT_EQ(parseCommand("compose"), Command(Compose{}));
    EXPECT_EQ(parseCommand("settings"), Command(ShowSettings{}));
    EXPECT_EQ(parseCommand("samples 5 autumn"), Command(MakeSamples{{5, "autumn"}}));
    EXPECT_EQ(parseCommand("language de"), Command(Speak{orrenby::Locale("de")}));
    EXPECT_EQ(parseCommand("refresh"), Command(Refresh{}));
    EXPECT_EQ(parseCommand("upload"), Command(Upload{}));
    EXPECT_EQ(parseCommand("end"), Command(End{}));
}

TEST(Commands, AreUnknownOtherwise)
{
    for (const auto* line :
        {"", "sort", "sort age", "Upload", "details maybe", "report/4", "sign in", "sign off", "samples",
            "samples 0", "samples 5 ../autumn", "language", "language ", "language !"})
        EXPECT_EQ(parseCommand(line), Command(Unknown{})) << line;
}

TEST(DeepLink, NamesAReportByItsNumber)
{
    EXPECT_EQ(DeepLink{"fieldbook://report/42"}.report(), 42);
    for (const auto* text :
        {"fieldbook://report/", "fieldbook://report/0", "fieldbook://report/-1", "fieldbook://report/4x",
            "fieldbook://report/99999999999", "fieldbook://settings", "http://report/4"})
        EXPECT_EQ(DeepLink{text}.report(), std::nullopt) << text;
}

} // namespace
