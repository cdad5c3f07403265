#include "Orrenby/Standard/JSON/Dictionaries.hpp"

#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Standard/JSON/Dictionary+JSON.hpp"
#include "Orrenby/Standard/JSON/JSONError.hpp"
#include "Orrenby/Standard/Sequences.hpp"
#include <gmock/gmock.h>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <unordered_set>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Numbers = std::map<std::string, int>;
using Names = std::unordered_map<int, std::string>;

Data bytes(std::string_view text) { return dataFromText(text); }

/// Code with an operator of its own, which hides those of the namespaces around it.
namespace app {

struct Money {
    int cents = 0;
};
[[maybe_unused]] Money operator+(Money first, Money second) { return {first.cents + second.cents}; }

template <class Map>
concept Joins = requires(const Map& map)
{
    map + map;
};
static_assert(!Joins<Numbers>);

//! [Joining standard maps]
std::map<std::string, int> both(
    const std::map<std::string, int>& first, const std::map<std::string, int>& second)
{
    using orrenby::operator+;
    return first + second;
}
//! [Joining standard maps]

} // namespace app

} // namespace

TEST(Dictionaries, JoinCompareAndSeparate)
{
    //! [Working with dictionaries]
    const Dictionary defaults = {{"size", 12}, {"colour", "black"}};
    const Dictionary chosen = {{"colour", "green"}, {"bold", true}};

    const auto settings = defaults + chosen;
    const auto changed = sharedKeys(defaults, chosen);
    const auto texts = separate(
        settings, [](const std::string&, const Any& value) { return !value.text().empty(); });
    //! [Working with dictionaries]

    EXPECT_EQ(settings, (Dictionary{{"size", 12}, {"colour", "green"}, {"bold", true}}));
    EXPECT_THAT(changed, ElementsAre("colour"));
    EXPECT_EQ(texts.matching, (Dictionary{{"colour", "green"}}));
    EXPECT_EQ(texts.notMatching, (Dictionary{{"size", 12}, {"bold", true}}));
}

TEST(Dictionaries, TakeTheSecondValueWhereBothHaveAKey)
{
    const auto joined = Dictionary{{"a", 1}, {"b", 2}} + Dictionary{{"c", 3}, {"a", 4}};

    EXPECT_EQ(joined, (Dictionary{{"a", 4}, {"b", 2}, {"c", 3}}));
    EXPECT_THAT(joined.keys(), ElementsAre("a", "b", "c"));
}

TEST(Dictionaries, JoinWithAnEmptyOne)
{
    const Dictionary dictionary = {{"a", 1}};

    EXPECT_EQ(dictionary + Dictionary(), dictionary);
    EXPECT_EQ(Dictionary() + dictionary, dictionary);
    EXPECT_EQ(Dictionary() + Dictionary(), Dictionary());
}

TEST(Dictionaries, AreLeftAsTheyWereByJoining)
{
    const Dictionary first = {{"a", 1}};
    const Dictionary second = {{"b", 2}};

    static_cast<void>(first + second);

    EXPECT_EQ(first, (Dictionary{{"a", 1}}));
    EXPECT_EQ(second, (Dictionary{{"b", 2}}));
}

TEST(Dictionaries, JoinAsStandardMapsToo)
{
    EXPECT_EQ((Numbers{{"a", 1}, {"b", 2}} + Numbers{{"b", 3}}), (Numbers{{"a", 1}, {"b", 3}}));
    EXPECT_EQ((Names{{1, "a"}} + Names{{1, "b"}, {2, "c"}}), (Names{{1, "b"}, {2, "c"}}));
}

TEST(Dictionaries, JoinAsStandardMapsWhereTheOperatorIsNamed)
{
    EXPECT_EQ(app::both({{"a", 1}}, {{"b", 2}}), (Numbers{{"a", 1}, {"b", 2}}));
}

TEST(Dictionaries, ShareTheKeysThatBothHave)
{
    EXPECT_THAT(sharedKeys(Dictionary{{"b", 1}, {"a", 1}, {"c", 1}}, Dictionary{{"a", 2}, {"b", 2}}),
        ElementsAre("a", "b"));
    EXPECT_THAT(sharedKeys(Dictionary{{"a", 1}}, Dictionary{{"A", 1}}), IsEmpty());
    EXPECT_THAT(sharedKeys(Dictionary(), Dictionary{{"a", 1}}), IsEmpty());
}

TEST(Dictionaries, ShareTheKeysOfStandardMaps)
{
    EXPECT_EQ((sharedKeys(Numbers{{"a", 1}, {"b", 2}}, Numbers{{"b", 3}})), std::set<std::string>{"b"});
    EXPECT_EQ((sharedKeys(Names{{1, "a"}, {2, "b"}}, Names{{2, "c"}})), std::unordered_set<int>{2});
}

