#include "Orrenby/Testing/LocaleOverride.hpp"

#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Orrenby/Platform/Time/TimeZone.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include <gmock/gmock.h>
#include <stdexcept>

using namespace orrenby;
using orrenby::testing::LocaleOverride;
using orrenby::testing::VirtualWorld;

TEST(LocaleOverride, WritesDatesInItsLanguage)
{
    //! [Dates in German]
    const auto german = LocaleOverride({.locale = "de_DE", .timeZone = "Europe/Berlin"});

    EXPECT_EQ(DateFormatters::birthday()->string(Date(1577934245)), "2. Januar 2020");
    EXPECT_EQ(DateFormatters::chatTime()->string(Date(1577934245)), "04:04");
    //! [Dates in German]
}

TEST(LocaleOverride, IsTheSameOnEveryMachineUnlessToldOtherwise)
{
    const auto somewhere = LocaleOverride();

    EXPECT_EQ(Locale::current().identifier(), "en_US");
    EXPECT_EQ(TimeZone::system().name(), "GMT");
}

TEST(LocaleOverride, GivesBackWhatWasBefore)
{
    const auto outer = LocaleOverride({.locale = "fr_FR", .timeZone = "Europe/Paris"});
    const auto french = DateFormatters::birthday();
    {
        const auto inner = LocaleOverride({.locale = "ja_JP", .timeZone = "Asia/Tokyo"});
        EXPECT_EQ(Locale::current().identifier(), "ja_JP");
        EXPECT_NE(DateFormatters::birthday(), french);
    }

    EXPECT_EQ(Locale::current().identifier(), "fr_FR");
    EXPECT_EQ(TimeZone::system().name(), "Europe/Paris");
    EXPECT_EQ(DateFormatters::birthday(), french);
}

TEST(LocaleOverride, RefusesAZoneThatIsNotInTheTables)
{
    const auto before = DateFormatters::cache();

    EXPECT_THROW(LocaleOverride({.timeZone = "Mars/Olympus"}), std::invalid_argument);
    EXPECT_EQ(DateFormatters::cache(), before);
}

TEST(LocaleOverride, HoldsWithinAVirtualWorldWhoseTimeGoesOn)
{
    auto world = VirtualWorld({.locale = "ja_JP"});
    const auto german = LocaleOverride({.locale = "de_DE"});
    const auto monday = DateFormatters::chatWeekday()->string(Date::now() - 86'400);

    world.advance(86'400);

    EXPECT_EQ(monday, "Montag");
    EXPECT_EQ(DateFormatters::chatWeekday()->string(Date::now()), "Mittwoch");
}

TEST(VirtualWorld, WritesDatesInItsLanguage)
{
    const auto world = VirtualWorld({.locale = "fr_FR", .timeZone = "America/New_York"});

    EXPECT_EQ(DateFormatters::birthday()->string(Date::now()), "31 décembre 2029");
}

TEST(VirtualWorld, HasFormattersOfItsOwn)
{
    const auto before = DateFormatters::halvetServer();
    {
        const auto world = VirtualWorld();
        EXPECT_NE(DateFormatters::halvetServer(), before);
    }

    EXPECT_EQ(DateFormatters::halvetServer(), before);
}
