#include "Orrenby/Platform/Objects/Dictionary.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::string keyNumber(int number) { return "key " + std::to_string(number); }

Dictionary numbered(int count)
{
    Dictionary result;
    for (int number = 0; number < count; ++number)
        result.set(keyNumber(number), number);
    return result;
}

} // namespace

TEST(Dictionary, MapsTextToAnyValue)
{
    //! [Using a dictionary]
    Dictionary settings = {{"theme", "dark"}, {"volume", 7}};
    settings.set("muted", false);
    settings.erase("theme");

    const std::optional<int> volume = settings.cast<int>("volume");
    const bool hasTheme = settings.contains("theme");
    //! [Using a dictionary]

    EXPECT_EQ(volume, 7);
    EXPECT_FALSE(hasTheme);
    EXPECT_EQ(describe(settings), R"(["muted": false, "volume": 7])");
}

TEST(Dictionary, TakesKeysFromAnyKindOfText)
{
    constexpr std::string_view constant = "constant";
    const Dictionary dictionary = {{constant, 1}, {std::string("made"), 2}, {"literal", 3}};

    EXPECT_THAT(dictionary.keys(), ElementsAre("constant", "made", "literal"));
}

TEST(Dictionary, StartsEmpty)
{
    const Dictionary dictionary;

    EXPECT_THAT(dictionary, IsEmpty());
    EXPECT_EQ(dictionary.find("k"), nullptr);
    EXPECT_EQ(describe(dictionary), "[:]");
    EXPECT_EQ(debugDescribe(dictionary), "[:]");
}

TEST(Dictionary, KeepsTheOrderInWhichKeysCame)
{
    EXPECT_THAT((Dictionary{{"z", 1}, {"a", 2}, {"m", 3}}.keys()), ElementsAre("z", "a", "m"));
}

TEST(Dictionary, KeepsThePlaceOfARepeatedKeyAndTakesTheLastValue)
{
    const Dictionary dictionary = {{"a", 1}, {"b", 2}, {"a", 3}};

    EXPECT_THAT(dictionary, ElementsAre(Dictionary::Entry{"a", 3}, Dictionary::Entry{"b", 2}));
}

TEST(Dictionary, PrintsSortedByKey)
{
    const Dictionary dictionary = {{"b", "text"}, {"a", Array{1}}, {"C", Dictionary{{"x", Any()}}}};

    EXPECT_EQ(describe(dictionary), R"(["C": ["x": <null>], "a": [1], "b": "text"])");
}

TEST(Dictionary, ComparesWithoutRegardToOrder)
{
    EXPECT_EQ((Dictionary{{"a", 1}, {"b", 2}}), (Dictionary{{"b", 2}, {"a", 1}}));
    EXPECT_NE((Dictionary{{"a", 1}}), (Dictionary{{"a", 2}}));
    EXPECT_NE((Dictionary{{"a", 1}}), (Dictionary{{"b", 1}}));
    EXPECT_NE((Dictionary{{"a", 1}}), Dictionary());
}

TEST(Dictionary, TellsAMissingKeyFromANullValue)
{
    const Dictionary dictionary = {{"null", NSNull()}};

    EXPECT_TRUE(dictionary.contains("null"));
    EXPECT_TRUE(dictionary["null"].isNull());
    EXPECT_FALSE(dictionary.contains("missing"));
    EXPECT_TRUE(dictionary["missing"].isNull());
}

TEST(Dictionary, CastsAMember)
{
    const Dictionary dictionary = {{"n", 5}};

    EXPECT_EQ(dictionary.cast<int>("n"), 5);
    EXPECT_EQ(dictionary.cast<std::string>("n"), std::nullopt);
    EXPECT_EQ(dictionary.cast<int>("missing"), std::nullopt);
}

TEST(Dictionary, TerminatesWhenAForcedKeyIsMissing)
{
    const Dictionary dictionary = {{"a", 1}};

    EXPECT_EQ(dictionary.at("a"), 1);
    EXPECT_DEATH(
        dictionary.at("b"), "Fatal error: No value for key \"b\": file Platform/Dictionary, line 63\n");
}

TEST(Dictionary, ErasesAndKeepsTheOrderOfTheOthers)
{
    Dictionary dictionary = {{"a", 1}, {"b", 2}, {"c", 3}};

    EXPECT_TRUE(dictionary.erase("b"));
    EXPECT_FALSE(dictionary.erase("b"));
    EXPECT_THAT(dictionary.keys(), ElementsAre("a", "c"));
}

