#include "Examples/Fieldbook/Settings/Language.hpp"

#include "Orrenby/Testing/LocaleOverride.hpp"
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using orrenby::testing::LocaleOverride;

constexpr auto afternoon = orrenby::Date(1'772'636'700); // 4 March 2026, 15:05 in GMT

TEST(Language, IsNamedByACode)
{
    EXPECT_EQ(languageNamed("de"), orrenby::Locale("de"));
    EXPECT_EQ(languageNamed("pt_BR"), orrenby::Locale("pt_BR"));
    EXPECT_EQ(languageNamed("sr-Latn-RS"), orrenby::Locale("sr_Latn_RS"));
}

TEST(Language, IsNoneForOtherTexts)
{
    for (const auto* text :
        {"", "d", "_", "../de", "de ", "deutsch!", "\x1B[2J", "äö", "de_de_de_de_de_de_de_de_de_de_de_de_de"})
        EXPECT_EQ(languageNamed(text), std::nullopt) << text;
}

TEST(Language, GivesDatesTheirForm)
{
    const LocaleOverride place;

    EXPECT_EQ(shownDate(afternoon), "March 4, 2026, 3:05\u202FPM");
    choose(orrenby::Locale("de"));
    EXPECT_EQ(shownDate(afternoon), "4. März 2026, 15:05");
    choose(orrenby::Locale("ja"));
    EXPECT_EQ(shownDate(afternoon), "2026年3月4日, 15:05");
}

TEST(Language, LeavesTheZoneToTheMachine)
{
    const LocaleOverride place({.locale = "de", .timeZone = "Asia/Tokyo"});

    EXPECT_EQ(shownDate(afternoon), "5. März 2026, 00:05");
}

} // namespace
