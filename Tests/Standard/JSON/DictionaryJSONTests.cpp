#include "Orrenby/Standard/JSON/Dictionary+JSON.hpp"

#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/NSNull.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

namespace {

Dictionary parsed(std::string_view text)
{
    return *NSJSONSerialization::JSONObjectWithData(dataFromText(text)).cast<Dictionary>();
}

/// The error that is thrown.
template <class F> JSONError errorOf(F&& call)
{
    try {
        call();
    } catch (const JSONError& error) {
        return error;
    }
    throw std::logic_error("no error was thrown");
}

std::optional<int> half(int number) { return number % 2 == 0 ? std::optional(number / 2) : std::nullopt; }

struct Colour {
    int red = 0;
    friend bool operator==(const Colour&, const Colour&) = default;
};

} // namespace

TEST(DictionaryJSON, ReadsTypedMembers)
{
    //! [Reading typed members]
    const Dictionary member = {{"name", "Ada"}, {"age", 36}, {"tags", Array{"maths", "engines"}}};

    const auto name = get<std::string>(member, "name");
    const auto tags = get<std::vector<std::string>>(member, "tags");
    const auto nickname = getOptional<std::string>(member, "nickname").value_or("none");
    const auto age = tryGet<std::string>(member, "age"); // not a text
    //! [Reading typed members]

    EXPECT_EQ(name, "Ada");
    EXPECT_THAT(tags, ElementsAre("maths", "engines"));
    EXPECT_EQ(nickname, "none");
    EXPECT_THAT(age.error(), Optional(JSONError::typeMismatch("age", 36)));
}

TEST(DictionaryJSON, TransformsMembers)
{
    //! [Transforming members]
    const Dictionary member = {{"level", "high"}, {"scores", Array{2, 4}}};
    const auto levelNamed = [](const std::string& text) -> std::optional<int> {
        return text == "high" ? std::optional(3) : std::nullopt;
    };

    const auto level = map<std::string>(member, "level", levelNamed);
    const auto halves = mapList<int>(member, "scores", half);
    const auto limit = mapOptional<std::string>(member, "limit", levelNamed); // there is none
    //! [Transforming members]

    EXPECT_EQ(level, 3);
    EXPECT_THAT(halves, ElementsAre(1, 2));
    EXPECT_EQ(limit, std::nullopt);
}

TEST(DictionaryJSON, MissesAKey)
{
    const Dictionary empty;

    const auto error = errorOf([&] { get<int>(empty, "id"); });

    EXPECT_EQ(error, JSONError::keyNotFound("id"));
    EXPECT_EQ(error.code(), 1);
    EXPECT_EQ(error.description(), "Key not found: id");
}

TEST(DictionaryJSON, FindsNoTextWhereANumberIs)
{
    const Dictionary dictionary = {{"id", 5}};

    EXPECT_EQ(errorOf([&] { get<std::string>(dictionary, "id"); }), JSONError::typeMismatch("id", 5));
    EXPECT_EQ(errorOf([&] { getOptional<std::string>(dictionary, "id"); }), JSONError::typeMismatch("id", 5));
}

TEST(DictionaryJSON, GivesNothingForAMissingOptional)
{
    EXPECT_EQ(getOptional<std::string>(Dictionary(), "id"), std::nullopt);
}

TEST(DictionaryJSON, GivesAnOptionalThatIsThere)
{
    EXPECT_THAT(getOptional<std::string>(Dictionary{{"id", "x"}}, "id"), Optional(std::string("x")));
}

TEST(DictionaryJSON, TakesNullForPresentAndNoType)
{
    const Dictionary dictionary = {{"id", NSNull()}};

    EXPECT_EQ(errorOf([&] { get<int>(dictionary, "id"); }), JSONError::typeMismatch("id", Any()));
    EXPECT_EQ(errorOf([&] { getOptional<int>(dictionary, "id"); }), JSONError::typeMismatch("id", Any()));
    EXPECT_EQ(get<NSNull>(dictionary, "id"), NSNull());
    EXPECT_EQ(get<Any>(dictionary, "id"), Any());
}

