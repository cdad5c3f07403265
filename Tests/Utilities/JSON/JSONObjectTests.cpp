#include "Orrenby/Utilities/JSON/JSONObject.hpp"

#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include "Orrenby/Utilities/JSON/AnyJSONValue.hpp"
#include <gmock/gmock.h>
#include <map>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

constexpr auto noObject = "JSONObject can only be coded from type Dictionary<String, AnyJSONValue>.";

JSONObject decoded(std::string_view text) { return JSONDecoder().decode<JSONObject>(text); }

DecodingError refusal(std::string_view text)
{
    return *JSONDecoder().tryDecode<JSONObject>(text).error()->cast<DecodingError>();
}

template <class F> JSONError errorOf(F function)
{
    try {
        function();
    } catch (const JSONError& error) {
        return error;
    }
    throw std::logic_error("nothing was thrown");
}

std::optional<int> evenHalf(int number) { return number % 2 == 0 ? std::optional(number / 2) : std::nullopt; }

const JSONObject sample = {{"name", "Ada"}, {"count", 4}, {"odd", 3}, {"sizes", Array{2, 4}},
    {"mixed", Array{2, 3}}, {"words", Array{2, "two"}}};

} // namespace

TEST(JSONObject, AnswersByKey)
{
    //! [Asking an object]
    const auto object = JSONDecoder().decode<JSONObject>(R"({"name": "Ada", "tags": ["x", "y"], "age": 36})");

    EXPECT_EQ(object.get<std::string>("name"), "Ada");
    EXPECT_EQ(object.getOptional<bool>("isAdmin"), std::nullopt);
    EXPECT_EQ(object.get<std::vector<std::string>>("tags").size(), 2u);
    EXPECT_EQ(object.tryGet<int>("name").error(), JSONError::typeMismatch("name", "Ada"));
    //! [Asking an object]
}

TEST(JSONObject, DecodesMembersWithoutWrappers)
{
    EXPECT_EQ(decoded(R"({"a": [1, "x", true], "b": {"c": 1.5}})").value(),
        (Dictionary{{"a", Array{1, "x", true}}, {"b", Dictionary{{"c", 1.5}}}}));
    EXPECT_EQ(decoded("{}").value(), Dictionary());
}

TEST(JSONObject, DecodesTheLastOfRepeatedMembers)
{
    EXPECT_EQ(decoded(R"({"a": 1, "a": 2})").get<int>("a"), 2);
}

TEST(JSONObject, KeepsTheOrderOfItsMembers)
{
    EXPECT_THAT(decoded(R"({"z": 1, "a": 2, "m": 3})").value().keys(), ElementsAre("z", "a", "m"));
}

TEST(JSONObject, RefusesWhatIsNoObject)
{
    for (const auto* text : {"[]", "[{}]", R"("text")", "1", "true", "null"}) {
        const auto error = refusal(text);

        EXPECT_EQ(error.kind(), DecodingError::Kind::DataCorrupted) << text;
        EXPECT_EQ(error.context().debugDescription, noObject) << text;
        EXPECT_THAT(error.context().codingPath, IsEmpty()) << text;
    }
}

TEST(JSONObject, RefusesAMemberThatIsNull)
{
    const auto error = refusal("{\"a\": 1,\n \"b\": [null]}");

    EXPECT_EQ(error.kind(), DecodingError::Kind::DataCorrupted);
    EXPECT_EQ(error.context().debugDescription, noObject);
    EXPECT_THAT(error.context().codingPath, IsEmpty());
    ASSERT_TRUE(error.context().position.has_value());
    EXPECT_EQ(error.context().position->line, 2u);
}

TEST(JSONObject, RefusesWithItsOwnPath)
{
    const auto outcome = JSONDecoder().tryDecode<std::vector<JSONObject>>(R"([{}, {"a": {"b": null}}])");
    const auto* error = outcome.error()->cast<DecodingError>();

    ASSERT_NE(error, nullptr);
    ASSERT_EQ(error->context().codingPath.size(), 1u);
    EXPECT_EQ(error->context().codingPath[0].intValue(), 1);
}

TEST(JSONObject, LeavesBytesThatAreNoJSONToTheDecoder)
{
    EXPECT_THROW(decoded("{"), DecodingError);
    EXPECT_THROW(decoded(""), DecodingError);
}

TEST(JSONObject, IsEncodedAsAnObject)
{
    EXPECT_EQ(
        JSONEncoder().encodeText(JSONObject{{"b", Array{1, true}}, {"a", "x"}}), R"({"b":[1,true],"a":"x"})");
    EXPECT_EQ(JSONEncoder().encodeText(JSONObject()), "{}");
    EXPECT_EQ(JSONEncoder().encodeText(std::vector{JSONObject{{"a", 1}}}), R"([{"a":1}])");
}

TEST(JSONObject, RefusesToEncodeWhatAnyJSONValueRefuses)
{
    try {
        JSONEncoder().encode(JSONObject{{"a", Array{Date(0)}}});
        FAIL();
    } catch (const EncodingError& error) {
        EXPECT_EQ(error.context().debugDescription,
            "AnyJSONValue does not support type Date for value " + describe(Date(0)) + ".");
        EXPECT_EQ(error.context().codingPath.size(), 2u);
    }
    EXPECT_THROW(JSONEncoder().encode(JSONObject{{"a", nullptr}}), EncodingError);
}

TEST(JSONObject, ComesBackAsItWas)
{
    EXPECT_EQ(JSONDecoder().decode<JSONObject>(JSONEncoder().encode(sample)), sample);
}

TEST(JSONObject, KeepsTheLaterValueOfARepeatedKey)
{
    const JSONObject object = {{"a", 1}, {"b", 2}, {"a", 3}};

    EXPECT_EQ(object.value(), (Dictionary{{"a", 3}, {"b", 2}}));
}

