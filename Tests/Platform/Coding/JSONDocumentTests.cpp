#include "Orrenby/Platform/Coding/JSONDocument.hpp"

#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <gmock/gmock.h>
#include <map>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::Pair;

namespace {

using Kind = JSONReadError::Kind;

std::string repeated(std::string_view text, int count)
{
    std::string result;
    for (; count > 0; --count)
        result += text;
    return result;
}

/// The members of the root by key; texts and numbers as they are, everything else by its kind.
std::vector<std::pair<std::string, std::string>> members(std::string_view text)
{
    const JSONDocument document(text);
    std::vector<std::pair<std::string, std::string>> result;
    for (auto node = document.firstIn(0); node < document.endOf(0); node = document.next(node)) {
        const bool isScalar = document.kind(node) == JSONKind::Number
            || document.kind(node) == JSONKind::Text;
        result.emplace_back(document.key(node),
            isScalar ? document.text(node) : "kind " + std::to_string(static_cast<int>(document.kind(node))));
    }
    return result;
}

/// The text that the document consists of.
std::string onlyText(std::string_view text)
{
    const JSONDocument document(text);
    return std::string(document.text(0));
}

std::string failure(std::string_view text)
{
    try {
        const JSONDocument document(text);
        return "no failure";
    } catch (const JSONReadError& error) {
        return error.description();
    }
}

template <class Character> Data encoded(const std::basic_string<Character>& units, bool isBigEndian)
{
    Data data;
    for (const auto unit : units)
        for (std::size_t index = 0; index < sizeof unit; ++index) {
            const auto place = isBigEndian ? sizeof unit - 1 - index : index;
            data.push_back(static_cast<std::byte>(static_cast<std::uint32_t>(unit) >> (8 * place)));
        }
    return data;
}

} // namespace

TEST(JSONDocument, ListsItsValuesDepthFirst)
{
    //! [Walking a document]
    const JSONDocument document(R"({"name": "Ada", "scores": [1, 2.5], "active": true})");

    std::vector<std::string> keys;
    for (auto node = document.firstIn(0); node < document.endOf(0); node = document.next(node))
        keys.emplace_back(document.key(node));
    const auto scores = document.find(0, "scores");
    const auto second = document.next(document.firstIn(scores));
    const std::string_view number = document.text(second);
    //! [Walking a document]

    EXPECT_THAT(keys, ElementsAre("name", "scores", "active"));
    EXPECT_EQ(document.count(scores), 2U);
    EXPECT_EQ(number, "2.5");
    EXPECT_EQ(document.nodeCount(), 6U);
    EXPECT_EQ(document.find(0, "missing"), JSONDocument::absent);
}

TEST(JSONDocument, ReadsEveryKind)
{
    EXPECT_THAT(members(R"({"a":null,"b":false,"c":-0.5e3,"d":"x","e":[],"f":{}})"),
        ElementsAre(Pair("a", "kind 0"), Pair("b", "kind 1"), Pair("c", "-0.5e3"), Pair("d", "x"),
            Pair("e", "kind 4"), Pair("f", "kind 5")));
}

TEST(JSONDocument, ReadsAScalarAlone)
{
    EXPECT_EQ(onlyText(" 12 "), "12");
    EXPECT_EQ(onlyText("\"\""), "");
    EXPECT_EQ(onlyText("\r\n\t\"x\"\t"), "x");
}

TEST(JSONDocument, TellsBooleansApart)
{
    const JSONDocument document("[true,false]");

    EXPECT_TRUE(document.boolean(1));
    EXPECT_FALSE(document.boolean(2));
}

