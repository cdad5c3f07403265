#include "Orrenby/Platform/Coding/JSONDecoder.hpp"

#include "Tests/Platform/Coding/JSONDecoderParts.hpp"
#include <gmock/gmock.h>
#include <map>
#include <optional>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::decoded;
using orrenby::testing::failure;
using orrenby::testing::Point;

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
    std::optional<Point> place;
    std::vector<Point> places;
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
    const auto place = decoded<Point>(R"({"latitude":"x","longitude":2,"latitude":3})");

    EXPECT_EQ(place.latitude, 3);
    EXPECT_EQ(place.longitude, 2);
}

TEST(JSONDecoder, NamesThePathOfANumberThatIsTooLarge)
{
    EXPECT_EQ(failure<std::vector<Point>>(R"([{"latitude":1e400,"longitude":0}])"),
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
