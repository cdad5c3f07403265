#include "Orrenby/Platform/Coding/JSONDecoder.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Tests/Platform/Coding/JSONDecoderParts.hpp"
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <set>
#include <thread>
#include <unordered_map>

using namespace orrenby;
using orrenby::testing::decoded;
using orrenby::testing::failure;
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

TEST(JSONDecoder, DecodesIdentifiers)
{
    EXPECT_EQ(decoded<UUID>(R"("00112233-4455-6677-8899-aabbccddeeff")").uuidString(),
        "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(
        failure<UUID>(R"("x")"), "dataCorrupted(at the root, line 1, column 1: Expected the text of a UUID)");
}

TEST(JSONDecoder, DecodesURLs)
{
    EXPECT_EQ(decoded<URL>(R"("http:\/\/example.com\/a?b#c")"), "http://example.com/a?b#c"_url);
    EXPECT_EQ(
        failure<URL>(R"("a b")"), "dataCorrupted(at the root, line 1, column 1: Expected the text of a URL)");
    EXPECT_THAT(failure<URL>("7"), ::testing::StartsWith("typeMismatch("));
    EXPECT_THAT(failure<URL>("null"), ::testing::StartsWith("valueNotFound("));
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

TEST(JSONDecoder, NamesTheUnsignedNumberThatItWanted)
{
    EXPECT_EQ(failure<std::uint8_t>("true"),
        "typeMismatch(UInt8, at the root, line 1, column 1: Expected UInt8 but found a boolean)");
    EXPECT_EQ(failure<std::uint64_t>("\"7\""),
        "typeMismatch(UInt64, at the root, line 1, column 1: Expected UInt64 but found a text)");
}

TEST(JSONDecoder, NeedsATextForAUUID)
{
    EXPECT_EQ(failure<UUID>("null"),
        "valueNotFound(UUID, at the root, line 1, column 1: Expected UUID but found null)");
    EXPECT_EQ(failure<UUID>("7"),
        "typeMismatch(String, at the root, line 1, column 1: Expected String but found a number)");
}
