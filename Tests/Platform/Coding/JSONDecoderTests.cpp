#include "Orrenby/Platform/Coding/JSONDecoder.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <set>
#include <thread>
#include <unordered_map>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::Pair;

namespace {

//! [Decoding a response]
struct Place {
    double latitude = 0;
    double longitude = 0;
};
struct Report {
    std::int64_t identifier = 0;
    std::string title;
    std::optional<std::string> note;
    std::vector<std::string> tags;
    Place place;
};

std::vector<Report> reports(std::string_view text)
{
    const JSONDecoder decoder;
    return decoder.decode<std::vector<Report>>(text);
}
//! [Decoding a response]

template <class T> T decoded(std::string_view text) { return JSONDecoder().decode<T>(text); }

template <class T> std::string failure(std::string_view text, const JSONDecoder& decoder = {})
{
    try {
        decoder.decode<T>(text);
        return "no failure";
    } catch (const DecodingError& error) {
        return error.description();
    }
}

struct Tree {
    int value = 0;
    std::vector<Tree> children;
};

struct Keyword {
    std::string class_;
    std::string plain_;
};

struct Renamed {
    static constexpr std::string_view codingKeys[] = {"id", "full name"};
    int identifier = 0;
    std::string name;
};

struct Undefaulted {
    explicit Undefaulted(int newValue)
        : value(newValue)
    {}
    static Undefaulted init(const Decoder& decoder)
    {
        return Undefaulted(decoder.singleValueContainer().decode<int>());
    }
    int value;
};
struct Holder {
    Undefaulted first;
    std::unique_ptr<int> second;
};

struct Empty {};

struct Timed {
    Date at;
    Data bytes;
};

struct Snake {
    std::string firstName;
    std::map<std::string, int> countsByName;
};

} // namespace

TEST(JSONDecoder, DecodesAggregatesByTheNamesOfTheirFields)
{
    const auto found = reports(R"([{"identifier": 7, "title": "High water", "tags": ["river", "level"],
        "place": {"latitude": 51.5, "longitude": -0.125}, "unknown": {"a": [1e400]}},
        {"place": {"longitude": 1, "latitude": 2}, "note": "Räumung", "tags": [], "title": "", "identifier": -1}])");

    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].identifier, 7);
    EXPECT_EQ(found[0].note, std::nullopt);
    EXPECT_THAT(found[0].tags, ElementsAre("river", "level"));
    EXPECT_EQ(found[0].place.longitude, -0.125);
    EXPECT_EQ(found[1].note, "Räumung");
    EXPECT_EQ(found[1].place.latitude, 2);
}

TEST(JSONDecoder, TakesOptionalFieldsThatAreNull)
{
    EXPECT_EQ(
        reports(
            R"([{"identifier":1,"title":"","note":null,"tags":[],"place":{"latitude":0,"longitude":0}}])")[0]
            .note,
        std::nullopt);
}

TEST(JSONDecoder, NamesThePathAndThePlaceOfWhatIsWrong)
{
    EXPECT_EQ(failure<std::vector<Report>>("[{\"identifier\": 1,\n \"title\": 5}]"),
        "typeMismatch(String, at Index 0 > title, line 2, column 11: Expected String but found a number)");
    EXPECT_EQ(failure<std::vector<Report>>(R"([{"identifier":1,"title":""}])"),
        "keyNotFound(tags, at Index 0, line 1, column 2: No value under the key \"tags\")");
    EXPECT_EQ(failure<std::vector<Report>>(R"([{"identifier":null}])"),
        "valueNotFound(Int, at Index 0 > identifier, line 1, column 16: Expected Int but found null)");
    EXPECT_EQ(failure<std::vector<Report>>(R"({})"),
        "typeMismatch(Array<Report>, at the root, line 1, column 1: Expected Array<Report> but found an object)");
    EXPECT_EQ(failure<Place>("[]"),
        "typeMismatch(Dictionary<String, Any>, at the root, line 1, column 1: "
        "Expected Dictionary<String, Any> but found a list)");
}

TEST(JSONDecoder, CarriesTheReadersErrorForWhatIsNoJSON)
{
    try {
        decoded<int>("[1,");
        FAIL();
    } catch (const DecodingError& error) {
        EXPECT_EQ(error.description(),
            "dataCorrupted(at the root, line 1, column 4: No valid JSON: Unexpected end of the text at line 1, column 4)");
        EXPECT_NE(error.context().underlyingError->cast<JSONReadError>(), nullptr);
    }
}

