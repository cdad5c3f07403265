#include "Orrenby/Platform/Time/DateFormatter.hpp"

#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using Style = DateFormatter::Style;

namespace {

class ClockOf2030 final : public Clock {
public:
    Date now() const override { return Date(1'893'456'000); }
    double monotonicSeconds() const override { return 0; }
};

constexpr auto serverFormat = "yyyy-MM-dd'T'HH:mm:ss.SSS'Z'";

Ref<DateFormatter> reader(const char* format, const char* locale = "en_US_POSIX", const char* zone = "GMT")
{
    auto formatter = std::make_shared<DateFormatter>();
    formatter->setLocale(Locale(locale));
    formatter->setTimeZone(TimeZone::fromName(zone).value());
    formatter->setDateFormat(format);
    return formatter;
}

} // namespace

TEST(DateFormatterReading, ReadsADate)
{
    //! [Reading a date]
    DateFormatter formatter;
    formatter.setLocale(Locale("en_US_POSIX"));
    formatter.setTimeZone(TimeZone::gmt());
    formatter.setDateFormat("yyyy-MM-dd HH:mm");

    const auto date = formatter.date("2020-01-02 03:04");
    const auto none = formatter.date("2020-01-32 03:04"); // there is no such day
    //! [Reading a date]

    EXPECT_EQ(date, Date(1'577'934'240));
    EXPECT_EQ(none, std::nullopt);
}

TEST(DateFormatterReading, ReadsServerTimestamps)
{
    EXPECT_EQ(reader(serverFormat)->date("2020-01-02T03:04:05.678Z"), Date(1'577'934'245.678));
}

TEST(DateFormatterReading, ReadsTheWholeText)
{
    const auto formatter = reader(serverFormat);

    EXPECT_EQ(formatter->date("2020-01-02T03:04:05.678Zulu"), std::nullopt);
    EXPECT_EQ(formatter->date("2020-01-02T03:04:05.678Z "), std::nullopt);
    EXPECT_EQ(formatter->date("2020-01-02T03:04:05.678ZZ"), std::nullopt);
    EXPECT_EQ(formatter->date(std::string_view("2020-01-02T03:04:05.678Z\0", 25)), std::nullopt);
}

TEST(DateFormatterReading, MissesTheEndOfTheFormat)
{
    EXPECT_EQ(reader(serverFormat)->date("2020-01-02T03:04:05.678"), std::nullopt);
    EXPECT_EQ(reader("d. MMMM 'um' HH 'Uhr'", "de_DE")->date("2. Januar um 03"), std::nullopt);
    EXPECT_EQ(reader("d. MMMM 'um' HH 'Uhr'", "de_DE")->date("2. Januar um 03 Uhr"), Date(97'200));
}

TEST(DateFormatterReading, RefusesBlanksWhereTheFormatHasNone)
{
    const auto formatter = reader(serverFormat);

    EXPECT_EQ(formatter->date(" 2020-01-02T03:04:05.678Z"), std::nullopt);
    EXPECT_EQ(formatter->date("2020- 01-02T03:04:05.678Z"), std::nullopt);
    EXPECT_EQ(formatter->date("2020-01-02T\u00A003:04:05.678Z"), std::nullopt);
    EXPECT_EQ(reader("d MMMM y")->date(" 2 January 2020"), std::nullopt);
}

TEST(DateFormatterReading, TakesBlanksThatTheFormatBeginsWith)
{
    EXPECT_EQ(reader(" yyyy")->date(" 1970"), Date(0));
}

TEST(DateFormatterReading, RefusesFieldsThatDoNotExist)
{
    const auto formatter = reader(serverFormat);

    EXPECT_EQ(formatter->date("2020-02-30T03:04:05.678Z"), std::nullopt);
    EXPECT_EQ(formatter->date("2020-01-02T24:00:00.000Z"), std::nullopt);
    EXPECT_EQ(formatter->date("0000-01-02T03:04:05.678Z"), std::nullopt);
}

TEST(DateFormatterReading, RefusesTextThatIsNone)
{
    for (const auto* text : {"", " ", "Z", "\xFF", "2020-01-02T03:04:05.67\xC3Z", "tomorrow"})
        EXPECT_EQ(reader(serverFormat)->date(text), std::nullopt) << text;
}

TEST(DateFormatterReading, ReadsLongYearsAndFractions)
{
    const auto formatter = reader(serverFormat);

    EXPECT_EQ(formatter->date("12020-01-02T03:04:05.678Z"), Date(317'147'454'245.678));
    EXPECT_EQ(formatter->date("2020-01-02T03:04:05.6789Z"), Date(1'577'934'245.678));
}

TEST(DateFormatterReading, RefusesNumbersThatOverflow)
{
    const auto formatter = reader(serverFormat);
    const auto digits = [](std::size_t count) { return std::string(count, '1'); };

    EXPECT_NE(formatter->date("2020-01-02T03:04:05." + digits(9) + "Z"), std::nullopt);
    EXPECT_NE(formatter->date(digits(6).append("-01-02T03:04:05.678Z")), std::nullopt);
    for (const std::size_t count : {10U, 13U, 14U, 34U, 35U, 36U, 66U, 67U, 1'000'000U}) {
        EXPECT_EQ(formatter->date("2020-01-02T03:04:05." + digits(count) + "Z"), std::nullopt) << count;
        EXPECT_EQ(formatter->date(digits(count).append("-01-02T03:04:05.678Z")), std::nullopt) << count;
        EXPECT_EQ(formatter->date("2020-01-02T03:04:" + digits(count) + ".678Z"), std::nullopt) << count;
    }
    EXPECT_EQ(formatter->date("2020-01-02T03:04:05." + digits(40) + "\u0661\u0661Z"), std::nullopt);
    EXPECT_EQ(
        reader("d MMMM y h:mm:ss.SSS a")->date("2 May 2020 3:04:05." + digits(35) + " AM"), std::nullopt);
    EXPECT_EQ(reader("'v1' S")->date("v1 " + digits(35)), std::nullopt);
    EXPECT_EQ(reader("y")->date(digits(7)), std::nullopt);
}

TEST(DateFormatterReading, ReadsNoExponents)
{
    EXPECT_EQ(reader(serverFormat)->date("20212E0-02-02T03:04:05.678Z"), std::nullopt);
    EXPECT_EQ(reader("d MMMM y")->date("2 May 2E3"), std::nullopt);
    EXPECT_EQ(reader("d MMMM y")->date("2 May 2e+9"), std::nullopt);
    EXPECT_EQ(reader("d MMMM y")->date("2 May 2E"), std::nullopt);
}

TEST(DateFormatterReading, ReadsFieldsThatNoSignSeparates)
{
    EXPECT_EQ(reader("yyyyMMddHHmmssSSS")->date("20200102030405678"), Date(1'577'934'245.678));
    EXPECT_EQ(reader("yyyyMMdd'T'HHmmss.SSS")->date("20200102T030405.678"), Date(1'577'934'245.678));
    EXPECT_EQ(reader("yyyyMMddHHmmssSSS")->date("202001020304056781"), std::nullopt);
    EXPECT_EQ(reader("yyyyMMdd'T'HHmmss.SSS")->date("20200102T030405.6781111111111111"), std::nullopt);
}

TEST(DateFormatterReading, ReadsNamesInUpperAndLowerCase)
{
    EXPECT_EQ(reader("d MMMM y")->date("2 JANUARY 2020"), Date(1'577'923'200));
    EXPECT_EQ(reader("d MMMM y")->date("2 january 2020"), Date(1'577'923'200));
    EXPECT_EQ(reader("d MMMM y")->date("2 Januar 2020"), std::nullopt);
}

TEST(DateFormatterReading, ReadsOffsetsInTheText)
{
    EXPECT_EQ(reader("yyyy-MM-dd'T'HH:mm:ssXXX")->date("2020-01-02T05:04:05+02:00"), Date(1'577'934'245));
    EXPECT_EQ(reader("yyyy-MM-dd'T'HH:mm:ssXXX")->date("2020-01-02T03:04:05Z"), Date(1'577'934'245));
}

TEST(DateFormatterReading, FillsUpWithTheStartOf1970)
{
    EXPECT_EQ(reader("HH:mm")->date("03:04"), Date(11'040));
    EXPECT_EQ(reader("HH:mm", "en_US_POSIX", "Europe/Berlin")->date("03:04"), Date(7'440));
}

TEST(DateFormatterReading, TakesYearsOfTwoDigitsFromTheLast80Years)
{
    auto world = World::current();
    world.setClock(std::make_shared<ClockOf2030>());
    const auto override = World::Override(world);
    const auto formatter = reader("yy-MM-dd");

    EXPECT_EQ(formatter->date("49-12-31"), reader("yyyy-MM-dd")->date("2049-12-31"));
    EXPECT_EQ(formatter->date("50-12-31"), reader("yyyy-MM-dd")->date("1950-12-31"));
}

TEST(DateFormatterReading, ReadsWhatItWritesInEveryStyle)
{
    const auto date = Date(1'577'934'240);
    for (const auto* locale : {"en_US", "de_DE", "fr_FR", "ja_JP", "ko_KR", "th_TH", "fa_IR", "ar_EG",
             "mr_IN", "ja_JP@calendar=japanese", "ar_SA", "he_IL@calendar=hebrew"})
        for (const auto style : {Style::Medium, Style::Long, Style::Full}) {
            DateFormatter formatter;
            formatter.setLocale(Locale(locale));
            formatter.setTimeZone(TimeZone::gmt());
            formatter.setDateStyle(style);
            formatter.setTimeStyle(Style::Short);

            EXPECT_EQ(formatter.date(formatter.string(date)), date)
                << locale << ": " << formatter.string(date);
        }
}