TEST(DictionaryJSON, KeepsTheKindsOfValuesMadeInCodeApart)
{
    const Dictionary dictionary = {{"integer", 1}, {"number", 1.0}, {"flag", true}};

    EXPECT_EQ(errorOf([&] { get<double>(dictionary, "integer"); }), JSONError::typeMismatch("integer", 1));
    EXPECT_EQ(errorOf([&] { get<int>(dictionary, "number"); }), JSONError::typeMismatch("number", 1.0));
    EXPECT_EQ(errorOf([&] { get<int>(dictionary, "flag"); }), JSONError::typeMismatch("flag", true));
    EXPECT_EQ(errorOf([&] { get<bool>(dictionary, "integer"); }), JSONError::typeMismatch("integer", 1));
}

TEST(DictionaryJSON, ReadsNumbersOfATextAsEitherKindWhenNothingIsLost)
{
    const auto dictionary = parsed(R"({"whole": 3, "half": 0.5, "flag": true})");

    EXPECT_EQ(get<double>(dictionary, "whole"), 3.0);
    EXPECT_EQ(get<int>(dictionary, "whole"), 3);
    EXPECT_EQ(get<double>(dictionary, "half"), 0.5);
    EXPECT_EQ(errorOf([&] { get<int>(dictionary, "half"); }).kind(), JSONError::Kind::TypeMismatch);
    EXPECT_EQ(errorOf([&] { get<int>(dictionary, "flag"); }).kind(), JSONError::Kind::TypeMismatch);
    EXPECT_EQ(errorOf([&] { get<bool>(dictionary, "whole"); }).kind(), JSONError::Kind::TypeMismatch);
}

TEST(DictionaryJSON, ReadsLargeUnsignedNumbersOfATextAsEitherKindWhenNothingIsLost)
{
    const auto number = parsed(
        R"({"a": 9223372036854775808, "b": 10000000000000000000, "c": 18446744073709551615})");

    EXPECT_EQ(get<double>(number, "a"), 0x1p63);
    EXPECT_EQ(get<std::uint64_t>(number, "a"), std::uint64_t(1) << 63);
    EXPECT_EQ(get<double>(number, "b"), 1e19);
    EXPECT_EQ(get<std::uint64_t>(parsed(R"({"b": 1e19})"), "b"), 10'000'000'000'000'000'000U);
    EXPECT_THAT(
        tryGet<double>(number, "c").error(), Optional(JSONError::typeMismatch("c", *number.find("c"))));
    EXPECT_EQ(get<std::uint64_t>(number, "c"), std::numeric_limits<std::uint64_t>::max());
}

TEST(DictionaryJSON, RefusesAnIntegerThatIsTooWide)
{
    const Dictionary dictionary = {{"id", 256}};

    EXPECT_EQ(get<std::int16_t>(dictionary, "id"), 256);
    EXPECT_EQ(errorOf([&] { get<std::uint8_t>(dictionary, "id"); }), JSONError::typeMismatch("id", 256));
}

TEST(DictionaryJSON, ReadsEveryKindThatAValueHas)
{
    const auto object = std::make_shared<Colour>(Colour{7});
    const auto dictionary = Dictionary{{"data", dataFromText("ab")}, {"dictionary", Dictionary{{"a", 1}}},
        {"list", Array{1, 2}}, {"mixed", Array{1, "a"}}, {"colour", Colour{3}}, {"object", object}};

    EXPECT_EQ(get<Data>(dictionary, "data"), dataFromText("ab"));
    EXPECT_EQ(get<Dictionary>(dictionary, "dictionary"), (Dictionary{{"a", 1}}));
    EXPECT_THAT(get<std::vector<int>>(dictionary, "list"), ElementsAre(1, 2));
    EXPECT_EQ(get<Array>(dictionary, "mixed"), (Array{1, "a"}));
    EXPECT_EQ(errorOf([&] { get<std::vector<int>>(dictionary, "mixed"); }),
        JSONError::typeMismatch("mixed", Array{1, "a"}));
    EXPECT_EQ(
        (get<std::map<std::string, int>>(dictionary, "dictionary")), (std::map<std::string, int>{{"a", 1}}));
    EXPECT_EQ(get<Colour>(dictionary, "colour"), Colour{3});
    EXPECT_EQ(get<Ref<Colour>>(dictionary, "object"), object);
}

