#include "Orrenby/Foundation/Dates/DateFromText.hpp"

#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Orrenby/Testing/LocaleOverride.hpp"
#include <gmock/gmock.h>
#include <optional>
#include <string>

using namespace orrenby;
using orrenby::testing::LocaleOverride;

TEST(DateFromText, ReadsATimestamp)
{
    //! [Reading a timestamp]
    EXPECT_EQ(date("2020-01-02T03:04:05.678Z"), Date(1577934245.678));
    EXPECT_EQ(date("yesterday"), std::nullopt);
    //! [Reading a timestamp]
}

TEST(DateFromText, ReadsWhatTheFormatterWrites)
{
    for (const double seconds : {0.0, -0.001, 951782399.999, 1577934245.678, 253402300799.999}) {
        const auto text = DateFormatters::halvetServer()->string(Date(seconds));

        EXPECT_EQ(date(text), Date(seconds)) << text;
    }
}

TEST(DateFromText, GivesNothingForOtherText)
{
    for (const char* text : {"", "2020", "2020-01-02", "2020-01-02T03:04:05Z", "2020-01-02T03:04:05.678",
             "2020-01-02T03:04:05.678z", "2020-01-02 03:04:05.678Z", "2020-01-02T03:04:05,678Z",
             "2020-01-02T03:04:05.678+01:00", "20-01-02T03:04:05.678X", "\xFF"})
        EXPECT_EQ(date(text), std::nullopt) << text;
}

TEST(DateFromText, GivesNothingForTextAroundATimestamp)
{
    for (const char* text : {" 2020-01-02T03:04:05.678Z", "2020-01-02T03:04:05.678Z ",
             "2020-01-02T03:04:05.678ZZ", "\n2020-01-02T03:04:05.678Z"})
        EXPECT_EQ(date(text), std::nullopt) << text;
}

TEST(DateFromText, GivesNothingForFieldsOutOfTheirRange)
{
    for (const char* text : {"2020-13-02T03:04:05.678Z", "2020-00-02T03:04:05.678Z",
             "2020-02-30T03:04:05.678Z", "2019-02-29T03:04:05.678Z", "2020-01-02T24:04:05.678Z",
             "2020-01-02T03:60:05.678Z", "2020-01-02T03:04:60.678Z"})
        EXPECT_EQ(date(text), std::nullopt) << text;
}

TEST(DateFromText, TakesOtherNumbersOfDigitsAsTheFormatterDoes)
{
    const auto again = [](const char* text) {
        return DateFormatters::halvetServer()->string(date(text).value());
    };

    EXPECT_EQ(again("2020-01-02T03:04:05.6Z"), "2020-01-02T03:04:05.600Z");
    EXPECT_EQ(again("2020-01-02T03:04:05.6789Z"), "2020-01-02T03:04:05.678Z");
    EXPECT_EQ(again("2020-01-02T3:04:05.678Z"), "2020-01-02T03:04:05.678Z");
    EXPECT_EQ(again("2020-1-002T03:04:05.678Z"), "2020-01-02T03:04:05.678Z");
    EXPECT_EQ(again("20-01-02T03:04:05.678Z"), "0020-01-02T03:04:05.678Z");
    EXPECT_EQ(date("2020-01-2T03:04:05.678Z"), std::nullopt)
        << "not so in the day, the minute and the second";
}

TEST(DateFromText, ReadsTheSameWhateverTheLocale)
{
    const auto egypt = LocaleOverride({.locale = "ar_EG", .timeZone = "Africa/Cairo"});

    EXPECT_EQ(date("2020-01-02T03:04:05.678Z"), Date(1577934245.678));
}

TEST(DateFromText, ReadsByWhatTheCacheHolds)
{
    const auto somewhere = LocaleOverride();
    const auto own = std::make_shared<DateFormatter>();
    own->setTimeZone(TimeZone::gmt());
    own->setDateFormat("yyyy");

    DateFormatters::cache()->setObject(own, DateFormatters::kDefaultDateFormatterKey);

    EXPECT_EQ(date("1970"), Date());
}
