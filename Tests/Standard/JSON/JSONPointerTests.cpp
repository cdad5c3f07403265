#include "Orrenby/Standard/JSON/JSONPointer.hpp"

#include "Orrenby/Standard/JSON/Dictionaries.hpp"
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

namespace {

Dictionary parsed(std::string_view text) { return makeDictionary(dataFromText(text)); }

/// The document by which the notation is defined.
Dictionary definition()
{
    return parsed(R"({"foo": ["bar", "baz"], "": 0, "a/b": 1, "c%d": 2, "e^f": 3, "g|h": 4, "i\\j": 5,
        "k\"l": 6, " ": 7, "m~n": 8})");
}

std::optional<Any> found(std::string_view pointer) { return JSONPointer(pointer).find(definition()); }

template <class F> JSONPointerError::Kind kindOf(F&& call)
{
    try {
        call();
    } catch (const JSONPointerError& error) {
        return error.kind();
    }
    return JSONPointerError::Kind::Malformed; // none of the reads below says this
}

} // namespace

TEST(JSONPointer, ReadsTypedValuesOutOfATree)
{
    //! [Reading through a pointer]
    const auto reply = makeDictionary(dataFromText(R"({"users": [{"name": "Ada", "age": 36}]})"));

    const auto name = JSONPointer("/users/0/name").get<std::string>(reply);
    const auto title = JSONPointer("/users/0/title").getOptional<std::string>(reply); // may be missing
    const auto age = JSONPointer("/users/0/age").tryGet<std::string>(reply);          // is no text
    //! [Reading through a pointer]

    EXPECT_EQ(name, "Ada");
    EXPECT_EQ(title, std::nullopt);
    EXPECT_EQ(age.error()->description(), "Type mismatch at /users/0/age: Int is no String");
}

TEST(JSONPointer, LeadsWhereTheNotationSays)
{
    EXPECT_THAT(found(""), Optional(Any(definition())));
    EXPECT_THAT(found("/foo"), Optional(Any(Array{"bar", "baz"})));
    EXPECT_THAT(found("/foo/0"), Optional(Any("bar")));
    EXPECT_THAT(found("/"), Optional(Any(0)));
    EXPECT_THAT(found("/a~1b"), Optional(Any(1)));
    EXPECT_THAT(found("/c%d"), Optional(Any(2)));
    EXPECT_THAT(found("/e^f"), Optional(Any(3)));
    EXPECT_THAT(found("/g|h"), Optional(Any(4)));
    EXPECT_THAT(found("/i\\j"), Optional(Any(5)));
    EXPECT_THAT(found("/k\"l"), Optional(Any(6)));
    EXPECT_THAT(found("/ "), Optional(Any(7)));
    EXPECT_THAT(found("/m~0n"), Optional(Any(8)));
}

TEST(JSONPointer, ReadsEscapesOnceFromTheLeft)
{
    EXPECT_THAT(JSONPointer("/~01").tokens(), ElementsAre("~1"));
    EXPECT_THAT(JSONPointer("/~10").tokens(), ElementsAre("/0"));
    EXPECT_THAT(JSONPointer("/~00~11").tokens(), ElementsAre("~0/1"));
}

TEST(JSONPointer, HasATokenForEachSlash)
{
    EXPECT_THAT(JSONPointer("").tokens(), IsEmpty());
    EXPECT_THAT(JSONPointer("/").tokens(), ElementsAre(""));
    EXPECT_THAT(JSONPointer("//").tokens(), ElementsAre("", ""));
    EXPECT_THAT(JSONPointer("/a//b/").tokens(), ElementsAre("a", "", "b", ""));
}

TEST(JSONPointer, IsNotMadeFromAMalformedText)
{
    for (const auto* text : {"a", "a/b", " /a", "#/a", "~0", "/~", "/a~", "/~2", "/a~/b", "/~~0"}) {
        EXPECT_EQ(JSONPointer::make(text), std::nullopt) << text;
        EXPECT_THROW(JSONPointer{text}, JSONPointerError) << text;
        EXPECT_TRUE(JSONPointer::tryMake(text).isFailure()) << text;
    }
    EXPECT_EQ(JSONPointer::make("/a~1"), JSONPointer("/a~1"));
    EXPECT_EQ(JSONPointer::tryMake("/a").unwrap(), JSONPointer("/a"));
}

