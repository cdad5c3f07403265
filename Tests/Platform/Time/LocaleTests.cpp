#include "Orrenby/Platform/Time/Locale.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <gmock/gmock.h>
#include <unordered_set>

using namespace orrenby;

namespace {

World worldIn(const char* identifier)
{
    auto world = World::current();
    world.setLocale(Locale(identifier));
    return world;
}

} // namespace

TEST(Locale, KnowsItsLanguageScriptAndRegion)
{
    //! [Asking for the language]
    const auto locale = Locale("sr_Latn_RS");

    const auto language = locale.languageCode(); // "sr"
    const auto region = locale.regionCode();     // "RS"
    //! [Asking for the language]

    EXPECT_EQ(language, "sr");
    EXPECT_EQ(locale.scriptCode(), "Latn");
    EXPECT_EQ(region, "RS");
}

TEST(Locale, NamesTheLanguageWithoutTheRegion)
{
    EXPECT_EQ(Locale("en_GB").languageCode(), "en");
    EXPECT_EQ(Locale("en_US_POSIX").languageCode(), "en");
}

TEST(Locale, HasNoScriptOrRegionUnlessItIsNamed)
{
    EXPECT_EQ(Locale("de").scriptCode(), std::nullopt);
    EXPECT_EQ(Locale("de").regionCode(), std::nullopt);
}

TEST(Locale, WritesTheSameInOneWay)
{
    EXPECT_EQ(Locale("de-de").identifier(), "de_DE");
    EXPECT_EQ(Locale("zh-hans-cn").identifier(), "zh_Hans_CN");
    EXPECT_EQ(Locale("iw_IL").identifier(), "he_IL");
    EXPECT_EQ(Locale("en_US.UTF-8").identifier(), "en_US");
}

TEST(Locale, KeepsTheCalendarAndTheDigitsThatItsIdentifierNames)
{
    EXPECT_EQ(Locale("ja_JP@calendar=japanese").identifier(), "ja_JP@calendar=japanese");
    EXPECT_EQ(Locale("ar_EG@numbers=latn").identifier(), "ar_EG@numbers=latn");
}

TEST(Locale, IsNeutralForWhatNamesNoLanguage)
{
    for (const auto* identifier : {"", "root", "und", "C", "1234",
             "Fran\xC3\xA7"
             "ais",
             "\xFF", "_DE_"}) {
        EXPECT_EQ(Locale(identifier), Locale("")) << identifier;
        EXPECT_EQ(Locale(identifier).languageCode(), std::nullopt) << identifier;
    }
}

TEST(Locale, IsNeutralForATextWithoutAFormOfItsOwn)
{
    EXPECT_EQ(Locale("de_DER--------RR\x9E").identifier(), "");
}

TEST(Locale, IsNeutralForATextThatIsTooLong)
{
    EXPECT_EQ(Locale(std::string(100'000, 'x')).identifier(), "");
}

TEST(Locale, EndsAtANul) { EXPECT_EQ(Locale(std::string_view("de\0_DE", 6)).identifier(), "de"); }

TEST(Locale, KeepsALanguageThatNobodyHasTablesFor) { EXPECT_EQ(Locale("xx_YY").languageCode(), "xx"); }

TEST(Locale, IsTheSystemsUntilAnotherIsChosen)
{
    EXPECT_EQ(World().locale(), Locale::system());
    EXPECT_FALSE(Locale::system().identifier().empty());
}

TEST(Locale, IsThatOfTheCurrentWorld)
{
    //! [Choosing a locale]
    auto world = World::current();
    world.setLocale(Locale("de_AT"));
    const auto override = World::Override(world);

    const auto current = Locale::current(); // de_AT
    //! [Choosing a locale]

    EXPECT_EQ(current, Locale("de_AT"));
}

TEST(Locale, IsChosenForTheRestOfTheProcess)
{
    const auto before = World::current();

    Locale::setCurrent(Locale("fr_CA"));

    EXPECT_EQ(Locale::current(), Locale("fr_CA"));
    EXPECT_EQ(&World::current().clock(), &before.clock());
    World::setCurrent(before);
}

TEST(Locale, LeavesTheOtherWorldAlone)
{
    const auto outer = World::Override(worldIn("ja_JP"));
    {
        const auto inner = World::Override(worldIn("ko_KR"));
        EXPECT_EQ(Locale::current(), Locale("ko_KR"));
    }
    EXPECT_EQ(Locale::current(), Locale("ja_JP"));
}

TEST(Locale, ComparesAndHashesByItsIdentifier)
{
    const std::unordered_set<Locale> locales{Locale("de-DE"), Locale("de_DE"), Locale("de_AT")};

    EXPECT_EQ(locales.size(), 2u);
    EXPECT_NE(Locale("de_DE"), Locale("de"));
}

TEST(Locale, PrintsItsIdentifier)
{
    EXPECT_EQ(describe(Locale("en_GB")), "en_GB");
    EXPECT_EQ(debugDescribe(Locale("en_GB")), "Locale(en_GB)");
}
