#include "Orrenby/Utilities/JSON/AnyJSONValue.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <map>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

//! [Decoding any JSON]
struct Event {
    std::string name;
    std::optional<AnyJSONValue> details; // each kind of event has its own
};

std::string detailsOf(std::string_view text)
{
    const auto event = JSONDecoder().decode<Event>(text);
    return event.details ? describe(event.details->value()) : "none";
}
//! [Decoding any JSON]

Any decoded(std::string_view text) { return JSONDecoder().decode<AnyJSONValue>(text).value(); }

std::string encoded(Any value) { return JSONEncoder().encodeText(AnyJSONValue(std::move(value))); }

DecodingError refusal(std::string_view text)
{
    return *JSONDecoder().tryDecode<AnyJSONValue>(text).error()->cast<DecodingError>();
}

template <class T> EncodingError refusalToEncode(const T& value)
{
    return *JSONEncoder().tryEncode(value).error()->template cast<EncodingError>();
}
EncodingError refusalToEncodeAny(Any value) { return refusalToEncode(AnyJSONValue(std::move(value))); }

std::vector<std::string> path(const std::vector<CodingKey>& keys)
{
    std::vector<std::string> result;
    for (const auto& key : keys)
        result.push_back(key.stringValue());
    return result;
}

} // namespace

TEST(AnyJSONValue, IsOneMemberAmongTypedOnes)
{
    EXPECT_EQ(detailsOf(R"({"name": "opened", "details": {"by": "Ada", "times": 2}})"),
        R"(["by": "Ada", "times": 2])");
    EXPECT_EQ(detailsOf(R"({"name": "closed", "details": [1, 2]})"), "[1, 2]");
    EXPECT_EQ(detailsOf(R"({"name": "lost", "details": null})"), "none");
}

TEST(AnyJSONValue, DecodesEachKind)
{
    EXPECT_EQ(decoded("{}"), Any(Dictionary()));
    EXPECT_EQ(decoded("[]"), Any(Array()));
    EXPECT_EQ(decoded(R"("")"), Any(""));
    EXPECT_EQ(decoded(R"("a\n\u00e9")"), Any("a\n\u00e9"));
    EXPECT_EQ(decoded("true"), Any(true));
    EXPECT_EQ(decoded("false"), Any(false));
    EXPECT_EQ(decoded("-7"), Any(-7));
    EXPECT_EQ(decoded("0.5"), Any(0.5));
}

TEST(AnyJSONValue, DecodesNestedValuesWithoutWrappers)
{
    EXPECT_EQ(decoded(R"({"a": [1, "x", true]})"), Any(Dictionary{{"a", Array{1, "x", true}}}));
    EXPECT_EQ(decoded(R"({"a": {"b": {"c": [[]]}}})"),
        Any(Dictionary{{"a", Dictionary{{"b", Dictionary{{"c", Array{Any(Array())}}}}}}}));
}

TEST(AnyJSONValue, DecodesNumbersThatAreExactlyIntegersAsSuch)
{
    EXPECT_EQ(decoded("1.0"), Any(1));
    EXPECT_EQ(decoded("1e3"), Any(1000));
    EXPECT_EQ(decoded("-0"), Any(0));
    EXPECT_EQ(decoded("-0.0"), Any(0));
    EXPECT_EQ(decoded("12500e-2"), Any(125));
    EXPECT_EQ(decoded("9223372036854775807"), Any(std::numeric_limits<std::int64_t>::max()));
    EXPECT_EQ(decoded("-9223372036854775808"), Any(std::numeric_limits<std::int64_t>::min()));
}

TEST(AnyJSONValue, DecodesAllOtherNumbersAsDouble)
{
    EXPECT_EQ(decoded("1.5"), Any(1.5));
    EXPECT_EQ(decoded("9223372036854775808"), Any(0x1p63));
    EXPECT_EQ(decoded("1e300"), Any(1e300));
}

TEST(AnyJSONValue, DecodesNumbersThatAreRoundedToWholeOnesAsDouble)
{
    EXPECT_EQ(decoded("0.99999999999999999999"), Any(1.0));
    EXPECT_EQ(decoded("1e-400"), Any(0.0));
    EXPECT_EQ(decoded("-1e-400"), Any(-0.0));
    EXPECT_EQ(decoded("123456789012345678901e-3"), Any(123456789012345678.901));
    EXPECT_EQ(decoded("9223372036854775807.5"), Any(0x1p63));
    EXPECT_EQ(decoded("[0.99999999999999999999]"), Any(Array{1.0}));
    EXPECT_EQ(decoded(R"({"a": 0.99999999999999999999})"), Any(Dictionary{{"a", 1.0}}));
}

TEST(AnyJSONValue, AgreesWithTypedDecodingOnWhatIsAnInteger)
{
    const auto isInteger = [](std::string_view text) {
        return JSONDecoder().tryDecode<std::int64_t>(text).isSuccess();
    };

    for (const auto* text : {"1", "1.0", "1e3", "-0", "12500e-2", "0.5", "0.99999999999999999999", "1e-400",
             "123456789012345678901e-3", "9223372036854775807", "9223372036854775808",
             "9223372036854775807.5", "1e300"})
        EXPECT_EQ(decoded(text).kind() == Any::Kind::Int, isInteger(text)) << text;
}