TEST(JSONPointer, SaysWhereATextIsMalformed)
{
    EXPECT_EQ(JSONPointer::tryMake("a").error()->offset(), 0U);
    EXPECT_EQ(JSONPointer::tryMake("/ab~0~2").error()->offset(), 5U);
    EXPECT_EQ(JSONPointer::tryMake("/~").error()->offset(), 1U);
}

TEST(JSONPointer, GivesItsTextAgain)
{
    for (const auto* text : {"", "/", "//", "/a/b", "/~0~1/~01", "/ä/\x01"})
        EXPECT_EQ(JSONPointer(text).description(), text);
}

TEST(JSONPointer, IsMadeFromPlainTokens)
{
    const auto pointer = JSONPointer::fromTokens({"a/b", "~", ""});

    EXPECT_EQ(pointer.description(), "/a~1b/~0/");
    EXPECT_EQ(JSONPointer(pointer.description()), pointer);
    EXPECT_EQ(JSONPointer::fromTokens({}), JSONPointer());
}

TEST(JSONPointer, GoesOneStepFurtherAndBack)
{
    const auto pointer = JSONPointer("/a").appending("b/c").appending(2);

    EXPECT_EQ(pointer.description(), "/a/b~1c/2");
    EXPECT_EQ(pointer.parent(), JSONPointer("/a/b~1c"));
    EXPECT_EQ(JSONPointer("/a").parent(), JSONPointer());
    EXPECT_EQ(JSONPointer().parent(), std::nullopt);
}

TEST(JSONPointer, StartsAtAnyTree)
{
    const Array list = {1, Dictionary{{"a", 2}}};

    EXPECT_EQ(JSONPointer("/1/a").get<int>(list), 2);
    EXPECT_EQ(JSONPointer("/1/a").get<int>(Any(list)), 2);
    EXPECT_EQ(JSONPointer("/a").get<int>(Dictionary{{"a", 2}}), 2);
    EXPECT_EQ(JSONPointer().get<int>(Any(5)), 5);
    EXPECT_EQ(JSONPointer().get<Dictionary>(Dictionary{{"a", 2}}), (Dictionary{{"a", 2}}));
    EXPECT_EQ(JSONPointer().get<Array>(list), list);
}

TEST(JSONPointer, RefusesAnIndexThatIsNotWrittenPlainly)
{
    const Array list = {1, 2};

    for (const auto* text : {"/00", "/01", "/+1", "/-1", "/1.0", "/1e0", "/ 1", "/x", "/", "/0x1", "/١"}) {
        EXPECT_EQ(JSONPointer(text).find(list), std::nullopt) << text;
        EXPECT_EQ(kindOf([&] { JSONPointer(text).get<int>(list); }), JSONPointerError::Kind::InvalidIndex)
            << text;
        EXPECT_EQ(
            kindOf([&] { JSONPointer(text).getOptional<int>(list); }), JSONPointerError::Kind::InvalidIndex)
            << text;
    }
}

TEST(JSONPointer, FindsNothingBehindTheLastElement)
{
    const Array list = {1, 2};

    for (const auto* text :
        {"/2", "/-", "/18446744073709551615", "/18446744073709551616", "/99999999999999999999999"}) {
        EXPECT_EQ(JSONPointer(text).find(list), std::nullopt) << text;
        EXPECT_EQ(kindOf([&] { JSONPointer(text).get<int>(list); }), JSONPointerError::Kind::NotFound)
            << text;
        EXPECT_EQ(JSONPointer(text).getOptional<int>(list), std::nullopt) << text;
    }
    EXPECT_EQ(kindOf([] { JSONPointer("/0").get<int>(Array()); }), JSONPointerError::Kind::NotFound);
}

