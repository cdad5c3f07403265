#include "Orrenby/Platform/Time/TimeZone.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <cmath>
#include <gmock/gmock.h>
#include <unordered_set>

using namespace orrenby;

namespace {

constexpr auto summer = Date(1'782'000'000);        // 2026-06-21
constexpr auto winter = Date(1'798'000'000);        // 2026-12-23
constexpr auto springForward = Date(1'774'746'000); // 2026-03-29T01:00:00Z, when Central Europe goes forward
constexpr auto autumnBack = Date(1'792'890'000);    // 2026-10-25T01:00:00Z

TimeZone berlin() { return TimeZone::fromName("Europe/Berlin").value(); }

} // namespace

TEST(TimeZone, KnowsItsOffset)
{
    //! [Asking a zone]
    const auto zone = TimeZone::fromName("Europe/Berlin").value();

    const auto offset = zone.secondsFromGMT(Date(1'782'000'000)); // 7200: it is summer
    //! [Asking a zone]

    EXPECT_EQ(offset, 7'200);
    EXPECT_EQ(zone.secondsFromGMT(winter), 3'600);
}

TEST(TimeZone, ChangesInSpringAndAutumn)
{
    EXPECT_EQ(berlin().secondsFromGMT(springForward - 0.001), 3'600);
    EXPECT_EQ(berlin().secondsFromGMT(springForward), 7'200);
    EXPECT_EQ(berlin().secondsFromGMT(autumnBack - 0.001), 7'200);
    EXPECT_EQ(berlin().secondsFromGMT(autumnBack), 3'600);
}

TEST(TimeZone, TellsTheSeason)
{
    EXPECT_TRUE(berlin().isDaylightSavingTime(summer));
    EXPECT_FALSE(berlin().isDaylightSavingTime(winter));
    EXPECT_FALSE(TimeZone::gmt().isDaylightSavingTime(summer));
}

TEST(TimeZone, KnowsWhenItChangesNext)
{
    EXPECT_EQ(berlin().nextTransition(springForward - 1), springForward);
    EXPECT_EQ(berlin().nextTransition(springForward), autumnBack);
    EXPECT_EQ(TimeZone::gmt().nextTransition(summer), std::nullopt);
}

TEST(TimeZone, HasOffsetsThatAreNoWholeHours)
{
    EXPECT_EQ(TimeZone::fromName("Asia/Kathmandu").value().secondsFromGMT(summer), 20'700);
    EXPECT_EQ(TimeZone::fromName("Australia/Lord_Howe").value().secondsFromGMT(winter), 39'600);
    EXPECT_EQ(TimeZone::fromName("Australia/Lord_Howe").value().secondsFromGMT(summer), 37'800);
}

TEST(TimeZone, IsMadeFromAnOffset)
{
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(7'200).value().name(), "GMT+02:00");
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(-12'600).value().name(), "GMT-03:30");
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(3'661).value().name(), "GMT+01:01:01");
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(3'661).value().secondsFromGMT(summer), 3'661);
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(-59).value().secondsFromGMT(summer), -59);
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(0), TimeZone::gmt());
}

TEST(TimeZone, IsLessThanADayAway)
{
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(86'399).value().secondsFromGMT(summer), 86'399);
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(-86'399).value().secondsFromGMT(summer), -86'399);
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(86'400), std::nullopt);
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(-86'400), std::nullopt);
    EXPECT_EQ(TimeZone::fromSecondsFromGMT(std::numeric_limits<std::int64_t>::min()), std::nullopt);
}

TEST(TimeZone, ReadsOffsetsInNames)
{
    EXPECT_EQ(TimeZone::fromName("GMT+2").value().name(), "GMT+02:00");
    EXPECT_EQ(TimeZone::fromName("GMT-03:30").value().secondsFromGMT(summer), -12'600);
    EXPECT_EQ(TimeZone::fromName("gmt+5:30:15").value().name(), "GMT+05:30:15");
    EXPECT_EQ(TimeZone::fromName("GMT+00:00").value().name(), "GMT");
    EXPECT_EQ(TimeZone::fromName("GMT-0").value().secondsFromGMT(summer), 0);
}

TEST(TimeZone, IsNoneForUnknownNames)
{
    for (const auto* name : {"", "Mars/Crater", "europe/berlin", "Europe/Berlin ", "GMT+25", "Z",
             "Etc/Unknown", "Berl\xC3\xADn", "\xFF"})
        EXPECT_EQ(TimeZone::fromName(name), std::nullopt) << name;
}

TEST(TimeZone, IsNoneForOffsetsWithASecondSign)
{
    for (const auto* name : {"GMT+-2:00", "GMT--2", "GMT+02:-5", "GMT+2:00:-1", "GMT++2", "GMT+-20",
             "GMT--20", "GMT+-10", "gmt+-30"})
        EXPECT_EQ(TimeZone::fromName(name), std::nullopt) << name;
}

TEST(TimeZone, IsThatOfTheCurrentWorld)
{
    //! [Choosing a zone]
    auto world = World::current();
    world.setTimeZone(TimeZone::fromName("Asia/Tokyo").value());
    const auto override = World::Override(world);

    const auto zone = TimeZone::system(); // Asia/Tokyo
    //! [Choosing a zone]

    EXPECT_EQ(zone.name(), "Asia/Tokyo");
}

TEST(TimeZone, IsTheHostsUntilAnotherIsChosen) { EXPECT_EQ(World().timeZone(), TimeZone::host()); }

TEST(TimeZone, IsChosenForTheRestOfTheProcess)
{
    const auto before = World::current();

    TimeZone::setSystem(berlin());

    EXPECT_EQ(TimeZone::system(), berlin());
    World::setCurrent(before);
}

TEST(TimeZone, HasAnOffsetAtTheEndsOfTime)
{
    EXPECT_EQ(berlin().secondsFromGMT(Date::distantFuture()), 3'600);
    EXPECT_EQ(
        berlin().secondsFromGMT(Date::distantPast()), 3'208); // the sun's time, before there was another
    EXPECT_EQ(TimeZone::gmt().secondsFromGMT(Date(std::nan(""))), 0);
}

TEST(TimeZone, ComparesAndHashesByItsName)
{
    const std::unordered_set<TimeZone> zones{berlin(), berlin(), TimeZone::gmt()};

    EXPECT_EQ(zones.size(), 2u);
    EXPECT_NE(TimeZone::fromName("UTC"), TimeZone::gmt());
}

TEST(TimeZone, PrintsItsName)
{
    EXPECT_EQ(describe(berlin()), "Europe/Berlin");
    EXPECT_EQ(debugDescribe(berlin()), "TimeZone(Europe/Berlin)");
}