TEST(JSONDocument, ResolvesEscapesInTextsAndKeys)
{
    EXPECT_EQ(onlyText(R"("\"\\\/\b\f\n\r\t\u0041\u00e4\ud83d\ude00")"), "\"\\/\b\f\n\r\tAä😀");
    EXPECT_EQ(onlyText(R"("before\nafter")"), "before\nafter");
    EXPECT_EQ(onlyText(R"("\u0000")"), std::string(1, '\0'));
    EXPECT_THAT(members(R"({"a\nb":"\\","\"":"\"", "":1})"),
        ElementsAre(Pair("a\nb", "\\"), Pair("\"", "\""), Pair("", "1")));
}

TEST(JSONDocument, KeepsLongTextsWithEscapesWhole)
{
    const auto text = repeated("piece \\n", 20'000);

    EXPECT_EQ(onlyText("\"" + text + "\""), repeated("piece \n", 20'000));
}

TEST(JSONDocument, KeepsNumbersOfAnyLength)
{
    const auto digits = repeated("1234567890", 100'000);

    EXPECT_EQ(onlyText(digits), digits);
    EXPECT_EQ(onlyText("0." + digits + "e-5"), "0." + digits + "e-5");
    EXPECT_EQ(onlyText("1e400"), "1e400");
}

TEST(JSONDocument, TellsNumbersWrittenAsIntegers)
{
    const JSONDocument document("[1,-1,18446744073709551615,1.0,1e2]");

    EXPECT_TRUE(document.isPlainNumber(1));
    EXPECT_TRUE(document.isPlainNumber(2));
    EXPECT_TRUE(document.isPlainNumber(3));
    EXPECT_FALSE(document.isPlainNumber(4));
    EXPECT_FALSE(document.isPlainNumber(5));
}

TEST(JSONDocument, TakesTheLastOfRepeatedMembersAtThePlaceOfTheFirst)
{
    EXPECT_THAT(members(R"({"a":1,"b":2,"a":[3,[4]],"c":5,"b":6})"),
        ElementsAre(Pair("a", "kind 4"), Pair("b", "6"), Pair("c", "5")));
    EXPECT_THAT(members(R"({"a":{"x":1,"x":2},"\u0061":3})"), ElementsAre(Pair("a", "3")));
}

TEST(JSONDocument, KeepsWhatIsInsideRepeatedMembers)
{
    const JSONDocument document(R"({"z":0,"a":0,"a":{"l":[1,[2,3]],"m":{"n":4}},"z":[5]})");
    const auto a = document.find(0, "a");
    const auto inner = document.next(document.firstIn(document.find(a, "l")));

    EXPECT_EQ(document.text(document.next(document.firstIn(inner))), "3");
    EXPECT_EQ(document.text(document.find(document.find(a, "m"), "n")), "4");
    EXPECT_EQ(document.text(document.firstIn(document.find(0, "z"))), "5");
    EXPECT_EQ(document.count(0), 2U);
}

TEST(JSONDocument, ComparesTheKeysOfNeighboursCorrectly)
{
    // The second has the keys of the first and more, the third fewer, the fourth one twice.
    const JSONDocument document(R"([{"a":1,"b":2},{"a":1,"b":2,"a":3},{"a":1},{"a":1,"b":2},{"b":1,"b":2}])");
    std::vector<std::size_t> counts;
    for (auto node = document.firstIn(0); node < document.endOf(0); node = document.next(node))
        counts.push_back(document.count(node));

    EXPECT_THAT(counts, ElementsAre(2, 2, 1, 2, 1));
}

TEST(JSONDocument, AgreesWithAMapOnRandomRepetitions)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        std::srand(seed);
        std::string text = "{";
        std::map<std::string, std::string> expected;
        for (int count = std::rand() % 80; count > 0; --count) {
            const auto key = std::to_string(std::rand() % 50);
            const auto value = std::to_string(std::rand());
            const bool isNested = std::rand() % 3 == 0;
            text += (text.size() > 1 ? ",\"" : "\"") + key + "\":" + (isNested ? "[" + value + "]" : value);
            expected[key] = value;
        }
        const auto complete = text + "}";
        const JSONDocument document(complete);

        ASSERT_EQ(document.count(0), expected.size()) << "seed " << seed;
        for (const auto& [key, value] : expected) {
            const auto node = document.find(0, key);
            ASSERT_NE(node, JSONDocument::absent) << "seed " << seed;
            ASSERT_EQ(document.text(document.kind(node) == JSONKind::List ? node + 1 : node), value);
        }
    }
}

TEST(JSONDocument, FindsMembersOfWideObjectsInAnyOrder)
{
    std::string text = "{";
    for (int number = 0; number < 10'000; ++number)
        text += "\"key " + std::to_string(number) + "\":" + std::to_string(number) + ",";
    text += "\"last\":0}";
    const JSONDocument document(text);
    auto cursor = document.firstIn(0);

    for (const int number : {9'999, 0, 5'000, 5'001, 33, 32, 31})
        EXPECT_EQ(
            document.text(document.find(0, "key " + std::to_string(number), cursor)), std::to_string(number));
    EXPECT_EQ(document.find(0, "key 10000", cursor), JSONDocument::absent);
}

TEST(JSONDocument, AcceptsADepthOf512)
{
    EXPECT_EQ(failure(repeated("[", 512) + repeated("]", 512)), "no failure");
    EXPECT_EQ(failure(repeated("{\"a\":", 511) + "{}" + repeated("}", 511)), "no failure");
}

TEST(JSONDocument, RefusesADepthOf513)
{
    EXPECT_EQ(failure(repeated("[", 513) + repeated("]", 513)),
        "More than 512 nested values at line 1, column 513");
    EXPECT_EQ(failure(repeated("[", 1'000'000)), "More than 512 nested values at line 1, column 513");
}

TEST(JSONDocument, SaysWhereTheTextIsWrong)
{
    EXPECT_EQ(failure("{\n  \"a\": 1,\n  \"ä\": tru,\n}"), "Unexpected text at line 3, column 8");
    EXPECT_EQ(failure("[1,]"), "Unexpected text at line 1, column 4");
    EXPECT_EQ(failure("{\"a\":1"), "Unexpected end of the text at line 1, column 7");
    EXPECT_EQ(failure("[1] x"), "Text after the value at line 1, column 5");
    EXPECT_EQ(failure(""), "Unexpected end of the text at line 1, column 1");
    EXPECT_EQ(failure("  "), "Unexpected end of the text at line 1, column 3");
}

TEST(JSONDocument, RefusesWhatOnlyLooksLikeJSON)
{
    for (const std::string_view text :
        {"01", "+1", ".5", "1.", "1e", "1e+", "-", "0x1", "NaN", "Infinity", "'a'", "{a:1}", "[1 2]",
            "{\"a\" 1}", "{\"a\":1,}", "{,}", "[,]", "// x\n1", "/* x */1", "True", "nul", "\"\t\"",
            "\"\\x\"", "\"\\u12\"", "\"a", "]", "}", ":", ",", "1,2", "\"a\"\"b\"", "\v1", "1\f"})
        EXPECT_NE(failure(text), "no failure") << text;
    EXPECT_NE(failure(std::string_view("1\0", 2)), "no failure");
    EXPECT_NE(failure(std::string_view("[1]\0x", 5)), "no failure");
}

TEST(JSONDocument, RefusesLoneSurrogatesAndBadUTF8)
{
    for (const std::string_view text : {R"("\ud800")", R"("\udc00")", R"("\ud800\u0041")", R"("\ud800x")",
             R"("\udc00\ud800")", "\"\xFF\"", "\"\xC0\x80\"", "\"\xED\xA0\x80\"", "\"\xF4\x90\x80\x80\"",
             "\"\xE2\x82\"", "\"\x80\"", "\"\xC3", "{\"\xFF\":1}"})
        EXPECT_NE(failure(text), "no failure") << text;
}

TEST(JSONDocument, TellsTheEncodingByTheMark)
{
    const std::u16string utf16 = u"\uFEFF[\"ä€\uFFFD😀\"]";
    const std::u32string utf32 = U"\uFEFF[\"ä€\uFFFD😀\"]";
    for (const auto& data : {encoded(utf16, false), encoded(utf16, true), encoded(utf32, false),
             encoded(utf32, true), dataFromText("\xEF\xBB\xBF[\"ä€\uFFFD😀\"]")}) {
        const JSONDocument document(data);

        EXPECT_EQ(document.text(1), "ä€\uFFFD😀");
        EXPECT_EQ(document.source(), "[\"ä€\uFFFD😀\"]");
    }
}

TEST(JSONDocument, TellsTheEncodingByTheZeros)
{
    for (const auto& data :
        {encoded(std::u16string(u"[\"ä\"]"), false), encoded(std::u16string(u"[\"ä\"]"), true),
            encoded(std::u32string(U"[\"ä\"]"), false), encoded(std::u32string(U"[\"ä\"]"), true)})
        EXPECT_EQ(JSONDocument(data).text(1), "ä");
    for (const auto& data : {encoded(std::u16string(u"7"), false), encoded(std::u16string(u"7"), true),
             encoded(std::u32string(U"7"), false), encoded(std::u32string(U"7"), true)})
        EXPECT_EQ(JSONDocument(data).text(0), "7");
}

TEST(JSONDocument, RefusesBrokenUTF16AndUTF32)
{
    const auto kindOf = [](const Data& data) {
        try {
            const JSONDocument document(data);
            return std::optional<Kind>();
        } catch (const JSONReadError& error) {
            return std::optional(error.kind());
        }
    };
    auto cut = encoded(std::u16string(u"[1]"), false);
    cut.push_back(std::byte{0x20});

    EXPECT_EQ(kindOf(cut), Kind::BadEncoding);
    EXPECT_EQ(kindOf(encoded(std::u16string(u"[\"\xD800\"]"), false)), Kind::BadEncoding);
    EXPECT_EQ(kindOf(encoded(std::u16string(u"[\"\xDC00\"]"), true)), Kind::BadEncoding);
    EXPECT_EQ(kindOf(encoded(std::u16string(u"[\"\xD800"), true)), Kind::BadEncoding);
    EXPECT_EQ(
        kindOf(encoded(std::u32string(1, U'[') + static_cast<char32_t>(0x110000), false)), Kind::BadEncoding);
    EXPECT_EQ(
        kindOf(encoded(std::u32string(1, U'[') + static_cast<char32_t>(0xD800), true)), Kind::BadEncoding);
}

TEST(JSONDocument, KnowsWhereEachValueStands)
{
    const JSONDocument document("{\"a\" :\n [ 1,\r\n\"\\n\" , true,{ } ,null], \"b\\t\":\"x\"}");
    std::vector<std::size_t> offsets;
    for (JSONDocument::Node node = 0; node < document.nodeCount(); ++node)
        offsets.push_back(document.offset(node));

    EXPECT_THAT(offsets, ElementsAre(0, 8, 10, 14, 21, 26, 31, 44));
    EXPECT_EQ(document.position(4), (TextPosition{21, 3, 8}));
}

TEST(JSONDocument, TakesAtMostTwoBytesForEachByteOfAResponse)
{
    std::string text = "[";
    for (int number = 0; number < 1'000; ++number)
        text += (number > 0 ? ",{\"identifier\":" : "{\"identifier\":") + std::to_string(100'000 + number)
            + R"(,"name":"Somebody","email":"a@example.com","active":true,"tags":["one","two"],"score":12.75})";
    text += "]";

    EXPECT_LE(JSONDocument(text).byteCount(), text.size() * 2);
}

TEST(JSONDocument, RefusesExponentsBeyondAllUse)
{
    EXPECT_EQ(failure("1e999999999"), "no failure");
    EXPECT_EQ(failure("1e99999999999"), "Unexpected text at line 1, column 12");
}