TEST(AnyJSONValue, HoldsNumbersAndBooleansStrictly)
{
    EXPECT_EQ(decoded("1").cast<double>(), std::nullopt);
    EXPECT_EQ(decoded("1").cast<bool>(), std::nullopt);
    EXPECT_EQ(decoded("true").cast<std::int64_t>(), std::nullopt);
    EXPECT_FALSE(decoded("1").isParsedNumber());
    EXPECT_FALSE(decoded("1.5").isParsedNumber());
}

TEST(AnyJSONValue, DecodesTheLastOfRepeatedMembers)
{
    EXPECT_EQ(decoded(R"({"a": 1, "b": 2, "a": 3})"), Any(Dictionary{{"a", 3}, {"b", 2}}));
}

TEST(AnyJSONValue, LeavesKeysAsTheyStand)
{
    JSONDecoder decoder;
    decoder.setKeyDecodingStrategy(JSONDecoder::KeyDecodingStrategy::convertFromSnakeCase());

    const auto value = decoder.decode<AnyJSONValue>(R"({"first_name": {"in_capitals": "ADA"}})").value();

    EXPECT_EQ(value, Any(Dictionary{{"first_name", Dictionary{{"in_capitals", "ADA"}}}}));
}

TEST(AnyJSONValue, DecodesAsDeepAsJSONIsRead)
{
    const auto text = std::string(512, '[') + std::string(512, ']');

    EXPECT_EQ(encoded(decoded(text)), text);
    EXPECT_EQ(
        refusal(std::string(513, '[') + std::string(513, ']')).kind(), DecodingError::Kind::DataCorrupted);
}

TEST(AnyJSONValue, RefusesNull)
{
    const auto error = refusal("null");

    EXPECT_EQ(error.kind(), DecodingError::Kind::TypeMismatch);
    EXPECT_EQ(error.typeName(), "AnyJSONValue");
    EXPECT_EQ(error.context().debugDescription, "Unsupported JSON type");
    EXPECT_THAT(error.context().codingPath, IsEmpty());
}

TEST(AnyJSONValue, RefusesWhatHasANullInIt)
{
    for (const auto* text : {"[null]", R"({"a": null})", R"({"a": [1, {"b": null}], "c": 2})"}) {
        const auto error = refusal(text);

        EXPECT_EQ(error.kind(), DecodingError::Kind::TypeMismatch);
        EXPECT_EQ(error.context().debugDescription, "Unsupported JSON type");
        EXPECT_THAT(error.context().codingPath, IsEmpty());
    }
}

TEST(AnyJSONValue, SaysWhereTheNullStands)
{
    const auto error = refusal("{\"a\": [1,\n  null]}");

    ASSERT_TRUE(error.context().position.has_value());
    EXPECT_EQ(error.context().position->line, 2u);
    EXPECT_EQ(error.context().position->column, 3u);
}

TEST(AnyJSONValue, RefusesWithThePathOfTheWholeValue)
{
    using Values = std::map<std::string, std::vector<AnyJSONValue>>;
    const auto error
        = *JSONDecoder().tryDecode<Values>(R"({"a": [1, [2, null]]})").error()->cast<DecodingError>();

    EXPECT_THAT(path(error.context().codingPath), ElementsAre("a", "Index 1"));
}

TEST(AnyJSONValue, RefusesNumbersBeyondTheLargestDouble)
{
    EXPECT_EQ(refusal("1e400").kind(), DecodingError::Kind::TypeMismatch);
    EXPECT_EQ(refusal("[-1e400]").context().debugDescription, "Unsupported JSON type");
}

TEST(AnyJSONValue, EncodesEachKind)
{
    EXPECT_EQ(encoded(Dictionary()), "{}");
    EXPECT_EQ(encoded(Array()), "[]");
    EXPECT_EQ(encoded("a\"b"), R"("a\"b")");
    EXPECT_EQ(encoded(true), "true");
    EXPECT_EQ(encoded(-7), "-7");
    EXPECT_EQ(encoded(0.5), "0.5");
    EXPECT_EQ(encoded(Dictionary{{"b", Array{1, "x", true}}, {"a", Dictionary{{"c", 1.5}}}}),
        R"({"b":[1,"x",true],"a":{"c":1.5}})");
}

TEST(AnyJSONValue, EncodesPlainCollections)
{
    EXPECT_EQ(encoded(std::vector<int>{1, 2}), "[1,2]");
    EXPECT_EQ(encoded(std::map<std::string, bool>{{"a", true}}), R"({"a":true})");
}

TEST(AnyJSONValue, IsEncodedAmongTypedValues)
{
    EXPECT_EQ(JSONEncoder().encodeText(Event{"opened", AnyJSONValue(Array{1, "x"})}),
        R"({"name":"opened","details":[1,"x"]})");
}