TEST(DictionaryJSON, ReadsTheMemberWithAnEmptyKey) { EXPECT_EQ(get<int>(Dictionary{{"", 4}}, ""), 4); }

TEST(DictionaryJSON, TellsThatATransformFailed)
{
    const Dictionary dictionary = {{"id", 5}};

    const auto error = errorOf([&] { map<int>(dictionary, "id", half); });

    EXPECT_EQ(error, JSONError::transformFailed("id", 5));
    EXPECT_EQ(error.code(), 3);
}

TEST(DictionaryJSON, DoesNotTransformWhatIsMissingOrOfAnotherType)
{
    const Dictionary dictionary = {{"id", "x"}};
    int calls = 0;
    const auto counted = [&](int) { return std::optional(++calls); };

    EXPECT_EQ(errorOf([&] { map<int>(dictionary, "no", counted); }), JSONError::keyNotFound("no"));
    EXPECT_EQ(errorOf([&] { map<int>(dictionary, "id", counted); }), JSONError::typeMismatch("id", "x"));
    EXPECT_EQ(
        errorOf([&] { mapOptional<int>(dictionary, "id", counted); }), JSONError::typeMismatch("id", "x"));
    EXPECT_EQ(mapOptional<int>(dictionary, "no", counted), std::nullopt);
    EXPECT_EQ(calls, 0);
}

TEST(DictionaryJSON, TransformsAnOptionalThatIsThere)
{
    const Dictionary dictionary = {{"even", 4}, {"odd", 5}};

    EXPECT_THAT(mapOptional<int>(dictionary, "even", half), Optional(2));
    EXPECT_EQ(
        errorOf([&] { mapOptional<int>(dictionary, "odd", half); }), JSONError::transformFailed("odd", 5));
}

TEST(DictionaryJSON, TransformsEachElementInOrder)
{
    const Dictionary dictionary = {{"list", Array{8, 2, 4}}};
    std::vector<int> seen;

    const auto result = mapList<int>(dictionary, "list", [&](int element) {
        seen.push_back(element);
        return half(element);
    });

    EXPECT_THAT(result, ElementsAre(4, 1, 2));
    EXPECT_THAT(seen, ElementsAre(8, 2, 4));
}

TEST(DictionaryJSON, GivesNoListWithGaps)
{
    const Dictionary dictionary = {{"list", Array{2, 3, 4}}};
    std::vector<int> seen;
    const auto transform = [&](int element) {
        seen.push_back(element);
        return half(element);
    };

    EXPECT_EQ(errorOf([&] { mapList<int>(dictionary, "list", transform); }),
        JSONError::transformFailed("list", Array{2, 3, 4}));
    EXPECT_THAT(seen, ElementsAre(2, 3));
}

TEST(DictionaryJSON, LooksAtAllElementsBeforeItTransformsTheFirst)
{
    const Dictionary dictionary = {{"list", Array{2, "x"}}};
    int calls = 0;
    const auto counted = [&](int) { return std::optional(++calls); };

    EXPECT_EQ(errorOf([&] { mapList<int>(dictionary, "list", counted); }),
        JSONError::typeMismatch("list", Array{2, "x"}));
    EXPECT_EQ(calls, 0);
}

TEST(DictionaryJSON, FindsNoListWhereAScalarIs)
{
    const Dictionary dictionary = {{"list", 2}};

    EXPECT_EQ(errorOf([&] { mapList<int>(dictionary, "list", half); }), JSONError::typeMismatch("list", 2));
    EXPECT_EQ(errorOf([&] { mapList<int>(dictionary, "no", half); }), JSONError::keyNotFound("no"));
}

TEST(DictionaryJSON, TransformsAnEmptyListIntoAnEmptyList)
{
    EXPECT_THAT(mapList<int>(Dictionary{{"list", Array()}}, "list", half), IsEmpty());
}