TEST(JSONDecoder, ReturnsFailuresFromItsTwin)
{
    const JSONDecoder decoder;

    EXPECT_EQ(decoder.tryDecode<int>("5").value(), 5);
    EXPECT_NE(decoder.tryDecode<int>("true").error()->cast<DecodingError>(), nullptr);
}

TEST(JSONDecoder, ReadsBytesInAnyUnicodeEncoding)
{
    const Data utf16 = {
        std::byte{'['}, std::byte{0}, std::byte{'5'}, std::byte{0}, std::byte{']'}, std::byte{0}};

    EXPECT_THAT(JSONDecoder().decode<std::vector<int>>(utf16), ElementsAre(5));
}

TEST(JSONDecoder, KeepsIntegersToTheirRange)
{
    EXPECT_EQ(decoded<std::int8_t>("-128"), -128);
    EXPECT_EQ(decoded<std::uint8_t>("255"), 255);
    EXPECT_EQ(decoded<std::int64_t>("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(decoded<std::uint64_t>("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(failure<std::int8_t>("128"),
        "dataCorrupted(at the root, line 1, column 1: The number 128 does not fit in Int8)");
    EXPECT_EQ(failure<std::uint8_t>("-1"),
        "dataCorrupted(at the root, line 1, column 1: The number -1 does not fit in UInt8)");
    EXPECT_NE(failure<std::int64_t>("9223372036854775808"), "no failure");
    EXPECT_NE(failure<std::uint64_t>("18446744073709551616"), "no failure");
}

TEST(JSONDecoder, TakesNumbersAsIntegersWhenTheyAreExactlyThat)
{
    EXPECT_EQ(decoded<int>("1.0"), 1);
    EXPECT_EQ(decoded<int>("-1.2e1"), -12);
    EXPECT_EQ(decoded<unsigned>("-0"), 0U);
    EXPECT_NE(failure<int>("1.5"), "no failure");
    EXPECT_NE(failure<int>("1." + std::string(50, '0') + "1"), "no failure");
    EXPECT_NE(failure<int>("true"), "no failure");
}

TEST(JSONDecoder, TakesAnyNumberAsTheNearestFloatingOne)
{
    EXPECT_EQ(decoded<double>("9007199254740993"), 9007199254740992.0);
    EXPECT_EQ(decoded<double>("0.1"), 0.1);
    EXPECT_EQ(decoded<double>("-123456789012.345"), -123456789012.345);
    EXPECT_EQ(decoded<float>("0.1"), 0.1F);
    EXPECT_TRUE(std::signbit(decoded<double>("-0.0")));
    EXPECT_EQ(decoded<double>("1e-400"), 0.0);
    EXPECT_EQ(decoded<float>("1e-60"), 0.0F);
    EXPECT_EQ(failure<double>("1e400"),
        "dataCorrupted(at the root, line 1, column 1: The number 1e400 does not fit in Double)");
    EXPECT_NE(failure<float>("1e39"), "no failure");
    EXPECT_NE(failure<double>("false"), "no failure");
}

TEST(JSONDecoder, NeverTakesNumbersAsBooleans)
{
    EXPECT_TRUE(decoded<bool>("true"));
    EXPECT_NE(failure<bool>("1"), "no failure");
    EXPECT_NE(failure<bool>("0"), "no failure");
}

TEST(JSONDecoder, DecodesCollections)
{
    EXPECT_THAT((decoded<std::map<std::string, int>>(R"({"b":1,"a":2,"b":3})")),
        ElementsAre(Pair("a", 2), Pair("b", 3)));
    EXPECT_THAT((decoded<std::map<int, bool>>(R"({"-5":true,"7":false})")),
        ElementsAre(Pair(-5, true), Pair(7, false)));
    EXPECT_EQ((decoded<std::unordered_map<std::string, std::vector<int>>>(R"({"a":[1]})")["a"]),
        std::vector<int>{1});
    EXPECT_THAT(decoded<std::set<std::string>>(R"(["b","a","b"])"), ElementsAre("a", "b"));
    EXPECT_THAT((decoded<std::array<int, 2>>("[1,2]")), ElementsAre(1, 2));
    EXPECT_THAT(decoded<std::vector<std::optional<int>>>("[1,null]"), ElementsAre(1, std::nullopt));
    EXPECT_THAT(decoded<std::vector<bool>>("[true,false]"), ElementsAre(true, false));
    EXPECT_EQ(*decoded<std::unique_ptr<int>>("3"), 3);
    EXPECT_EQ(decoded<std::shared_ptr<const int>>("null"), nullptr);
}

TEST(JSONDecoder, RefusesCollectionsOfAnotherForm)
{
    EXPECT_EQ(failure<std::vector<int>>("[1,\"2\"]"),
        "typeMismatch(Int32, at Index 1, line 1, column 4: Expected Int32 but found a text)");
    EXPECT_EQ((failure<std::array<int, 2>>("[1]")),
        "dataCorrupted(at the root, line 1, column 1: Expected 2 elements but found 1)");
    EXPECT_EQ((failure<std::map<int, int>>(R"({"x":1})")),
        "typeMismatch(Int32, at x, line 1, column 6: Expected a key that is Int32 in decimal digits)");
    EXPECT_NE((failure<std::map<std::int8_t, int>>(R"({"128":1})")), "no failure");
    EXPECT_NE((failure<std::map<std::string, int>>("[]")), "no failure");
    EXPECT_NE(failure<std::vector<int>>("null"), "no failure");
}

TEST(JSONDecoder, DecodesTypesThatHoldThemselves)
{
    const auto tree = decoded<Tree>(
        R"({"value":1,"children":[{"value":2,"children":[]},{"value":3,"children":[]}]})");

    EXPECT_EQ(tree.children[1].value, 3);
}

TEST(JSONDecoder, LeavesOutTheUnderscoreThatAKeywordNeeds)
{
    const auto found = decoded<Keyword>(R"({"class":"a","plain_":"b"})");

    EXPECT_EQ(found.class_, "a");
    EXPECT_EQ(found.plain_, "b");
}

TEST(JSONDecoder, TakesTheKeysThatAnAggregateLists)
{
    const auto found = decoded<Renamed>(R"({"id":4,"full name":"Ada"})");

    EXPECT_EQ(found.identifier, 4);
    EXPECT_EQ(found.name, "Ada");
}

TEST(JSONDecoder, DecodesFieldsWithoutDefault)
{
    const auto found = decoded<Holder>(R"({"first":1,"second":2})");

    EXPECT_EQ(found.first.value, 1);
    EXPECT_EQ(*found.second, 2);
}

TEST(JSONDecoder, DecodesAnEmptyAggregateFromAnyObject)
{
    EXPECT_NO_THROW(decoded<Empty>(R"({"a":1})"));
    EXPECT_NE(failure<Empty>("1"), "no failure");
}

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
    EXPECT_EQ(decoder.decode<Place>(R"({"_latitude":1,"_longitude":2})").longitude, 2);
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

TEST(JSONDecoder, DecodesIdentifiers)
{
    EXPECT_EQ(decoded<UUID>(R"("00112233-4455-6677-8899-aabbccddeeff")").uuidString(),
        "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(
        failure<UUID>(R"("x")"), "dataCorrupted(at the root, line 1, column 1: Expected the text of a UUID)");
}

TEST(JSONDecoder, HandsItsUserInfoToTheTypes)
{
    struct Asks {
        static Asks init(const Decoder& decoder)
        {
            return {decoder.userInfo().cast<int>("factor").value_or(0)};
        }
        int factor;
    };
    JSONDecoder decoder;
    decoder.userInfo().set("factor", 3);

    EXPECT_EQ(decoder.decode<Asks>("0").factor, 3);
}

namespace {

/// Counts how often no number stands in a list, and asks where.
struct WrongPlaces {
    std::vector<TextPosition> places;

    static WrongPlaces init(const Decoder& decoder)
    {
        WrongPlaces result;
        auto list = decoder.unkeyedContainer();
        while (!list.isAtEnd()) {
            try {
                list.decode<int>();
            } catch (const DecodingError& error) {
                result.places.push_back(*error.context().position);
                static_cast<void>(list.superDecoder());
            }
        }
        return result;
    }
};

} // namespace

TEST(JSONDecoder, KnowsEachOfManyPlacesInALongText)
{
    std::string text = "[0";
    std::vector<TextPosition> expected;
    for (int number = 0; number < 5'000; ++number) {
        text += number % 100 == 0 ? ",\r\n" : ", ";
        expected.push_back(TextPosition::in(text, text.size()));
        text += "\"ä\"";
    }
    text += "]";

    EXPECT_EQ(decoded<WrongPlaces>(text).places, expected);
}

namespace {

/// Takes whatever there is.
struct Anything {
    static Anything init(const Decoder&) { return {}; }
};

std::string nestedLists(std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); }

/// Counts itself; a list of them fails at an element that is no number.
struct Counted {
    static inline int alive = 0;

    Counted() { ++alive; }
    Counted(const Counted&) { ++alive; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --alive; }

    static Counted init(const Decoder& decoder)
    {
        static_cast<void>(decoder.singleValueContainer().decode<int>());
        return {};
    }
};

struct Wide {
    int a01 = 0, a02 = 0, a03 = 0, a04 = 0, a05 = 0, a06 = 0, a07 = 0, a08 = 0, a09 = 0, a10 = 0, a11 = 0;
    std::optional<int> b01, b02, b03, b04, b05, b06, b07, b08, b09, b10;
    std::string c01, c02, c03, c04, c05, c06, c07, c08, c09;
    std::optional<Place> place;
    std::vector<Place> places;
};

} // namespace

TEST(JSONDecoder, DecodesADepthOf512AndNoMore)
{
    EXPECT_NO_THROW(decoded<Anything>(nestedLists(512)));
    EXPECT_EQ(failure<Anything>(nestedLists(513)),
        "dataCorrupted(at the root, line 1, column 513: No valid JSON: More than 512 nested values at line 1, "
        "column 513)");
    EXPECT_NE(failure<Anything>(std::string(1'000'000, '[')), "no failure");
}

TEST(JSONDecoder, TakesTheLastOfRepeatedMembers)
{
    const auto place = decoded<Place>(R"({"latitude":"x","longitude":2,"latitude":3})");

    EXPECT_EQ(place.latitude, 3);
    EXPECT_EQ(place.longitude, 2);
}

TEST(JSONDecoder, NamesThePathOfANumberThatIsTooLarge)
{
    EXPECT_EQ(failure<std::vector<Place>>(R"([{"latitude":1e400,"longitude":0}])"),
        "dataCorrupted(at Index 0 > latitude, line 1, column 14: The number 1e400 does not fit in Double)");
}

TEST(JSONDecoder, RefusesTextThatIsCutOrHasALoneSurrogate)
{
    for (const std::string_view text : {"", "[", "[1,", "\"a", "{\"a\"", "{\"a\":", "tru", "-", R"("\uD800")",
             R"("\uDC00")", R"("\uD800\u0041")", "\"\xC3\"", "\"\xED\xA0\x80\""})
        EXPECT_THAT(failure<Anything>(text), ::testing::StartsWith("dataCorrupted(")) << text;
}

TEST(JSONDecoder, DecodesTextsOfMegabytes)
{
    const std::string plain(3'000'000, 'x');

    EXPECT_EQ(decoded<std::string>('"' + plain + '"'), plain);
    EXPECT_EQ(decoded<std::string>("\"\\n" + plain + "\""), '\n' + plain);
    EXPECT_EQ(decoded<double>("0." + std::string(1'000'000, '0') + "1"), 0.0);
}

TEST(JSONDecoder, LeavesNothingOfAValueThatFails)
{
    EXPECT_NE(failure<std::vector<Counted>>("[1,2,3,null]"), "no failure");
    EXPECT_NE((failure<std::map<std::string, Counted>>(R"({"a":1,"b":"2"})")), "no failure");

    EXPECT_EQ(Counted::alive, 0);
}

TEST(JSONDecoder, DecodesAggregatesOf32Fields)
{
    std::string text = "{";
    for (int field = 1; field <= 11; ++field)
        text += std::string(field < 10 ? R"("a0)" : R"("a)") + std::to_string(field) + R"(":)"
            + std::to_string(field) + ',';
    for (int field = 1; field <= 9; ++field)
        text += R"("c0)" + std::to_string(field) + R"(":"text",)";
    text += R"("b10":5,"b01":null,"place":{"latitude":1,"longitude":2},"places":[]})";
    const auto wide = decoded<Wide>(text);

    EXPECT_EQ(wide.a01, 1);
    EXPECT_EQ(wide.a11, 11);
    EXPECT_EQ(wide.b01, std::nullopt);
    EXPECT_EQ(wide.b10, 5);
    EXPECT_EQ(wide.c09, "text");
    EXPECT_EQ(wide.place.value().longitude, 2);
    EXPECT_EQ(failure<Wide>(R"({"a01":1})"),
        "keyNotFound(a02, at the root, line 1, column 1: No value under the key \"a02\")");
}

TEST(JSONDecoder, ThrowsWhatIsAlsoCaughtAsAStandardException)
{
    try {
        decoded<int>("null");
        FAIL();
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(),
            "valueNotFound(Int32, at the root, line 1, column 1: Expected Int32 but found null)");
    }
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
