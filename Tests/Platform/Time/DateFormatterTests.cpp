#include "Orrenby/Platform/Time/DateFormatter.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;
using Style = DateFormatter::Style;
using ::testing::StartsWith;

namespace {

constexpr auto moment = Date(1'577'934'245.678); // 2020-01-02T03:04:05.678Z
constexpr auto serverFormat = "yyyy-MM-dd'T'HH:mm:ss.SSS'Z'";

TimeZone zone(const char* name) { return TimeZone::fromName(name).value(); }

World worldIn(const char* locale, const char* zoneName)
{
    auto world = World::current();
    world.setLocale(Locale(locale));
    world.setTimeZone(zone(zoneName));
    return world;
}

/// The moment in a format, in English and GMT.
std::string inFormat(const char* format, Date date = moment)
{
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateFormat(format);
    return formatter.string(date);
}

std::string inStyles(Style dateStyle, Style timeStyle, const char* locale = "en_GB")
{
    DateFormatter formatter;
    formatter.setLocale(Locale(locale));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateStyle(dateStyle);
    formatter.setTimeStyle(timeStyle);
    return formatter.string(moment);
}

} // namespace

TEST(DateFormatter, WritesADate)
{
    //! [Writing a date]
    DateFormatter formatter;
    formatter.setLocale(Locale("de_DE"));
    formatter.setTimeZone(TimeZone::fromName("Europe/Berlin").value());
    formatter.setDateStyle(DateFormatter::Style::Long);
    formatter.setTimeStyle(DateFormatter::Style::Short);

    const auto text = formatter.string(Date(1'577'934'245.678)); // 2. Januar 2020 um 04:04
    //! [Writing a date]

    EXPECT_EQ(text, "2. Januar 2020 um 04:04");
}

TEST(DateFormatter, FollowsTheCurrentLocaleAndZoneOfItsMaking)
{
    auto override = std::make_unique<World::Override>(worldIn("de_DE", "Asia/Tokyo"));
    DateFormatter formatter;
    override.reset();

    formatter.setDateFormat("EEEE HH:mm");

    EXPECT_EQ(formatter.locale(), Locale("de_DE"));
    EXPECT_EQ(formatter.timeZone(), zone("Asia/Tokyo"));
    EXPECT_EQ(formatter.string(moment), "Donnerstag 12:04");
}

TEST(DateFormatter, WritesNothingUntilItHasAFormatOrAStyle)
{
    const DateFormatter formatter;

    EXPECT_EQ(formatter.dateFormat(), "");
    EXPECT_EQ(formatter.dateStyle(), Style::None);
    EXPECT_EQ(formatter.timeStyle(), Style::None);
    EXPECT_EQ(formatter.string(moment), "");
    EXPECT_EQ(formatter.date(""), std::nullopt);
    EXPECT_EQ(formatter.date("2020"), std::nullopt);
}

TEST(DateFormatter, WritesFixedFormats)
{
    EXPECT_EQ(inFormat("yyyy-MM-dd HH:mm:ss.SSS"), "2020-01-02 03:04:05.678");
    EXPECT_EQ(inFormat("MMM d, yyyy, hh:mm a"), "Jan 2, 2020, 03:04 AM");
    EXPECT_EQ(inFormat("EEEE"), "Thursday");
    EXPECT_EQ(inFormat("yy D"), "20 2");
}

TEST(DateFormatter, TakesQuotedLettersAsTheyAre)
{
    EXPECT_EQ(inFormat("d 'of' MMMM"), "2 of January");
    EXPECT_EQ(inFormat("h 'o''clock'"), "3 o'clock");
    EXPECT_EQ(inFormat("'open d"), "open d");
    EXPECT_EQ(inFormat("d ''"), "2 '");
}

TEST(DateFormatter, WritesNothingInAFormatOfLettersThatMeanNothing)
{
    EXPECT_EQ(inFormat("n"), "");
    EXPECT_EQ(inFormat("yyyy jj"), "");
}

TEST(DateFormatter, TellsTheYearOfTheWeekFromTheYear)
{
    const auto newYearsEve = Date(1'767'139'200); // 2025-12-31, in a week of 2026

    EXPECT_EQ(inFormat("yyyy", newYearsEve), "2025");
    EXPECT_EQ(inFormat("YYYY", newYearsEve), "2026");
}

TEST(DateFormatter, WritesTheStylesOfItsLocale)
{
    EXPECT_EQ(inStyles(Style::Short, Style::None), "02/01/2020");
    EXPECT_EQ(inStyles(Style::Medium, Style::None), "2 Jan 2020");
    EXPECT_EQ(inStyles(Style::Long, Style::None), "2 January 2020");
    EXPECT_EQ(inStyles(Style::Full, Style::None), "Thursday, 2 January 2020");
    EXPECT_EQ(inStyles(Style::None, Style::Short), "03:04");
    EXPECT_EQ(inStyles(Style::None, Style::Medium), "03:04:05");
    EXPECT_EQ(inStyles(Style::None, Style::Long), "03:04:05 GMT");
    EXPECT_EQ(inStyles(Style::None, Style::Full), "03:04:05 Greenwich Mean Time");
    EXPECT_EQ(inStyles(Style::Short, Style::Short), "02/01/2020, 03:04");
    EXPECT_EQ(inStyles(Style::Long, Style::Short), "2 January 2020 at 03:04");
}

TEST(DateFormatter, SetsTheHalvesOfTheDayOffByANarrowBlank)
{
    EXPECT_EQ(inStyles(Style::None, Style::Short, "en_US"), "3:04\u202FAM");
}

TEST(DateFormatter, LetsWhatWasSetLastCount)
{
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US"));
    formatter.setTimeZone(TimeZone::gmt());

    formatter.setDateStyle(Style::Long);
    formatter.setDateFormat("yyyy");
    const auto fixed = formatter.string(moment);
    formatter.setTimeStyle(Style::None);
    const auto styled = formatter.string(moment);

    EXPECT_EQ(fixed, "2020");
    EXPECT_EQ(styled, "January 2, 2020");
    EXPECT_EQ(formatter.dateFormat(), "MMMM d, y");
}

TEST(DateFormatter, FallsBackToItsStylesWhenItsFormatIsTakenAway)
{
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateStyle(Style::Long);

    formatter.setDateFormat("yyyy");
    formatter.setDateFormat("");

    EXPECT_EQ(formatter.string(moment), "January 2, 2020");
}

TEST(DateFormatter, FollowsChangesAfterItsFirstText)
{
    DateFormatter formatter;
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setLocale(Locale("en_US_POSIX"));
    formatter.setDateFormat(serverFormat);
    const auto before = formatter.string(moment);

    formatter.setTimeZone(zone("Europe/Berlin"));
    const auto inBerlin = formatter.string(moment);
    formatter.setLocale(Locale("mr_IN"));
    const auto inMarathi = formatter.string(moment);

    EXPECT_EQ(before, "2020-01-02T03:04:05.678Z");
    EXPECT_EQ(inBerlin, "2020-01-02T04:04:05.678Z");
    EXPECT_EQ(inMarathi, "२०२०-०१-०२T०४:०४:०५.६७८Z");
}

TEST(DateFormatter, CutsFractionsOff)
{
    EXPECT_EQ(inFormat("ss", Date(59.9)), "59");
    EXPECT_EQ(inFormat("ss", Date(-0.1)), "59");
    EXPECT_EQ(inFormat("S", Date(0.99)), "9");
}

TEST(DateFormatter, WritesNothingForWhatIsNoMoment)
{
    EXPECT_EQ(inFormat("yyyy", Date(std::nan(""))), "");
    EXPECT_EQ(inFormat(serverFormat, Date(std::nan(""))), "");
}

TEST(DateFormatter, WritesTheEndsOfTimeAsFarYears)
{
    EXPECT_EQ(inFormat("y G", Date::distantFuture()), "5705942 AD");
    EXPECT_EQ(inFormat("y G", Date::distantPast()), "5701887 BC");
    EXPECT_EQ(inFormat("y G", Date(std::numeric_limits<double>::max())), "5705942 AD");
}

TEST(DateFormatter, CountsInTheJulianCalendarBeforeTheGregorianOne)
{
    EXPECT_EQ(inFormat("yyyy-MM-dd", Date(-12'219'292'800)), "1582-10-15");
    EXPECT_EQ(inFormat("yyyy-MM-dd", Date(-12'219'292'801)), "1582-10-04");
}

TEST(DateFormatter, WritesIntoABuffer)
{
    //! [Writing into a buffer]
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US_POSIX"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateFormat("yyyy-MM-dd'T'HH:mm:ss.SSS'Z'");

    std::array<char, 24> buffer;
    const auto length = formatter.format(Date(1'577'934'245.678), buffer);
    const auto text = std::string_view(buffer.data(), length); // 2020-01-02T03:04:05.678Z
    //! [Writing into a buffer]

    EXPECT_EQ(text, "2020-01-02T03:04:05.678Z");
}

TEST(DateFormatter, LeavesABufferAloneThatIsTooSmall)
{
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US_POSIX"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateFormat(serverFormat);
    std::array<char, 23> buffer;
    buffer.fill('.');

    const auto length = formatter.format(moment, buffer);
    const auto lengthInNothing = formatter.format(moment, {});

    EXPECT_EQ(length, 24u);
    EXPECT_EQ(lengthInNothing, 24u);
    EXPECT_EQ(std::string(buffer.data(), buffer.size()), std::string(23, '.'));
}

TEST(DateFormatter, WritesAnyFormatIntoABuffer)
{
    DateFormatter formatter;
    formatter.setLocale(Locale("de_DE"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateFormat("d. MMMM");
    std::array<char, 9> buffer;

    EXPECT_EQ(formatter.format(moment, buffer), 9u);
    EXPECT_EQ(std::string(buffer.data(), buffer.size()), "2. Januar");
    EXPECT_EQ(formatter.format(moment, std::span(buffer).first(8)), 9u);
}

TEST(DateFormatter, AsksForAFormat)
{
    //! [Asking for a format]
    const auto english = DateFormatter::dateFormat("MMMMd", Locale("en_US")); // MMMM d
    const auto german = DateFormatter::dateFormat("MMMMd", Locale("de_DE"));  // d. MMMM
    //! [Asking for a format]

    EXPECT_EQ(english, "MMMM d");
    EXPECT_EQ(german, "d. MMMM");
}

TEST(DateFormatter, AsksForAFormatOfTheCurrentLocale)
{
    const auto override = World::Override(worldIn("ja_JP", "Asia/Tokyo"));

    EXPECT_EQ(DateFormatter::dateFormat("yMMMd"), "y年M月d日");
}

TEST(DateFormatter, TakesTheFieldsOfATemplateOnly)
{
    EXPECT_EQ(DateFormatter::dateFormat("d 'at' MMMM!", Locale("en_US")), "MMMM d");
    EXPECT_EQ(DateFormatter::dateFormat("EEEE", Locale("en_US")), "cccc");
    EXPECT_EQ(DateFormatter::dateFormat("jmm", Locale("en_GB")), "HH:mm");
}

TEST(DateFormatter, HasNoFormatForATemplateWithoutFields)
{
    for (const auto* fields : {"", " ", "123", "'at'", "\xFF"})
        EXPECT_EQ(DateFormatter::dateFormat(fields, Locale("en_US")), std::nullopt) << fields;
}

TEST(DateFormatter, PrintsHowItIsSetUp)
{
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateStyle(Style::Short);

    EXPECT_EQ(describe(formatter), "M/d/yy, en_US, GMT");
}