TEST(DictionaryJSON, TransformsAnOptionalList)
{
    const Dictionary dictionary = {{"even", Array{2, 4}}, {"odd", Array{3}}, {"scalar", 2}};

    EXPECT_THAT(mapOptionalList<int>(dictionary, "even", half), Optional(ElementsAre(1, 2)));
    EXPECT_EQ(mapOptionalList<int>(dictionary, "no", half), std::nullopt);
    EXPECT_EQ(errorOf([&] { mapOptionalList<int>(dictionary, "odd", half); }),
        JSONError::transformFailed("odd", Array{3}));
    EXPECT_EQ(errorOf([&] { mapOptionalList<int>(dictionary, "scalar", half); }),
        JSONError::typeMismatch("scalar", 2));
}

TEST(DictionaryJSON, TransformsToFlags)
{
    const auto isEven = [](bool flag) { return std::optional(!flag); };

    EXPECT_THAT(
        mapList<bool>(Dictionary{{"list", Array{true, false}}}, "list", isEven), ElementsAre(false, true));
}

TEST(DictionaryJSON, LetsWhatATransformThrowsThrough)
{
    const Dictionary dictionary = {{"id", 5}};
    const auto throws = [](int) -> std::optional<int> { throw std::out_of_range("far"); };

    EXPECT_THROW(map<int>(dictionary, "id", throws), std::out_of_range);
    EXPECT_THROW(mapList<int>(Dictionary{{"id", Array{1}}}, "id", throws), std::out_of_range);
}

TEST(DictionaryJSON, GivesOutcomesInsteadOfThrowing)
{
    const Dictionary dictionary = {{"id", 5}};
    using Outcome = Result<int, JSONError>;
    using OptionalOutcome = Result<std::optional<int>, JSONError>;

    EXPECT_EQ(tryGet<int>(dictionary, "id"), Outcome::success(5));
    EXPECT_EQ(tryGet<int>(dictionary, "no"), Outcome::failure(JSONError::keyNotFound("no")));
    EXPECT_EQ(tryGetOptional<int>(dictionary, "id"), OptionalOutcome::success(5));
    EXPECT_EQ(tryGetOptional<int>(dictionary, "no"), OptionalOutcome::success(std::nullopt));
    EXPECT_EQ(tryGetOptional<bool>(dictionary, "id").error(), JSONError::typeMismatch("id", 5));
}

TEST(DictionaryJSON, GivesOutcomesOfTransforms)
{
    const Dictionary dictionary = {{"even", 4}, {"odd", 5}, {"list", Array{2, 4}}, {"gap", Array{2, 3}}};
    const auto errorIn = [](const auto& outcome) { return *outcome.error()->template cast<JSONError>(); };

    EXPECT_THAT(tryMap<int>(dictionary, "even", half).value(), Optional(2));
    EXPECT_EQ(errorIn(tryMap<int>(dictionary, "odd", half)), JSONError::transformFailed("odd", 5));
    EXPECT_EQ(tryMapOptional<int>(dictionary, "no", half).unwrap(), std::nullopt);
    EXPECT_EQ(errorIn(tryMapOptional<int>(dictionary, "odd", half)), JSONError::transformFailed("odd", 5));
    EXPECT_THAT(tryMapList<int>(dictionary, "list", half).unwrap(), ElementsAre(1, 2));
    EXPECT_EQ(errorIn(tryMapList<int>(dictionary, "no", half)), JSONError::keyNotFound("no"));
    EXPECT_EQ(tryMapOptionalList<int>(dictionary, "no", half).unwrap(), std::nullopt);
    EXPECT_EQ(errorIn(tryMapOptionalList<int>(dictionary, "gap", half)),
        JSONError::transformFailed("gap", Array{2, 3}));
}

TEST(DictionaryJSON, GivesWhatATransformThrowsAsOutcome)
{
    const auto throws = [](int) -> std::optional<int> { throw std::out_of_range("far"); };

    const auto outcome = tryMap<int>(Dictionary{{"id", 5}}, "id", throws);

    ASSERT_TRUE(outcome.isFailure());
    EXPECT_NE(outcome.error()->cast<std::out_of_range>(), nullptr);
}