TEST(JSONObject, IsMadeOfADictionary)
{
    const Dictionary dictionary = {{"a", 1}};

    EXPECT_EQ(JSONObject(dictionary).value(), dictionary);
    EXPECT_EQ(JSONObject{dictionary}.value(), dictionary);
    EXPECT_TRUE(JSONObject().value().empty());
}

TEST(JSONObject, IsADictionaryOfOneTypeWhenAllMembersAre)
{
    EXPECT_THAT(
        *(JSONObject{{"a", 1}, {"b", 2}}.toDictionary<int>()), ElementsAre(Pair("a", 1), Pair("b", 2)));
    EXPECT_EQ((JSONObject{{"a", "x"}}.toDictionary<std::string>()),
        (std::map<std::string, std::string>{{"a", "x"}}));
    EXPECT_EQ((JSONObject{{"a", 1}, {"b", "x"}}.toDictionary<Any>())->size(), 2u);
}

TEST(JSONObject, IsNoDictionaryOfOneTypeWhenAMemberIsAnother)
{
    EXPECT_EQ((JSONObject{{"a", 1}}.toDictionary<std::string>()), std::nullopt);
    EXPECT_EQ((JSONObject{{"a", "x"}, {"b", 1}}.toDictionary<std::string>()), std::nullopt);
    EXPECT_EQ((JSONObject{{"a", 1}}.toDictionary<double>()), std::nullopt);
}

TEST(JSONObject, IsADictionaryOfAnyTypeWhenItIsEmpty)
{
    EXPECT_EQ(JSONObject().toDictionary<bool>(), (std::map<std::string, bool>{}));
}

TEST(JSONObject, GetsMembers)
{
    EXPECT_EQ(sample.get<std::string>("name"), "Ada");
    EXPECT_EQ(sample.getOptional<int>("count"), 4);
    EXPECT_EQ(sample.getOptional<int>("absent"), std::nullopt);
}

TEST(JSONObject, SaysWhyAMemberIsNotToBeHad)
{
    EXPECT_EQ(errorOf([] { sample.get<int>("absent"); }), JSONError::keyNotFound("absent"));
    EXPECT_EQ(errorOf([] { sample.get<int>("name"); }), JSONError::typeMismatch("name", "Ada"));
    EXPECT_EQ(errorOf([] { sample.getOptional<int>("name"); }), JSONError::typeMismatch("name", "Ada"));
}

TEST(JSONObject, TransformsMembers)
{
    EXPECT_EQ(sample.map<int>("count", evenHalf), 2);
    EXPECT_EQ(sample.mapOptional<int>("count", evenHalf), 2);
    EXPECT_EQ(sample.mapOptional<int>("absent", evenHalf), std::nullopt);
    EXPECT_THAT(sample.mapList<int>("sizes", evenHalf), ElementsAre(1, 2));
    EXPECT_EQ(sample.mapOptionalList<int>("sizes", evenHalf), (std::vector{1, 2}));
    EXPECT_EQ(sample.mapOptionalList<int>("absent", evenHalf), std::nullopt);
}

TEST(JSONObject, SaysWhyAMemberIsNotTransformed)
{
    EXPECT_EQ(errorOf([] { sample.map<int>("absent", evenHalf); }), JSONError::keyNotFound("absent"));
    EXPECT_EQ(errorOf([] { sample.map<int>("odd", evenHalf); }), JSONError::transformFailed("odd", 3));
    EXPECT_EQ(
        errorOf([] { sample.mapOptional<int>("odd", evenHalf); }), JSONError::transformFailed("odd", 3));
    EXPECT_EQ(errorOf([] { sample.mapList<int>("mixed", evenHalf); }),
        JSONError::transformFailed("mixed", Array{2, 3}));
    EXPECT_EQ(errorOf([] { sample.mapOptionalList<int>("words", evenHalf); }),
        JSONError::typeMismatch("words", Array{2, "two"}));
}

TEST(JSONObject, GivesOutcomes)
{
    EXPECT_EQ(sample.tryGet<int>("count").value(), 4);
    EXPECT_EQ(sample.tryGet<int>("absent").error(), JSONError::keyNotFound("absent"));
    EXPECT_EQ(sample.tryGetOptional<int>("absent").unwrap(), std::nullopt);
    EXPECT_EQ(sample.tryMap<int>("count", evenHalf).value(), 2);
    EXPECT_TRUE(sample.tryMap<int>("odd", evenHalf).isFailure());
    EXPECT_TRUE(sample.tryMapOptional<int>("absent", evenHalf).isSuccess());
    EXPECT_EQ(sample.tryMapList<int>("sizes", evenHalf).value(), (std::vector{1, 2}));
    EXPECT_TRUE(sample.tryMapList<int>("mixed", evenHalf).isFailure());
    EXPECT_TRUE(sample.tryMapOptionalList<int>("absent", evenHalf).isSuccess());
}

TEST(JSONObject, EqualsWhateverTheOrderOfItsMembers)
{
    const JSONObject first = {{"a", 1}, {"b", 2}};
    const JSONObject second = {{"b", 2}, {"a", 1}};

    EXPECT_EQ(first, second);
    EXPECT_EQ(std::hash<JSONObject>{}(first), std::hash<JSONObject>{}(second));
    EXPECT_NE(first, (JSONObject{{"a", 1}, {"b", 2.0}}));
}

TEST(JSONObject, Prints)
{
    EXPECT_EQ(describe(JSONObject{{"b", "x"}, {"a", 1}}), R"(["a": 1, "b": "x"])");
    EXPECT_EQ(debugDescribe(JSONObject()), "JSONObject([:])");
}