TEST(Dictionary, ErasesByAViewOfItsOwnKey)
{
    Dictionary dictionary = {{"a", 1}, {"b", 2}};

    EXPECT_TRUE(dictionary.erase(dictionary.begin()->key));
    EXPECT_THAT(dictionary.keys(), ElementsAre("b"));
}

TEST(Dictionary, SetsAMemberFromOneOfItsOwn)
{
    Dictionary dictionary = {{"a", "value"}};
    for (int number = 0; number < 100; ++number)
        dictionary.set(keyNumber(number), dictionary.at("a"));

    EXPECT_EQ(dictionary.at(keyNumber(99)), "value");
}

TEST(Dictionary, FindsEveryMemberBelowAtAndAboveTheSizeOfTheIndex)
{
    for (const int count : {1, 31, 32, 33, 34, 1000}) {
        const auto dictionary = numbered(count);

        for (int number = 0; number < count; ++number)
            EXPECT_EQ(dictionary[keyNumber(number)], number) << "of " << count;
        EXPECT_FALSE(dictionary.contains(keyNumber(count)));
    }
}

TEST(Dictionary, ReplacesWhenIndexed)
{
    auto dictionary = numbered(100);
    dictionary.set(keyNumber(50), "new");

    EXPECT_EQ(dictionary.size(), 100U);
    EXPECT_EQ(dictionary[keyNumber(50)], "new");
}

TEST(Dictionary, ErasesWhatAFunctionNamesAndTakesItsChanges)
{
    auto dictionary = numbered(100);

    const auto erased = dictionary.eraseIf([](std::string_view key, Any& value) {
        const int number = *value.cast<int>();
        value = number * 10;
        return number % 2 == 1 || key == keyNumber(0);
    });

    EXPECT_EQ(erased, 51U);
    EXPECT_EQ(dictionary.size(), 49U);
    EXPECT_EQ(dictionary.begin()->key, keyNumber(2));
    EXPECT_EQ(dictionary.cast<int>(keyNumber(98)), 980);
    EXPECT_FALSE(dictionary.contains(keyNumber(99)));
}

TEST(Dictionary, ErasesNothingOfNothing)
{
    Dictionary empty;

    EXPECT_EQ(empty.eraseIf([](std::string_view, Any&) { return true; }), 0U);
    EXPECT_THAT(empty, IsEmpty());
}

TEST(Dictionary, ErasesAcrossTheSizeOfTheIndex)
{
    auto dictionary = numbered(40);
    for (int number = 0; number < 40; number += 2)
        dictionary.erase(keyNumber(number));

    EXPECT_EQ(dictionary.size(), 20U);
    for (int number = 0; number < 40; ++number)
        EXPECT_EQ(dictionary.contains(keyNumber(number)), number % 2 == 1) << number;
}

TEST(Dictionary, CanBeFilledAgainAfterClear)
{
    auto dictionary = numbered(100);
    dictionary.clear();
    EXPECT_FALSE(dictionary.contains(keyNumber(5)));

    dictionary.set("a", 1);
    EXPECT_EQ(dictionary, (Dictionary{{"a", 1}}));
}

TEST(Dictionary, CopiesNeverSeeLaterChanges)
{
    auto dictionary = numbered(50);
    const auto copy = dictionary;
    dictionary.set(keyNumber(0), "changed");
    dictionary.set("new", 1);

    EXPECT_EQ(copy, numbered(50));
    EXPECT_EQ(copy[keyNumber(0)], 0);
}

TEST(Dictionary, LeavesAnEmptyOneWhenMovedFrom)
{
    auto dictionary = numbered(50);
    const auto taken = std::move(dictionary);

    EXPECT_EQ(taken.size(), 50U);
    EXPECT_TRUE(dictionary.empty()); // NOLINT(bugprone-use-after-move): the state is promised
    EXPECT_FALSE(dictionary.contains(keyNumber(1)));
}

TEST(Dictionary, ComparesKeysByTheirBytes)
{
    const Dictionary dictionary = {{"é", 1}};

    EXPECT_TRUE(dictionary.contains("\xC3\xA9"));
    EXPECT_FALSE(dictionary.contains("e\xCC\x81"));
    EXPECT_FALSE(dictionary.contains("É"));
}

TEST(Dictionary, TakesTheEmptyKey) { EXPECT_EQ((Dictionary{{"", 1}}[""]), 1); }
