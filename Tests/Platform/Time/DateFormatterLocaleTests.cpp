// What the tables of ICU 72 say. Written down from CLDR 42, so that a new version shows where texts change.

#include "Orrenby/Platform/Time/DateFormatter.hpp"

#include <gmock/gmock.h>

using namespace orrenby;
using Style = DateFormatter::Style;

namespace {

constexpr auto moment = Date(1'577'934'245.678);    // 2020-01-02T03:04:05.678Z
constexpr auto springForward = Date(1'774'746'000); // 2026-03-29T01:00:00Z, in Central Europe
constexpr auto autumnBack = Date(1'792'890'000);    // 2026-10-25T01:00:00Z
constexpr double hour = 3'600;

std::string inFormat(const char* format, const char* locale, const char* zone = "GMT", Date date = moment)
{
    DateFormatter formatter;
    formatter.setLocale(Locale(locale));
    formatter.setTimeZone(TimeZone::fromName(zone).value());
    formatter.setDateFormat(format);
    return formatter.string(date);
}

std::optional<Date> read(const char* text, const char* format, const char* locale, const char* zone = "GMT")
{
    DateFormatter formatter;
    formatter.setLocale(Locale(locale));
    formatter.setTimeZone(TimeZone::fromName(zone).value());
    formatter.setDateFormat(format);
    return formatter.date(text);
}

std::string inStyle(Style style, const char* locale)
{
    DateFormatter formatter;
    formatter.setLocale(Locale(locale));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateStyle(style);
    return formatter.string(moment);
}

} // namespace

TEST(DateFormatterLocale, SpeaksItsLanguage)
{
    EXPECT_EQ(inStyle(Style::Long, "en_US"), "January 2, 2020");
    EXPECT_EQ(inStyle(Style::Long, "en_GB"), "2 January 2020");
    EXPECT_EQ(inStyle(Style::Long, "de_DE"), "2. Januar 2020");
    EXPECT_EQ(inStyle(Style::Long, "fr_FR"), "2 janvier 2020");
    EXPECT_EQ(inStyle(Style::Long, "ja_JP"), "2020年1月2日");
    EXPECT_EQ(inStyle(Style::Long, "ko_KR"), "2020년 1월 2일");
}

TEST(DateFormatterLocale, CountsBuddhistYearsInThailand)
{
    EXPECT_EQ(inStyle(Style::Long, "th_TH"), "2 มกราคม 2563");
    EXPECT_EQ(inFormat("yyyy-MM-dd", "th_TH"), "2563-01-02");
}

TEST(DateFormatterLocale, CountsPersianYearsInIran)
{
    EXPECT_EQ(inStyle(Style::Long, "fa_IR"), "۱۲ دی ۱۳۹۸");
    EXPECT_EQ(inFormat("yyyy-MM-dd", "fa_IR"), "۱۳۹۸-۱۰-۱۲");
}

TEST(DateFormatterLocale, CountsImperialYearsWhenAskedTo)
{
    EXPECT_EQ(inStyle(Style::Long, "ja_JP@calendar=japanese"), "令和2年1月2日");
    EXPECT_EQ(inFormat("Gy年", "ja_JP@calendar=japanese", "Asia/Tokyo", Date(1'556'636'399)), "平成31年");
    EXPECT_EQ(inFormat("Gy年", "ja_JP@calendar=japanese", "Asia/Tokyo", Date(1'556'636'400)), "令和元年");
}

TEST(DateFormatterLocale, CountsMoonsInSaudiArabia)
{
    EXPECT_EQ(inStyle(Style::Long, "ar_SA"), "٧ جمادى الأولى ١٤٤١ هـ");
}

TEST(DateFormatterLocale, WritesNativeDigits)
{
    EXPECT_EQ(inFormat("yyyy-MM-dd", "ar_EG"), "٢٠٢٠-٠١-٠٢");
    EXPECT_EQ(inFormat("yyyy-MM-dd", "mr_IN"), "२०२०-०१-०२");
    EXPECT_EQ(inFormat("yyyy-MM-dd", "my_MM"), "၂၀၂၀-၀၁-၀၂");
}

TEST(DateFormatterLocale, WritesWesternDigitsWhereTheyAreCommon)
{
    EXPECT_EQ(inFormat("yyyy-MM-dd", "hi_IN"), "2020-01-02");
    EXPECT_EQ(inFormat("yyyy-MM-dd", "ar_EG@numbers=latn"), "2020-01-02");
}

TEST(DateFormatterLocale, ReadsNativeDigitsAndWesternOnes)
{
    EXPECT_EQ(read("۱۳۹۸-۱۰-۱۲", "yyyy-MM-dd", "fa_IR"), Date(1'577'923'200));
    EXPECT_EQ(read("1398-10-12", "yyyy-MM-dd", "fa_IR"), Date(1'577'923'200));
    EXPECT_EQ(read("٢٠٢٠-٠١-٠٢", "yyyy-MM-dd", "en_US"), Date(1'577'923'200));
}

TEST(DateFormatterLocale, FallsBackToTheLanguageOfARegionWithoutTables)
{
    EXPECT_EQ(inStyle(Style::Long, "de_JP"), inStyle(Style::Long, "de"));
}

TEST(DateFormatterLocale, WritesTheServersFormatOtherwiseInOtherLocales)
{
    constexpr auto format = "yyyy-MM-dd'T'HH:mm:ss.SSS'Z'";

    EXPECT_EQ(inFormat(format, "en_US"), "2020-01-02T03:04:05.678Z");
    EXPECT_EQ(inFormat(format, "th_TH"), "2563-01-02T03:04:05.678Z");
    EXPECT_EQ(inFormat(format, "ar_EG"), "٢٠٢٠-٠١-٠٢T٠٣:٠٤:٠٥.٦٧٨Z");
}

TEST(DateFormatterLocale, SkipsAnHourInSpring)
{
    EXPECT_EQ(inFormat("HH:mm:ss", "en_GB", "Europe/Berlin", springForward - 1), "01:59:59");
    EXPECT_EQ(inFormat("HH:mm:ss", "en_GB", "Europe/Berlin", springForward), "03:00:00");
}

TEST(DateFormatterLocale, RepeatsAnHourInAutumn)
{
    EXPECT_EQ(inFormat("HH:mm Z", "en_GB", "Europe/Berlin", autumnBack - hour / 2), "02:30 +0200");
    EXPECT_EQ(inFormat("HH:mm Z", "en_GB", "Europe/Berlin", autumnBack + hour / 2), "02:30 +0100");
}

TEST(DateFormatterLocale, ReadsNoTimeThatWasSkipped)
{
    EXPECT_EQ(read("2026-03-29 02:30", "yyyy-MM-dd HH:mm", "en_GB", "Europe/Berlin"), std::nullopt);
    EXPECT_EQ(read("2026-03-29 03:00", "yyyy-MM-dd HH:mm", "en_GB", "Europe/Berlin"), springForward);
}

TEST(DateFormatterLocale, ReadsATimeThatCameTwiceAsTheSecond)
{
    EXPECT_EQ(read("2026-10-25 02:30", "yyyy-MM-dd HH:mm", "en_GB", "Europe/Berlin"), autumnBack + hour / 2);
    EXPECT_EQ(read("2026-10-25 02:30 +0200", "yyyy-MM-dd HH:mm Z", "en_GB", "Europe/Berlin"),
        autumnBack - hour / 2);
}

TEST(DateFormatterLocale, ChangesByHalfAnHourOnLordHowe)
{
    const auto change = Date(1'775'314'800); // 2026-04-04T15:00:00Z

    EXPECT_EQ(inFormat("HH:mm", "en_AU", "Australia/Lord_Howe", change - 60), "01:59");
    EXPECT_EQ(inFormat("HH:mm", "en_AU", "Australia/Lord_Howe", change), "01:30");
}