TEST(AnyJSONValue, RefusesToEncodeADate)
{
    const auto error = refusalToEncodeAny(Date(0));

    EXPECT_EQ(error.value(), Any(Date(0)));
    EXPECT_THAT(error.context().debugDescription, StartsWith("AnyJSONValue does not support type Date "));
    EXPECT_THAT(error.context().debugDescription, EndsWith("."));
    EXPECT_EQ(error.context().debugDescription,
        "AnyJSONValue does not support type Date for value " + describe(Date(0)) + ".");
}

TEST(AnyJSONValue, RefusesToEncodeEverythingThatItIsNotDecodedFrom)
{
    const auto text = [](Any value) {
        return refusalToEncodeAny(std::move(value)).context().debugDescription;
    };

    EXPECT_EQ(text(1.5F), "AnyJSONValue does not support type Float for value 1.5.");
    EXPECT_EQ(text(std::numeric_limits<std::uint64_t>::max()),
        "AnyJSONValue does not support type UInt64 for value 18446744073709551615.");
    EXPECT_EQ(text(Data(3)), "AnyJSONValue does not support type Data for value 3 bytes.");
    EXPECT_EQ(text(std::map<int, int>{{1, 2}}),
        "AnyJSONValue does not support type Dictionary<Int32, Int32> for value [1: 2].");
    EXPECT_EQ(text(AnyJSONValue(1)), "AnyJSONValue does not support type AnyJSONValue for value 1.");
    EXPECT_THAT(text(nullptr), EndsWith(" for value <null>."));
}

TEST(AnyJSONValue, SaysWhereItRefusesToEncode)
{
    const auto error = refusalToEncodeAny(Dictionary{{"a", Array{1, Dictionary{{"b", Date(0)}}}}});

    EXPECT_THAT(path(error.context().codingPath), ElementsAre("a", "Index 1", "b"));
}

TEST(AnyJSONValue, LeavesNumbersThatAreNotFiniteToTheEncoder)
{
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    JSONEncoder encoder;
    encoder.setNonConformingFloatEncodingStrategy(
        JSONEncoder::NonConformingFloatEncodingStrategy::convertToString(
            {.positiveInfinity = "+", .negativeInfinity = "-", .nan = "?"}));

    EXPECT_THAT(refusalToEncodeAny(infinity).context().debugDescription, testing::HasSubstr("inf"));
    EXPECT_EQ(encoder.encodeText(AnyJSONValue(Array{infinity, -infinity, std::nan("")})), R"(["+","-","?"])");
}

TEST(AnyJSONValue, RefusesToEncodeTextThatIsNotUTF8)
{
    EXPECT_THAT(path(refusalToEncodeAny(Array{"\xFF"}).context().codingPath), ElementsAre("Index 0"));
    EXPECT_THROW(encoded(Dictionary{{"\xFF", 1}}), EncodingError);
}

TEST(AnyJSONValue, RefusesToEncodeDeeperThanCanBeReadAgain)
{
    Any value = 1;
    for (int depth = 0; depth < 513; ++depth)
        value = Array{value};

    EXPECT_THROW(encoded(value), EncodingError);
}

TEST(AnyJSONValue, ComesBackAsItWas)
{
    const auto value = AnyJSONValue(Dictionary{
        {"text", "水位"}, {"numbers", Array{0, -1, 0.1, 1e300}}, {"yes", true}, {"none", Array()}});

    EXPECT_EQ(JSONDecoder().decode<AnyJSONValue>(JSONEncoder().encode(value)), value);
}

TEST(AnyJSONValue, ComesBackAsAnIntegerWhereADoubleIsOne)
{
    EXPECT_EQ(decoded(encoded(1.0)), Any(1));
    EXPECT_EQ(decoded(encoded(-0.0)), Any(0));
    EXPECT_EQ(decoded(encoded(-0x1p63)), Any(std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(decoded(encoded(0x1p63)), Any(0x1p63));
    EXPECT_EQ(decoded(encoded(Array{decoded("0.99999999999999999999")})), Any(Array{1}));
}

TEST(AnyJSONValue, EqualsAndHashesByWhatItHolds)
{
    const std::hash<AnyJSONValue> hash;

    EXPECT_EQ(AnyJSONValue(Dictionary{{"a", 1}, {"b", 2}}), AnyJSONValue(Dictionary{{"b", 2}, {"a", 1}}));
    EXPECT_NE(AnyJSONValue(1), AnyJSONValue(1.0));
    EXPECT_NE(AnyJSONValue(1), AnyJSONValue(true));
    EXPECT_EQ(hash(AnyJSONValue("a")), hash(AnyJSONValue(std::string("a"))));
}

TEST(AnyJSONValue, IsCopiedRatherThanWrapped)
{
    AnyJSONValue first(1);
    AnyJSONValue copy(first);

    EXPECT_EQ(copy.value(), Any(1));
}

TEST(AnyJSONValue, Prints)
{
    EXPECT_EQ(describe(AnyJSONValue("a")), "a");
    EXPECT_EQ(debugDescribe(AnyJSONValue("a")), R"(AnyJSONValue("a"))");
    EXPECT_EQ(describe(AnyJSONValue(Array{1, "a"})), R"([1, "a"])");
}