TEST(Dictionaries, ShareAKeyWhoseValueIsNull)
{
    EXPECT_THAT(sharedKeys(Dictionary{{"a", nullptr}}, Dictionary{{"a", 1}}), ElementsAre("a"));
}

TEST(Dictionaries, SeparateKeepingTheOrder)
{
    const Dictionary dictionary = {{"d", 1}, {"c", 2}, {"b", 3}, {"a", 4}};

    const auto parts = separate(
        dictionary, [](const std::string&, const Any& value) { return *value.cast<int>() % 2 == 0; });

    EXPECT_THAT(parts.matching.keys(), ElementsAre("c", "a"));
    EXPECT_THAT(parts.notMatching.keys(), ElementsAre("d", "b"));
}

TEST(Dictionaries, SeparateByKey)
{
    auto changeable = Numbers{{"a", 1}, {"b", 2}};

    const auto parts = separate(changeable, [](const std::string& key, int) { return key == "b"; });

    EXPECT_EQ(parts, (SeparatedEntries<Numbers>{{{"b", 2}}, {{"a", 1}}}));
}

TEST(Dictionaries, SeparateAnEmptyOneIntoEmptyParts)
{
    const auto never = [](const std::string&, const Any&) -> bool { throw std::logic_error("called"); };

    EXPECT_EQ(separate(Dictionary(), never), SeparatedEntries<Dictionary>());
}

TEST(Dictionaries, LetWhatAPredicateThrowsThrough)
{
    const auto throws = [](const std::string&, const Any&) -> bool { throw std::logic_error("called"); };

    EXPECT_THROW(separate(Dictionary{{"a", 1}}, throws), std::logic_error);
}

TEST(Dictionaries, SeparateAsListsByAPredicateOnTheEntry)
{
    const Dictionary dictionary = {{"a", 1}, {"b", 2}};

    const auto parts = separate(dictionary, [](const Dictionary::Entry& entry) { return entry.key == "b"; });

    EXPECT_THAT(parts.matching, ElementsAre(Dictionary::Entry{"b", 2}));
}

TEST(Dictionaries, AreReadFromText)
{
    //! [Reading a dictionary]
    const auto member = makeDictionary(dataFromText(R"({"name": "Ada", "age": 36, "title": null})"));

    const auto age = get<double>(member, "age"); // a number that was read may be asked for as either
    //! [Reading a dictionary]

    EXPECT_EQ(age, 36.0);
    EXPECT_EQ(member, (Dictionary{{"name", "Ada"}, {"age", 36}, {"title", nullptr}}));
    EXPECT_THAT(member.keys(), ElementsAre("name", "age", "title"));
}

TEST(Dictionaries, AreNotReadFromAList)
{
    const auto list = bytes("[1, 2]");

    try {
        makeDictionary(list);
        FAIL();
    } catch (const JSONError& error) {
        EXPECT_EQ(error, JSONError::invalidData(list));
        EXPECT_EQ(error.description(), "JSON from `Data` requires string-keyed dictionary");
        EXPECT_EQ(error.errorUserInfo(), (Dictionary{{NSLocalizedDescriptionKey, error.description()}}));
    }
}

TEST(Dictionaries, AreNotReadFromAScalar)
{
    EXPECT_THROW(makeDictionary(bytes("5")), JSONReadError);
    EXPECT_THROW(makeDictionary(bytes("null")), JSONReadError);
}

TEST(Dictionaries, LetTheReadersErrorsThrough)
{
    EXPECT_THROW(makeDictionary(Data()), JSONReadError);
    EXPECT_THROW(makeDictionary(bytes(R"({"a": )")), JSONReadError);
    EXPECT_THROW(makeDictionary(bytes(R"({"a": 1e400})")), DecodingError);
}

TEST(Dictionaries, AreReadFromTheEmptyObject) { EXPECT_EQ(makeDictionary(bytes("{}")), Dictionary()); }

TEST(Dictionaries, TakeTheLastOfRepeatedMembers)
{
    EXPECT_EQ(makeDictionary(bytes(R"({"a": 1, "a": 2})")), (Dictionary{{"a", 2}}));
}

TEST(Dictionaries, AreReadAsOutcomes)
{
    EXPECT_EQ(tryMakeDictionary(bytes(R"({"a": 1})")).unwrap(), (Dictionary{{"a", 1}}));
    EXPECT_NE(tryMakeDictionary(bytes("[]")).error()->cast<JSONError>(), nullptr);
    EXPECT_NE(tryMakeDictionary(bytes("[")).error()->cast<JSONReadError>(), nullptr);
}
