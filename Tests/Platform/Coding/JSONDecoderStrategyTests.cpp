#include "Orrenby/Platform/Coding/JSONDecoder.hpp"

#include "Tests/Platform/Coding/JSONDecoderParts.hpp"
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::failure;
using orrenby::testing::Point;
using ::testing::ElementsAre;
using ::testing::Pair;

namespace {

struct Snake {
    std::string firstName;
    std::map<std::string, int> countsByName;
};

} // namespace

TEST(JSONDecoder, DecodesDatesAsItsStrategySays)
{
    using Strategy = JSONDecoder::DateDecodingStrategy;
    const auto date = [](std::string_view text, Strategy strategy) {
        JSONDecoder decoder;
        decoder.setDateDecodingStrategy(std::move(strategy));
        return decoder.decode<Date>(text).secondsSince1970();
    };

    EXPECT_EQ(date("0", Strategy::deferredToDate()), 978'307'200);
    EXPECT_EQ(date("1.5", Strategy::secondsSince1970()), 1.5);
    EXPECT_EQ(date("1500", Strategy::millisecondsSince1970()), 1.5);
    EXPECT_EQ(date(R"("1970-01-02T00:00:01Z")", Strategy::iso8601()), 86'401);
    EXPECT_EQ(date(R"("2024-02-29T23:30:00-01:30")", Strategy::iso8601()), 1'709'254'800);
    EXPECT_EQ(date(R"("7 days")", Strategy::custom([](const Decoder& decoder) {
        return Date(86'400.0 * std::stoi(decoder.singleValueContainer().decode<std::string>()));
    })),
        604'800);
}

TEST(JSONDecoder, RefusesDatesOfAnotherForm)
{
    JSONDecoder decoder;
    decoder.setDateDecodingStrategy(JSONDecoder::DateDecodingStrategy::iso8601());

    EXPECT_EQ(failure<Date>("null", decoder),
        "valueNotFound(Date, at the root, line 1, column 1: Expected Date but found null)");
    EXPECT_EQ(failure<Date>(R"("2023-02-29T00:00:00Z")", decoder),
        "dataCorrupted(at the root, line 1, column 1: Expected a date and time in the form of ISO 8601)");
    for (const std::string_view text :
        {R"("")", R"("2024-01-01")", R"("2024-01-01T00:00:00")", R"("2024-01-01T24:00:00Z")",
            R"("2024-01-01T00:00:00.5Z")", R"("2024-01-01T00:00:00Z ")", R"("2024-1-01T00:00:00Z")",
            R"("2024-01-01T00:00:00+1:00")", R"("2024-01-01 00:00:00Z")", R"("+024-01-01T00:00:00Z")", "5"})
        EXPECT_NE(failure<Date>(text, decoder), "no failure") << text;
}

TEST(JSONDecoder, DecodesBytesAsItsStrategySays)
{
    JSONDecoder decoder;
    EXPECT_EQ(decoder.decode<Data>(R"("AP8Q")"), (Data{std::byte{0}, std::byte{255}, std::byte{16}}));
    EXPECT_EQ(decoder.decode<Data>(R"("AA==")"), Data{std::byte{0}});
    EXPECT_EQ(decoder.decode<Data>(R"("")"), Data{});
    for (const std::string_view text :
        {R"("A")", R"("AA=")", R"("AA==\n")", R"("A===")", R"("AB==")", R"("A*==")", "[1]", "null"})
        EXPECT_NE(failure<Data>(text), "no failure") << text;

    decoder.setDataDecodingStrategy(JSONDecoder::DataDecodingStrategy::deferredToData());
    EXPECT_EQ(decoder.decode<Data>("[0,255]"), (Data{std::byte{0}, std::byte{255}}));
    EXPECT_NE(failure<Data>("[256]", decoder), "no failure");

    decoder.setDataDecodingStrategy(JSONDecoder::DataDecodingStrategy::custom([](const Decoder& inner) {
        return dataFromText(inner.singleValueContainer().decode<std::string>());
    }));
    EXPECT_EQ(decoder.decode<Data>(R"("a")"), Data{std::byte{'a'}});
}

TEST(JSONDecoder, ConvertsKeysAsItsStrategySays)
{
    JSONDecoder decoder;
    decoder.setKeyDecodingStrategy(JSONDecoder::KeyDecodingStrategy::convertFromSnakeCase());
    const auto snake = decoder.decode<Snake>(R"({"first_name":"Ada","counts_by_name":{"not_changed":1}})");
    EXPECT_EQ(snake.firstName, "Ada");
    EXPECT_THAT(snake.countsByName, ElementsAre(Pair("not_changed", 1)));

    decoder.setKeyDecodingStrategy(JSONDecoder::KeyDecodingStrategy::custom(
        [](const std::vector<CodingKey>& path) { return CodingKey(path.back().stringValue().substr(1)); }));
    EXPECT_EQ(decoder.decode<Point>(R"({"_latitude":1,"_longitude":2})").longitude, 2);
}

TEST(JSONDecoder, ReadsTextsForNumbersThatAreNoneWhereTold)
{
    JSONDecoder decoder;
    EXPECT_NE(failure<double>(R"("inf")", decoder), "no failure");

    decoder.setNonConformingFloatDecodingStrategy(
        JSONDecoder::NonConformingFloatDecodingStrategy::convertFromString(
            {.positiveInfinity = "inf", .negativeInfinity = "-inf", .nan = "nan"}));
    EXPECT_EQ(decoder.decode<double>(R"("-inf")"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(decoder.decode<float>(R"("inf")"), std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(decoder.decode<double>(R"("nan")")));
    EXPECT_NE(failure<double>(R"("1")", decoder), "no failure");
}

TEST(JSONDecoder, DecodesOnSeveralThreadsAtOnce)
{
    JSONDecoder decoder;
    decoder.setKeyDecodingStrategy(JSONDecoder::KeyDecodingStrategy::convertFromSnakeCase());
    decoder.setDateDecodingStrategy(JSONDecoder::DateDecodingStrategy::custom(
        [](const Decoder& inner) { return Date(inner.singleValueContainer().decode<double>() * 2); }));
    std::vector<int> right(4);
    std::vector<std::thread> threads;
    for (int& count : right)
        threads.emplace_back([&decoder, &count] {
            for (int number = 0; number < 200; ++number) {
                const auto digits = std::to_string(number);
                const auto snake = decoder.decode<Snake>(
                    R"({"first_name":")" + digits + R"(","counts_by_name":{}})");
                const auto date = decoder.decode<Date>(digits);
                count += snake.firstName == digits && date == Date(number * 2.0) ? 1 : 0;
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(right, ElementsAre(200, 200, 200, 200));
}
