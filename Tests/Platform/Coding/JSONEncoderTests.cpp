#include "Orrenby/Platform/Coding/JSONEncoder.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;

namespace {

//! [Encoding a request]
struct Address {
    std::string city;
    std::optional<std::string> street;
};
struct Request {
    std::int64_t identifier = 0;
    std::vector<Address> addresses;
    bool isUrgent = false;
};

std::string body(const Request& request)
{
    const JSONEncoder encoder;
    return encoder.encodeText(request);
}
//! [Encoding a request]

template <class T> std::string encoded(const T& value) { return JSONEncoder().encodeText(value); }

template <class T> std::string failure(const T& value, const JSONEncoder& encoder = {})
{
    try {
        encoder.encode(value);
        return "no failure";
    } catch (const EncodingError& error) {
        return error.description();
    }
}

struct Keys {
    std::string firstName;
    int myURLProperty = 0;
    std::map<std::string, int> notChanged;
};

struct Chain {
    std::unique_ptr<Chain> next;
};

std::unique_ptr<Chain> chain(int length)
{
    std::unique_ptr<Chain> result;
    for (; length > 0; --length)
        result = std::make_unique<Chain>(Chain{std::move(result)});
    return result;
}

struct Everything {
    std::string text;
    std::vector<double> numbers;
    std::map<std::string, std::optional<std::int64_t>> counts;
    std::optional<std::vector<bool>> flags;
    std::uint64_t large = 0;
    float single = 0;
    Data bytes;
    Date date;