TEST(JSONPointer, TakesAMemberWhoseKeyLooksLikeAnIndex)
{
    const Dictionary dictionary = {{"01", 1}, {"-", 2}, {"0", 3}};

    EXPECT_EQ(JSONPointer("/01").get<int>(dictionary), 1);
    EXPECT_EQ(JSONPointer("/-").get<int>(dictionary), 2);
    EXPECT_EQ(JSONPointer("/0").get<int>(dictionary), 3);
}

TEST(JSONPointer, TellsMissingFromImpossible)
{
    const auto tree = parsed(R"({"a": {"b": 1}, "n": null})");

    EXPECT_EQ(kindOf([&] { JSONPointer("/a/c").get<int>(tree); }), JSONPointerError::Kind::NotFound);
    EXPECT_EQ(kindOf([&] { JSONPointer("/x/y/z").get<int>(tree); }), JSONPointerError::Kind::NotFound);
    EXPECT_EQ(kindOf([&] { JSONPointer("/a/b/c").get<int>(tree); }), JSONPointerError::Kind::NotAContainer);
    EXPECT_EQ(kindOf([&] { JSONPointer("/n/c").get<int>(tree); }), JSONPointerError::Kind::NotAContainer);
    EXPECT_EQ(JSONPointer("/a/c").getOptional<int>(tree), std::nullopt);
    EXPECT_EQ(JSONPointer("/x/y/z").getOptional<int>(tree), std::nullopt);
    EXPECT_EQ(
        kindOf([&] { JSONPointer("/a/b/c").getOptional<int>(tree); }), JSONPointerError::Kind::NotAContainer);
}

TEST(JSONPointer, TakesNullForAValue)
{
    const auto tree = parsed(R"({"n": null})");

    EXPECT_THAT(JSONPointer("/n").find(tree), Optional(Any()));
    EXPECT_EQ(kindOf([&] { JSONPointer("/n").get<int>(tree); }), JSONPointerError::Kind::TypeMismatch);
    EXPECT_EQ(
        kindOf([&] { JSONPointer("/n").getOptional<int>(tree); }), JSONPointerError::Kind::TypeMismatch);
}

TEST(JSONPointer, GivesOutcomesInsteadOfThrowing)
{
    const Dictionary tree = {{"a", 1}};
    using Outcome = Result<std::optional<int>, JSONPointerError>;

    EXPECT_EQ(JSONPointer("/a").tryGet<int>(tree).value(), 1);
    EXPECT_EQ(JSONPointer("/b").tryGet<int>(tree).error()->kind(), JSONPointerError::Kind::NotFound);
    EXPECT_EQ(JSONPointer("/a").tryGetOptional<int>(tree), Outcome::success(1));
    EXPECT_EQ(JSONPointer("/b").tryGetOptional<int>(tree), Outcome::success(std::nullopt));
    EXPECT_EQ(
        JSONPointer("/a").tryGetOptional<bool>(tree).error()->kind(), JSONPointerError::Kind::TypeMismatch);
}

TEST(JSONPointer, FollowsDeepTreesWithoutRecursion)
{
    Any tree = 1;
    std::string text;
    for (int depth = 0; depth < 10'000; ++depth) {
        tree = Array{tree};
        text += "/0";
    }

    EXPECT_EQ(JSONPointer(text).get<int>(tree), 1);

    // Freed step by step: a tree this deep would be freed by as many nested calls.
    for (int depth = 0; depth < 10'000; ++depth)
        tree = Any((*tree.get<Array>())[0]);
}

TEST(JSONPointer, IsComparedAndHashedByItsTokens)
{
    EXPECT_EQ(JSONPointer("/a~1b"), JSONPointer::fromTokens({"a/b"}));
    EXPECT_FALSE(JSONPointer("/a/b") == JSONPointer::fromTokens({"a/b"}));
    EXPECT_EQ(std::hash<JSONPointer>()(JSONPointer("/a~1b")),
        std::hash<JSONPointer>()(JSONPointer::fromTokens({"a/b"})));
    EXPECT_EQ(describe(JSONPointer("/a")), "/a");
    EXPECT_EQ(debugDescribe(JSONPointer("/a")), "JSONPointer(/a)");
}
