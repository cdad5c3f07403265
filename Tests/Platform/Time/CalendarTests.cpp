#include "Orrenby/Platform/Time/Calendar.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <unordered_set>

using namespace orrenby;
using Unit = Calendar::Unit;

namespace {

constexpr double day = 86'400;
constexpr auto moment = Date(1'577'934'245.678); // 2020-01-02T03:04:05.678Z, a Thursday
constexpr CalendarUnit allUnits[] = {Unit::Era, Unit::Year, Unit::Month, Unit::Day, Unit::Hour, Unit::Minute,
    Unit::Second, Unit::Millisecond, Unit::Weekday, Unit::WeekOfMonth, Unit::WeekOfYear,
    Unit::YearForWeekOfYear, Unit::DayOfYear};

const auto noMoment = Date(std::nan(""));

Calendar gmt(const char* locale = "en_US") { return Calendar(Locale(locale), TimeZone::gmt()); }

World worldIn(const char* locale, const char* zoneName)
{
    auto world = World::current();
    world.setLocale(Locale(locale));
    world.setTimeZone(TimeZone::fromName(zoneName).value());
    return world;
}

Date dayAt(std::int32_t year, std::int32_t month, std::int32_t dayOfMonth)
{
    return gmt().date({.year = year, .month = month, .day = dayOfMonth}).value();
}

std::optional<std::int64_t> dayInEra(Date date, const char* locale = "en_US")
{
    return gmt(locale).ordinality({.of = Unit::Day, .in = Unit::Era}, date);
}

} // namespace

TEST(Calendar, ReckonsWithDays)
{
    //! [Reckoning with days]
    const auto calendar = Calendar(Locale("en_GB"), TimeZone::gmt());

    const auto opening = calendar.date({.year = 2026, .month = 11, .day = 30, .hour = 9}).value();
    const auto reminder = calendar.adding(-1, Calendar::Unit::Month, opening).value();
    const auto weekday = calendar.components(reminder).value().weekday; // 6: a Friday
    //! [Reckoning with days]

    EXPECT_EQ(reminder.description(), "2026-10-30 09:00:00 +0000");
    EXPECT_EQ(weekday, 6);
}

TEST(Calendar, CountsWholeUnitsBetweenDates)
{
    //! [Counting between dates]
    const auto calendar = Calendar(Locale("en_GB"), TimeZone::gmt());
    const auto booked = calendar.date({.year = 2026, .month = 1, .day = 31}).value();
    const auto due = calendar.date({.year = 2026, .month = 3, .day = 1, .hour = 12}).value();

    const auto days = calendar.difference(Calendar::Unit::Day, booked, due);     // 29
    const auto months = calendar.difference(Calendar::Unit::Month, booked, due); // 1
    //! [Counting between dates]

    EXPECT_EQ(days, 29);
    EXPECT_EQ(months, 1);
}

TEST(Calendar, NumbersTheDaysOfAnEra)
{
    //! [Numbering days]
    const auto calendar = Calendar(Locale("en_GB"), TimeZone::gmt());
    const auto evening = calendar.date({.year = 2026, .month = 11, .day = 21, .hour = 23}).value();
    const auto nextMorning = evening + 2 * 3600;

    const auto last = calendar.ordinality(
        {.of = Calendar::Unit::Day, .in = Calendar::Unit::Era}, nextMorning);
    const auto first = calendar.ordinality({.of = Calendar::Unit::Day, .in = Calendar::Unit::Era}, evening);
    const auto midnights = *last - *first; // 1
    //! [Numbering days]

    EXPECT_EQ(midnights, 1);
    EXPECT_EQ(first, 739'943);
}

TEST(Calendar, FollowsTheCurrentLocaleAndZoneOfItsMaking)
{
    auto override = std::make_unique<World::Override>(worldIn("th_TH", "Asia/Bangkok"));
    const auto calendar = Calendar::current();
    override.reset();

    EXPECT_EQ(calendar.description(), "buddhist, th_TH, Asia/Bangkok");
    EXPECT_EQ(calendar.locale(), Locale("th_TH"));
    EXPECT_EQ(calendar.timeZone().name(), "Asia/Bangkok");
}

TEST(Calendar, UpdatesItselfWhenAskedTo)
{
    const auto calendar = Calendar::autoUpdatingCurrent();
    std::vector<std::string> seen;

    {
        const auto first = World::Override(worldIn("th_TH", "Asia/Bangkok"));
        seen.push_back(calendar.description());
        const auto second = World::Override(worldIn("fa_IR", "Asia/Tehran"));
        seen.push_back(calendar.description());
    }

    EXPECT_THAT(seen, ::testing::ElementsAre("buddhist, th_TH, Asia/Bangkok", "persian, fa_IR, Asia/Tehran"));
}

TEST(Calendar, FollowsItsLocale)
{
    EXPECT_EQ(gmt("en_US").identifier(), "gregorian");
    EXPECT_EQ(gmt("th_TH").identifier(), "buddhist");
    EXPECT_EQ(gmt("fa_IR").identifier(), "persian");
    EXPECT_EQ(gmt("ja_JP").identifier(), "gregorian");
    EXPECT_EQ(gmt("ja_JP@calendar=japanese").identifier(), "japanese");
    EXPECT_EQ(gmt("").identifier(), "gregorian");
}

TEST(Calendar, SplitsADateIntoAllItsUnits)
{
    const auto components = gmt().components(moment);

    const auto expected = DateComponents{.era = 1,
        .year = 2020,
        .month = 1,
        .isLeapMonth = false,
        .day = 2,
        .hour = 3,
        .minute = 4,
        .second = 5,
        .millisecond = 678,
        .weekday = 5,
        .weekOfMonth = 1,
        .weekOfYear = 1,
        .yearForWeekOfYear = 2020,
        .dayOfYear = 2};
    EXPECT_EQ(components, expected);
}

TEST(Calendar, PutsAllUnitsTogetherAgain)
{
    for (const auto* locale : {"en_US", "de_DE", "th_TH", "fa_IR", "ja_JP@calendar=japanese", "ar_SA",
             "he_IL@calendar=hebrew", "zh_CN@calendar=chinese", "am_ET@calendar=ethiopic", "en@calendar=roc"})
        for (const double seconds : {1'577'934'245.678, 0.0, -1.0, 1'767'139'200.5, 4'102'444'799.999, -2e9})
            EXPECT_EQ(gmt(locale).date(gmt(locale).components(Date(seconds)).value()), Date(seconds))
                << locale;
}

TEST(Calendar, CountsInTheYearsOfItsLocale)
{
    EXPECT_EQ(gmt("th_TH").components(moment)->year, 2563);
    EXPECT_EQ(gmt("fa_IR").components(moment)->year, 1398);
    EXPECT_EQ(gmt("ja_JP@calendar=japanese").components(moment)->year, 2);
    EXPECT_EQ(gmt("fa_IR").date({.year = 1398, .month = 10, .day = 12}), dayAt(2020, 1, 2));
}

TEST(Calendar, BeginsWeeksAsItsLocaleDoes)
{
    const auto sunday = dayAt(2020, 1, 5);

    EXPECT_EQ(gmt("en_US").components(sunday)->weekOfYear, 2);
    EXPECT_EQ(gmt("de_DE").components(sunday)->weekOfYear, 1);
}

TEST(Calendar, TellsTheYearOfTheWeekFromTheYear)
{
    const auto components = gmt("de_DE").components(dayAt(2021, 1, 3)).value();

    EXPECT_EQ(components.year, 2021);
    EXPECT_EQ(components.yearForWeekOfYear, 2020);
    EXPECT_EQ(components.weekOfYear, 53);
}

TEST(Calendar, TakesTheStartOfWhatIsMissing)
{
    EXPECT_EQ(gmt().date({}), Date(0));
    EXPECT_EQ(gmt().date({.year = 2020}), dayAt(2020, 1, 1));
    EXPECT_EQ(gmt().date({.month = 3}), dayAt(1970, 3, 1));
    EXPECT_EQ(gmt().date({.hour = 1}), Date(3'600));
    EXPECT_EQ(gmt().date({.year = 2020, .dayOfYear = 61}), dayAt(2020, 3, 1));
}

TEST(Calendar, FindsADayByItsWeek)
{
    EXPECT_EQ(
        gmt("de_DE").date({.weekday = 2, .weekOfYear = 53, .yearForWeekOfYear = 2020}), dayAt(2020, 12, 28));
}

TEST(Calendar, RollsOverWhatExceedsItsUnit)
{
    EXPECT_EQ(gmt().date({.year = 2026, .month = 4, .day = 31}), dayAt(2026, 5, 1));
    EXPECT_EQ(gmt().date({.year = 2026, .month = 13}), dayAt(2027, 1, 1));
    EXPECT_EQ(gmt().date({.year = 2026, .month = 1, .day = 0}), dayAt(2025, 12, 31));
    EXPECT_EQ(gmt().date({.year = 2026, .hour = -1}), dayAt(2026, 1, 1) - 3'600);
    EXPECT_EQ(gmt().date({.year = 1970, .second = 1'000'000'000}), Date(1e9));
    EXPECT_EQ(gmt().date({.year = 1970, .hour = std::numeric_limits<std::int32_t>::max()}),
        Date(2'147'483'647 * 3'600.0));
}

TEST(Calendar, HasNoDateBeyondItsEnds)
{
    constexpr auto most = std::numeric_limits<std::int32_t>::max();
    constexpr auto least = std::numeric_limits<std::int32_t>::min();

    for (const auto value : {most, least, 5'000'001, -5'000'001})
        EXPECT_EQ(gmt().date({.year = value}), std::nullopt) << value;
    EXPECT_EQ(gmt().date({.year = 2026, .month = least}), std::nullopt);
    EXPECT_EQ(gmt().date({.year = 2026, .day = most}), std::nullopt);
    EXPECT_EQ(gmt().date({.weekOfYear = least, .yearForWeekOfYear = 2026}), std::nullopt);
}

TEST(Calendar, ReachesFiveMillionYears)
{
    for (const auto year : {5'000'000, -5'000'000}) {
        const auto date = gmt().date({.year = year, .month = 1'000'000, .day = 10'000'000}).value();
        const auto daysOfYear = year < 0 ? 365.25 : 365.2425; // Julian, Gregorian
        EXPECT_NEAR(date.secondsSince1970() / (daysOfYear * day), year - 1970 + 83'333 + 27'379, 1) << year;
    }
}

TEST(Calendar, GivesNothingForWhatIsNoMoment)
{
    const auto calendar = gmt();

    EXPECT_EQ(calendar.components(noMoment), std::nullopt);
    EXPECT_EQ(calendar.startOfDay(noMoment), std::nullopt);
    EXPECT_EQ(dayInEra(noMoment), std::nullopt);
    for (const auto unit : allUnits) {
        EXPECT_EQ(calendar.difference(unit, noMoment, moment), std::nullopt) << description(unit);
        EXPECT_EQ(calendar.difference(unit, moment, noMoment), std::nullopt) << description(unit);
        EXPECT_EQ(calendar.adding(1, unit, noMoment), std::nullopt) << description(unit);
    }
    EXPECT_FALSE(calendar.isSameDay(noMoment, noMoment));
}

TEST(Calendar, CountsDifferencesTowardZero)
{
    EXPECT_EQ(gmt().difference(Unit::Day, Date(0), Date(2 * day - 0.001)), 1);
    EXPECT_EQ(gmt().difference(Unit::Day, Date(2 * day - 0.001), Date(0)), -1);
    EXPECT_EQ(gmt().difference(Unit::Hour, Date(7'199), Date(0)), -1);
    EXPECT_EQ(gmt().difference(Unit::Second, Date(1.9), Date(0)), -1);
    EXPECT_EQ(gmt().difference(Unit::Second, Date(0), Date(0.999)), 0);
}

TEST(Calendar, CountsDifferencesInEachUnit)
{
    const auto from = dayAt(2019, 2, 28);
    const auto to = dayAt(2020, 2, 29) + 0.25;

    EXPECT_EQ(gmt().difference(Unit::Year, from, to), 1);
    EXPECT_EQ(gmt().difference(Unit::YearForWeekOfYear, from, to), 1);
    EXPECT_EQ(gmt().difference(Unit::Month, from, to), 12);
    EXPECT_EQ(gmt().difference(Unit::WeekOfYear, from, to), 52);
    EXPECT_EQ(gmt().difference(Unit::WeekOfMonth, from, to), 52);
    EXPECT_EQ(gmt().difference(Unit::Day, from, to), 366);
    EXPECT_EQ(gmt().difference(Unit::Weekday, from, to), 366);
    EXPECT_EQ(gmt().difference(Unit::DayOfYear, from, to), 366);
    EXPECT_EQ(gmt().difference(Unit::Hour, from, to), 8'784);
    EXPECT_EQ(gmt().difference(Unit::Minute, from, to), 527'040);
    EXPECT_EQ(gmt().difference(Unit::Second, from, to), 31'622'400);
    EXPECT_EQ(gmt().difference(Unit::Millisecond, from, to), 31'622'400'250);
    EXPECT_EQ(gmt().difference(Unit::Era, from, to), std::nullopt);
}

TEST(Calendar, CountsNothingBetweenADateAndItself)
{
    for (const auto unit : allUnits)
        EXPECT_EQ(gmt().difference(unit, moment, moment).value_or(0), 0) << description(unit);
}

TEST(Calendar, CountsSecondsBeyond32Bits)
{
    EXPECT_EQ(gmt().difference(Unit::Second, Date(-1e11), Date(1e11)), 200'000'000'000);
    EXPECT_EQ(gmt().difference(Unit::Second, Date(1e11), Date(-1e11)), -200'000'000'000);
}

TEST(Calendar, CountsDaysUntilTheyAreTooMany)
{
    EXPECT_EQ(gmt().difference(Unit::Day, Date(0), Date(2e9 * day)), 2'000'000'000);
    EXPECT_EQ(gmt().difference(Unit::Day, Date::distantPast(), Date::distantFuture()), std::nullopt);
}

TEST(Calendar, SeesNoLossInMillisecondsThatADateCannotHold)
{
    EXPECT_EQ(gmt().difference(Unit::Millisecond, Date(1'577'934'245), Date(1'577'934'245.678)), 678);
    EXPECT_EQ(gmt().components(Date(1'577'934'245.678))->millisecond, 678);
    EXPECT_EQ(gmt().components(Date(1'577'934'245.6779))->millisecond, 677);
}

TEST(Calendar, NumbersTheFirstDayOfTheEraOne)
{
    const auto firstDay = Date(-62'135'769'600); // in the Julian calendar

    EXPECT_EQ(dayInEra(firstDay), 1);
    EXPECT_EQ(dayInEra(firstDay + day), 2);
    EXPECT_EQ(dayInEra(Date(0)), 719'165);
}

TEST(Calendar, NumbersNoDaysOfAnEraWithoutAFirstOne)
{
    EXPECT_EQ(dayInEra(Date(-62'135'769'601)), std::nullopt);
    EXPECT_EQ(dayInEra(Date::distantPast()), std::nullopt);
    EXPECT_EQ(dayInEra(Date(-6e10), "en@calendar=roc"), std::nullopt);
}

TEST(Calendar, NumbersTheDaysOfAnEraThatBeganInTheMiddleOfAYear)
{
    const auto firstOfMay2019 = Date(1'556'668'800);

    EXPECT_EQ(dayInEra(firstOfMay2019, "ja_JP@calendar=japanese"), 1);
    EXPECT_EQ(dayInEra(firstOfMay2019 - day, "ja_JP@calendar=japanese"), 11'070); // the last of Heisei
}

TEST(Calendar, NumbersOtherUnits)
{
    EXPECT_EQ(gmt().ordinality({.of = Unit::Day, .in = Unit::Month}, moment), 2);
    EXPECT_EQ(gmt().ordinality({.of = Unit::Day, .in = Unit::Year}, moment + 31 * day), 33);
    EXPECT_EQ(gmt().ordinality({.of = Unit::Month, .in = Unit::Year}, moment), 1);
    EXPECT_EQ(gmt().ordinality({.of = Unit::Year, .in = Unit::Era}, moment), 2020);
    EXPECT_EQ(gmt().ordinality({.of = Unit::Hour, .in = Unit::Day}, moment), 4);
    EXPECT_EQ(gmt().ordinality({.of = Unit::Minute, .in = Unit::Hour}, moment), 5);
    EXPECT_EQ(gmt().ordinality({.of = Unit::Second, .in = Unit::Minute}, moment), 6);
    EXPECT_EQ(gmt().ordinality({.of = Unit::Month, .in = Unit::Day}, moment), std::nullopt);
}

TEST(Calendar, AddsUnits)
{
    EXPECT_EQ(gmt().adding(1, Unit::Year, dayAt(2020, 2, 29)), dayAt(2021, 2, 28));
    EXPECT_EQ(gmt().adding(1, Unit::Month, dayAt(2026, 1, 31)), dayAt(2026, 2, 28));
    EXPECT_EQ(gmt().adding(-1, Unit::WeekOfYear, dayAt(2026, 1, 7)), dayAt(2025, 12, 31));
    EXPECT_EQ(gmt().adding(60, Unit::Day, dayAt(2026, 1, 1)), dayAt(2026, 3, 2));
    EXPECT_EQ(gmt().adding(25, Unit::Hour, Date(0)), Date(90'000));
    EXPECT_EQ(gmt().adding(-1, Unit::Millisecond, Date(0)), Date(-0.001));
    EXPECT_EQ(gmt().adding(0, Unit::Day, moment), moment);
    EXPECT_EQ(gmt().adding(1, Unit::Era, moment), std::nullopt);
}

TEST(Calendar, AddsNothingThatLeadsOutOfIt)
{
    constexpr auto most = std::numeric_limits<std::int32_t>::max();
    constexpr auto least = std::numeric_limits<std::int32_t>::min();

    for (const auto unit : {Unit::Year, Unit::Month, Unit::Day, Unit::WeekOfYear, Unit::YearForWeekOfYear}) {
        EXPECT_EQ(gmt().adding(most, unit, Date::distantFuture()), std::nullopt) << description(unit);
        EXPECT_EQ(gmt().adding(least, unit, Date::distantPast()), std::nullopt) << description(unit);
    }
    EXPECT_EQ(gmt().adding(1, Unit::Hour, Date::distantFuture()), std::nullopt);
}

TEST(Calendar, KnowsTheStartOfADay)
{
    EXPECT_EQ(gmt().startOfDay(moment), dayAt(2020, 1, 2));
    EXPECT_EQ(gmt().startOfDay(dayAt(2020, 1, 2)), dayAt(2020, 1, 2));
    EXPECT_EQ(gmt().startOfDay(Date(-0.001)), dayAt(1969, 12, 31));
}

TEST(Calendar, TellsDaysApart)
{
    EXPECT_TRUE(gmt().isSameDay(dayAt(2020, 1, 2), moment));
    EXPECT_FALSE(gmt().isSameDay(dayAt(2020, 1, 2) - 0.001, moment));
}

TEST(Calendar, ComparesAndHashesByLocaleAndZone)
{
    const std::unordered_set<Calendar> calendars{gmt(), gmt(), gmt("de_DE"), Calendar::autoUpdatingCurrent()};

    EXPECT_EQ(calendars.size(), 3u);
    EXPECT_EQ(Calendar::current(), Calendar::current());
    EXPECT_EQ(Calendar::autoUpdatingCurrent(), Calendar::autoUpdatingCurrent());
    EXPECT_NE(Calendar::autoUpdatingCurrent(), Calendar::current());
}

TEST(Calendar, PrintsItsKindLocaleAndZone) { EXPECT_EQ(describe(gmt("th_TH")), "buddhist, th_TH, GMT"); }