    friend bool operator==(const Everything&, const Everything&) = default;
};

Everything randomValue(unsigned seed)
{
    std::mt19937_64 engine(seed);
    static const char* const texts[] = {
        "", "plain", "\"\\\n\x02", "ä€😀", "a longer text that is not held in place"};
    const auto text = [&] { return std::string(texts[engine() % std::size(texts)]); };
    Everything value;
    value.text = text();
    for (auto count = engine() % 4; count > 0; --count)
        value.numbers.push_back(static_cast<double>(static_cast<std::int64_t>(engine())) / 1024);
    for (auto count = engine() % 4; count > 0; --count)
        value.counts[text()] = engine() % 2 == 0 ? std::optional(static_cast<std::int64_t>(engine()))
                                                 : std::nullopt;
    if (engine() % 2 == 0)
        value.flags = {engine() % 2 == 0, true};
    value.large = engine();
    value.single = static_cast<float>(engine() % 1'000'000) / 7;
    for (auto count = engine() % 7; count > 0; --count)
        value.bytes.push_back(static_cast<std::byte>(engine()));
    value.date = Date(static_cast<double>(engine() % 4'000'000'000));
    return value;
}

} // namespace

TEST(JSONEncoder, EncodesAggregatesByTheNamesOfTheirFields)
{
    EXPECT_EQ(body({7, {{"Paris", "Rue"}, {"Bonn", std::nullopt}}, true}),
        R"({"identifier":7,"addresses":[{"city":"Paris","street":"Rue"},{"city":"Bonn"}],"isUrgent":true})");
}

TEST(JSONEncoder, EncodesEveryStandardKind)
{
    EXPECT_EQ(encoded(true), "true");
    EXPECT_EQ(encoded(-5), "-5");
    EXPECT_EQ(encoded(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(encoded(0.1F), "0.1");
    EXPECT_EQ(encoded(std::string("a/\"b\"")), R"("a/\"b\"")");
    EXPECT_EQ(encoded(std::optional<int>()), "null");
    EXPECT_EQ(encoded(std::make_shared<int>(4)), "4");
    EXPECT_EQ(encoded(std::vector<std::vector<int>>{{1, 2}, {}}), "[[1,2],[]]");
    EXPECT_EQ(encoded(std::array<bool, 2>{true, false}), "[true,false]");
    EXPECT_EQ(encoded(std::vector<bool>{true, false}), "[true,false]");
    EXPECT_EQ(encoded(std::set<std::string>{"b", "a"}), R"(["a","b"])");
    EXPECT_EQ(encoded(std::map<std::string, int>{{"a", 1}, {"b", 2}}), R"({"a":1,"b":2})");
    EXPECT_EQ(encoded(std::map<int, std::string>{{-1, "x"}}), R"({"-1":"x"})");
    EXPECT_EQ(encoded(*UUID::make("00112233-4455-6677-8899-AABBCCDDEEFF")),
        R"("00112233-4455-6677-8899-AABBCCDDEEFF")");
    EXPECT_EQ(encoded("http://example.com/a?b#c"_url), R"("http://example.com/a?b#c")");
}

TEST(JSONEncoder, GivesBytes) { EXPECT_EQ(JSONEncoder().encode(std::vector<int>{1}), dataFromText("[1]")); }

TEST(JSONEncoder, NamesThePathOfWhatItCannotEncode)
{
    const double infinity = std::numeric_limits<double>::infinity();

    EXPECT_EQ(failure(std::map<std::string, std::vector<double>>{{"a", {1, infinity}}}),
        "invalidValue(inf, at a > Index 1: JSON has no number for inf)");
    EXPECT_EQ(failure(std::numeric_limits<float>::quiet_NaN()),
        "invalidValue(nan, at the root: JSON has no number for nan)");
    EXPECT_THAT(failure(Address{"\xFF", {}}), ::testing::HasSubstr("at city: Text that is not valid UTF-8"));
    EXPECT_THAT(failure(std::map<std::string, int>{{"\xC3", 1}}),
        ::testing::HasSubstr("Text that is not valid UTF-8"));
}

TEST(JSONEncoder, ReturnsFailuresFromItsTwin)
{
    EXPECT_EQ(JSONEncoder().tryEncode(1).value(), dataFromText("1"));
    EXPECT_NE(JSONEncoder().tryEncode(std::numeric_limits<double>::infinity()).error()->cast<EncodingError>(),
        nullptr);
}

TEST(JSONEncoder, NestsAsDeepAsCanBeReadAgain)
{
    EXPECT_EQ(failure(*chain(512)), "no failure");
    EXPECT_THAT(failure(*chain(513)), ::testing::HasSubstr("More than 512 nested values"));
    EXPECT_NO_THROW(JSONDecoder().decode<Chain>(encoded(*chain(512))));
}

TEST(JSONEncoder, EncodesDatesAsItsStrategySays)
{
    using Strategy = JSONEncoder::DateEncodingStrategy;
    const auto text = [](double seconds, Strategy strategy) {
        JSONEncoder encoder;
        encoder.setDateEncodingStrategy(std::move(strategy));
        return encoder.encodeText(Date(seconds));
    };

    EXPECT_EQ(text(978'307'200, Strategy::deferredToDate()), "0");
    EXPECT_EQ(text(1.5, Strategy::secondsSince1970()), "1.5");
    EXPECT_EQ(text(1.5, Strategy::millisecondsSince1970()), "1500");
    EXPECT_EQ(text(-0.5, Strategy::iso8601()), R"("1969-12-31T23:59:59Z")");
    EXPECT_EQ(text(1'709'254'800, Strategy::iso8601()), R"("2024-03-01T01:00:00Z")");
    EXPECT_EQ(text(-62'167'219'200, Strategy::iso8601()), R"("0000-01-01T00:00:00Z")");
    EXPECT_EQ(text(5, Strategy::custom([](const Date& date, const Encoder& encoder) {
        encoder.unkeyedContainer().encode(date.secondsSince1970());
    })),
        "[5]");
}

TEST(JSONEncoder, RefusesDatesThatISO8601CannotHold)
{
    JSONEncoder encoder;
    encoder.setDateEncodingStrategy(JSONEncoder::DateEncodingStrategy::iso8601());

    EXPECT_THAT(
        failure(Date::distantFuture(), encoder), ::testing::HasSubstr("ISO 8601 has four digits for a year"));
    EXPECT_THAT(failure(Date(253'402'300'800), encoder), ::testing::HasSubstr("ISO 8601"));
}

TEST(JSONEncoder, EncodesBytesAsItsStrategySays)
{
    JSONEncoder encoder;
    EXPECT_EQ(encoder.encodeText(dataFromText("")), R"("")");
    EXPECT_EQ(encoder.encodeText(dataFromText("a")), R"("YQ==")");
    EXPECT_EQ(encoder.encodeText(dataFromText("ab")), R"("YWI=")");
    EXPECT_EQ(encoder.encodeText(dataFromText("abc")), R"("YWJj")");

    encoder.setDataEncodingStrategy(JSONEncoder::DataEncodingStrategy::deferredToData());
    EXPECT_EQ(encoder.encodeText(dataFromText("ab")), "[97,98]");

    encoder.setDataEncodingStrategy(JSONEncoder::DataEncodingStrategy::custom(
        [](const Data& data, const Encoder& inner) { inner.singleValueContainer().encode(data.size()); }));
    EXPECT_EQ(encoder.encodeText(dataFromText("ab")), "2");
}

TEST(JSONEncoder, ConvertsKeysAsItsStrategySays)
{
    JSONEncoder encoder;
    encoder.setKeyEncodingStrategy(JSONEncoder::KeyEncodingStrategy::convertToSnakeCase());
    EXPECT_EQ(encoder.encodeText(Keys{"Ada", 1, {{"asItIs", 2}}}),
        R"({"first_name":"Ada","my_url_property":1,"not_changed":{"asItIs":2}})");

    encoder.setKeyEncodingStrategy(JSONEncoder::KeyEncodingStrategy::custom(
        [](const std::vector<CodingKey>& path) { return CodingKey("_" + path.back().stringValue()); }));
    EXPECT_EQ(encoder.encodeText(Address{"x", {}}), R"({"_city":"x"})");
}

TEST(JSONEncoder, WritesTextsForNumbersThatAreNoneWhereTold)
{
    JSONEncoder encoder;
    encoder.setNonConformingFloatEncodingStrategy(
        JSONEncoder::NonConformingFloatEncodingStrategy::convertToString(
            {.positiveInfinity = "+", .negativeInfinity = "-", .nan = "?"}));
    const double infinity = std::numeric_limits<double>::infinity();

    EXPECT_EQ(encoder.encodeText(
                  std::vector<double>{infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}),
        R"(["+","-","?"])");
}

TEST(JSONEncoder, SortsAndIndentsWhereTold)
{
    JSONEncoder encoder;
    encoder.setOutputFormatting({.prettyPrinted = true, .sortedKeys = true});

    EXPECT_EQ(encoder.encodeText(Request{1, {}, false}), R"({
  "addresses" : [],
  "identifier" : 1,
  "isUrgent" : false
})");
}

TEST(JSONEncoder, IsReadBackEqualByTheDecoder)
{
    for (unsigned seed = 0; seed < 1'000; ++seed) {
        const auto value = randomValue(seed);
        const auto data = JSONEncoder().encode(value);

        ASSERT_EQ(JSONDecoder().decode<Everything>(data), value) << "seed " << seed;
    }
}

TEST(JSONEncoder, ThrowsWhatIsAlsoCaughtAsAStandardException)
{
    try {
        JSONEncoder().encode(std::vector<double>{0, std::numeric_limits<double>::infinity()});
        FAIL();
    } catch (const std::exception& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("Index 1"));
    }
}

TEST(JSONEncoder, EncodesOnSeveralThreadsAtOnce)
{
    JSONEncoder encoder;
    encoder.setKeyEncodingStrategy(JSONEncoder::KeyEncodingStrategy::convertToSnakeCase());
    encoder.setDateEncodingStrategy(
        JSONEncoder::DateEncodingStrategy::custom([](const Date& date, const Encoder& inner) {
            inner.singleValueContainer().encode(date.secondsSince1970() * 2);
        }));
    std::vector<int> right(4);
    std::vector<std::thread> threads;
    for (int& count : right)
        threads.emplace_back([&encoder, &count] {
            for (int number = 0; number < 200; ++number) {
                const auto digits = std::to_string(number);
                const auto keys = encoder.encodeText(Keys{digits, number, {}});
                const auto date = encoder.encodeText(Date(number));
                const auto expectedKeys = R"({"first_name":")" + digits + R"(","my_url_property":)" + digits
                    + R"(,"not_changed":{}})";
                count += keys == expectedKeys && date == std::to_string(number * 2) ? 1 : 0;
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(right, ::testing::ElementsAre(200, 200, 200, 200));
}
