#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/Time/DateFormatter.hpp"

#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

using namespace orrenby;
using ::testing::Each;

namespace {

std::shared_ptr<const DateFormatter> formatter(std::string format, const char* locale = "en_US_POSIX")
{
    auto result = std::make_shared<DateFormatter>();
    result->setLocale(Locale(locale));
    result->setTimeZone(TimeZone::gmt());
    result->setDateFormat(std::move(format));
    return result;
}

std::string encoded(Date date, std::shared_ptr<const DateFormatter> dates)
{
    JSONEncoder encoder;
    encoder.setDateEncodingStrategy(JSONEncoder::DateEncodingStrategy::formatted(std::move(dates)));
    return encoder.encodeText(std::vector{date});
}

class Reader : public JSONDecoder {
public:
    explicit Reader(std::shared_ptr<const DateFormatter> dates)
    {
        setDateDecodingStrategy(DateDecodingStrategy::formatted(std::move(dates)));
    }

    std::vector<Date> dates(std::string_view text) const { return decode<std::vector<Date>>(text); }
};

std::string failure(const JSONDecoder& decoder, std::string_view text)
{
    try {
        decoder.decode<std::vector<Date>>(text);
        return "no failure";
    } catch (const DecodingError& error) {
        return error.description();
    }
}

} // namespace

TEST(JSONFormattedDate, IsWrittenAndReadByAFormatter)
{
    //! [Dates as a formatter writes them]
    const auto day = std::make_shared<DateFormatter>();
    day->setLocale(Locale("en_US_POSIX"));
    day->setTimeZone(TimeZone::gmt());
    day->setDateFormat("d/MM/yyyy");

    JSONEncoder encoder;
    encoder.setDateEncodingStrategy(JSONEncoder::DateEncodingStrategy::formatted(day));
    JSONDecoder decoder;
    decoder.setDateDecodingStrategy(JSONDecoder::DateDecodingStrategy::formatted(day));

    EXPECT_EQ(encoder.encodeText(std::vector{Date(86'400)}), R"(["2/01/1970"])");
    EXPECT_EQ(decoder.decode<std::vector<Date>>(R"(["2/01/1970"])"), std::vector{Date(86'400)});
    //! [Dates as a formatter writes them]
}

TEST(JSONFormattedDate, IsEscapedAsTextIs)
{
    EXPECT_EQ(encoded(Date(), formatter("'\"'yyyy'\"'")), R"(["\"1970\""])");
}

TEST(JSONFormattedDate, IsTheEmptyTextWhenTheFormatterWritesNothing)
{
    EXPECT_EQ(encoded(Date(), formatter("")), R"([""])");
}

TEST(JSONFormattedDate, IsReadWithTheNamesOfALanguage)
{
    const auto german = formatter("d. MMMM yyyy", "de_DE");

    EXPECT_EQ(encoded(Date(5'097'600), german), R"(["1. März 1970"])");
    EXPECT_EQ(Reader(german).dates(R"(["1. März 1970"])"), std::vector{Date(5'097'600)});
}

TEST(JSONFormattedDate, IsReadStrictly)
{
    const auto day = Reader(formatter("yyyy-MM-dd"));

    for (const std::string_view text :
        {R"([""])", R"(["1970-13-01"])", R"(["1970-01-32"])", R"(["1970-01-01 "])", R"(["1970-01-01T"])"})
        EXPECT_EQ(failure(day, text),
            "dataCorrupted(at Index 0, line 1, column 2: Expected a date in the form of the strategy's formatter)")
            << text;
}

TEST(JSONFormattedDate, IsNothingButText)
{
    const auto day = Reader(formatter("yyyy-MM-dd"));

    EXPECT_EQ(failure(day, "[null]"),
        "valueNotFound(Date, at Index 0, line 1, column 2: Expected Date but found null)");
    EXPECT_EQ(failure(day, "[5]"),
        "typeMismatch(String, at Index 0, line 1, column 2: Expected String but found a number)");
}

TEST(JSONFormattedDate, HasAStrategyThatKeepsTheFormatter)
{
    auto day = formatter("yyyy");
    const auto strategy = JSONEncoder::DateEncodingStrategy::formatted(day);

    EXPECT_EQ(strategy.kind(), JSONEncoder::DateEncodingStrategy::Kind::Formatted);
    EXPECT_EQ(strategy.formatter(), day.get());
    EXPECT_EQ(strategy.customCoding(), nullptr);
    EXPECT_EQ(day.use_count(), 2);
}

TEST(JSONFormattedDate, HasNoFormatterInOtherStrategies)
{
    EXPECT_EQ(JSONDecoder::DateDecodingStrategy::iso8601().formatter(), nullptr);
    EXPECT_EQ(JSONDecoder::DateDecodingStrategy::custom([](const Decoder&) { return Date(); }).formatter(),
        nullptr);
}

TEST(JSONFormattedDate, IsReadByThreadsWithOneFormatter)
{
    const auto day = Reader(formatter("d. MMM yyyy", "fr_FR"));
    std::vector<int> right(3);
    std::vector<std::thread> threads;

    for (int& count : right)
        threads.emplace_back([&] {
            for (int round = 0; round < 100; ++round)
                count += day.dates(R"(["2. janv. 1970"])") == std::vector{Date(86'400)} ? 1 : 0;
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(right, Each(100));
}

TEST(JSONFormattedDateDeathTest, EndsTheProcessWithoutAFormatter)
{
    EXPECT_DEATH(JSONEncoder::DateEncodingStrategy::formatted(nullptr),
        "Fatal error: A strategy for dates needs a formatter: file Platform/Coding/JSONStrategies");
}
