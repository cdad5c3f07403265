#include "Orrenby/Standard/Sequences.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include "Orrenby/Platform/Observing/KeyPath.hpp"
#include <array>
#include <gmock/gmock.h>
#include <list>
#include <ranges>
#include <sstream>
#include <stdexcept>
#include <string>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

struct Note {
    std::string title;
    std::vector<std::string> tags;
    std::optional<int> page;
};

struct Animal {
    virtual ~Animal() = default;
};
struct Cat : Animal {};
struct Dog : Animal {};

const auto isOdd = [](int value) { return value % 2 != 0; };

const std::vector<Note> notes{{"storm", {"sky", "wet"}, 4}, {"owl", {}, std::nullopt}, {"hut", {"wood"}, 7}};

} // namespace

TEST(Sequences, WorkTogether)
{
    //! [Working with sequences]
    const std::vector<std::optional<int>> readings{3, std::nullopt, 8, 5};

    const auto present = compact(readings);
    const auto [odd, even] = separate(present, [](int value) { return value % 2 != 0; });

    EXPECT_THAT(odd, ElementsAre(3, 5));
    EXPECT_THAT(even, ElementsAre(8));
    EXPECT_EQ(count(present, [](int value) { return value > 3; }), 2);
    //! [Working with sequences]
}

TEST(Sequences, EndAChainOfViews)
{
    //! [Ending a chain of views]
    const std::vector<int> values{1, 2, 3, 4, 5, 6};

    const auto parts = values | std::views::drop(1)
        | std::views::transform([](int value) { return value * 3; })
        | separate([](int value) { return value > 10; });

    EXPECT_THAT(parts.matching, ElementsAre(12, 15, 18));
    EXPECT_THAT(parts.notMatching, ElementsAre(6, 9));
    //! [Ending a chain of views]
}

TEST(Sequences, BeginAChainOfViews)
{
    const std::vector<std::optional<int>> values{1, std::nullopt, 2, 3};
    std::vector<int> result;

    for (const int value : values | std::views::reverse | compact() | std::views::take(2))
        result.push_back(value);

    EXPECT_THAT(result, ElementsAre(3, 2));
}

TEST(Sequences, WalkOverViewsThatChangeWhileTheyAreWalked)
{
    std::vector<int> values{1, 2, 3};

    const auto odd = values | std::views::filter(isOdd) | map([](int value) { return value + 0.5; });

    EXPECT_THAT(odd, ElementsAre(1.5, 3.5));
    EXPECT_EQ(values | std::views::filter(isOdd) | count(isOdd), 2);
}

TEST(SequenceCount, IsZeroForNothing)
{
    EXPECT_EQ(count(std::vector<int>(), isOdd), 0);
    EXPECT_EQ(count(std::list<int>{1, 2, 3}, isOdd), 2);
    EXPECT_EQ(count(std::array<int, 2>{1, 2}, isOdd), 1);
    EXPECT_EQ(count(std::vector<bool>{true, false, true}, std::identity()), 2);
}

TEST(SequenceCount, PassesOnWhatThePredicateThrows)
{
    const auto fail = [](int) -> bool { throw std::runtime_error("no"); };

    EXPECT_THROW(count(std::vector<int>{1}, fail), std::runtime_error);
}

TEST(SequenceSeparate, KeepsTheOrder)
{
    EXPECT_EQ(separate(std::vector<int>{4, 3, 2, 1}, isOdd), (SeparatedElements<int>{{3, 1}, {4, 2}}));
}

TEST(SequenceSeparate, GivesTwoEmptyArraysForNothing)
{
    EXPECT_EQ(separate(std::vector<int>(), isOdd), SeparatedElements<int>());
}

TEST(SequenceSeparate, GivesPartsThatPrintAndHash)
{
    const auto parts = separate(std::vector<int>{1, 2, 3}, isOdd);
    const std::hash<SeparatedElements<int>> hash;
    std::ostringstream stream;
    stream << parts;

    EXPECT_EQ(stream.str(), "matching [1, 3], notMatching [2]");
    EXPECT_EQ(hash(parts), hash({{1, 3}, {2}}));
    EXPECT_NE(hash(parts), hash({{1}, {3, 2}}));
}

TEST(SequenceCompactCast, KeepsReferencesToObjectsOfTheClass)
{
    const auto cat = std::make_shared<Cat>();
    const std::vector<Ref<Animal>> animals{cat, std::make_shared<Dog>(), nullptr, cat};

    EXPECT_THAT(compactCast<Ref<Cat>>(animals), ElementsAre(cat, cat));
    EXPECT_THAT(animals | compactCast<Ref<Cat>>(), ElementsAre(cat, cat));
}

TEST(SequenceCompactCast, KeepsPointersToObjectsOfTheClass)
{
    Cat cat;
    Dog dog;

    EXPECT_THAT(compactCast<Cat*>(std::vector<Animal*>{&dog, &cat, nullptr}), ElementsAre(&cat));
}

TEST(SequenceCompactCast, KeepsValuesOfTheKind)
{
    const std::vector<Any> values{1, "a", 2.5, true, 2, nullptr};

    EXPECT_THAT(compactCast<std::int64_t>(values), ElementsAre(1, 2));
    EXPECT_THAT(compactCast<std::string>(values), ElementsAre("a"));
    EXPECT_THAT(compactCast<double>(values), ElementsAre(2.5));
    EXPECT_THAT(compactCast<int>(std::vector<std::optional<int>>{1, std::nullopt}), ElementsAre(1));
    EXPECT_THAT(compactCast<std::string>(std::vector<int>{1}), IsEmpty());
}

TEST(SequenceCompact, KeepsWhatIsPresent)
{
    EXPECT_THAT(
        compact(std::vector<std::optional<std::string>>{"a", std::nullopt, ""}), ElementsAre("a", ""));
    EXPECT_THAT(compact(std::vector<std::optional<int>>()), IsEmpty());
}

TEST(SequenceMap, FollowsKeyPathsMembersAndCallables)
{
    EXPECT_THAT(map(notes, keyPath<&Note::title>()), ElementsAre("storm", "owl", "hut"));
    EXPECT_THAT(map(notes, &Note::title), ElementsAre("storm", "owl", "hut"));
    EXPECT_THAT(map(notes, [](const Note& note) { return note.tags.size(); }), ElementsAre(2U, 0U, 1U));
    EXPECT_THAT(notes | map(&Note::page), ElementsAre(4, std::nullopt, 7));
}

TEST(SequenceMap, FollowsAKeyPathFromReferences)
{
    const std::vector<Ref<Note>> shared{std::make_shared<Note>(notes[0]), std::make_shared<Note>(notes[1])};

    EXPECT_THAT(map(shared, keyPath<&Note::title>()), ElementsAre("storm", "owl"));
    EXPECT_THAT(map(shared, &Note::title), ElementsAre("storm", "owl"));
}

TEST(SequenceMap, LeavesOutWhatHasNoResultInAListOfAnyKind)
{
    //! [Mapping values of any kind]
    const Array values = {1, "two", 3, NSNull{}};
    const auto number = [](const Any& value) { return value.cast<int>(); };

    EXPECT_EQ(values | map(number), (Array{1, 3}));
    EXPECT_EQ(map(values, describe<Any>), (std::vector<std::string>{"1", "two", "3", "<null>"}));
    //! [Mapping values of any kind]
}

TEST(SequenceMap, TakesAnEmptyReferenceForNothingInAListOfAnyKind)
{
    const auto shared = std::make_shared<const int>(7);
    const auto odd = [&](const Any& value) { return *value.cast<int>() % 2 == 1 ? shared : nullptr; };

    EXPECT_EQ(map(Array{1, 2, 3}, odd), (Array{shared, shared}));
}

TEST(SequenceMap, KeepsNullMarkersThatATransformGives)
{
    const auto marker = [](const Any&) { return Any(NSNull{}); };
    const auto optionalMarker = [](const Any&) { return std::optional<Any>(NSNull{}); };

    EXPECT_EQ(map(Array{1, 2}, marker), (Array{NSNull{}, NSNull{}}));
    EXPECT_EQ(map(Array{1, 2}, optionalMarker), (Array{NSNull{}, NSNull{}}));
}

TEST(SequenceMap, KeepsAbsentResultsOfTypedSequences)
{
    const auto odd = [](int value) { return value % 2 == 1 ? std::optional(value) : std::nullopt; };

    EXPECT_THAT(map(std::vector{1, 2, 3}, odd), ElementsAre(1, std::nullopt, 3));
}

TEST(SequenceFlatMap, PutsProjectedSequencesTogether)
{
    EXPECT_THAT(flatMap(notes, keyPath<&Note::tags>()), ElementsAre("sky", "wet", "wood"));
    EXPECT_THAT(notes | flatMap(&Note::tags), ElementsAre("sky", "wet", "wood"));
}

TEST(SequenceCompactMap, DropsAbsentProjections)
{
    EXPECT_THAT(compactMap(notes, keyPath<&Note::page>()), ElementsAre(4, 7));
    EXPECT_THAT(notes | compactMap(&Note::page), ElementsAre(4, 7));
}

TEST(SequenceCompactMap, LeadsFromWhatOptionalElementsHold)
{
    const std::vector<std::optional<Note>> some{notes[0], std::nullopt, notes[1]};

    EXPECT_THAT(compactMap(some, keyPath<&Note::title>()), ElementsAre("storm", "owl"));
    EXPECT_THAT(compactMap(some, &Note::page), ElementsAre(4));
}

TEST(SequenceCompactMap, DropsEmptyReferences)
{
    struct Page {
        Ref<Note> note;
    };
    const auto storm = std::make_shared<Note>(notes[0]);
    const std::vector<Page> pages{{nullptr}, {storm}};
    const std::vector<Ref<Note>> shared{storm, nullptr};

    EXPECT_THAT(compactMap(pages, &Page::note), ElementsAre(storm));
    EXPECT_THAT(compactMap(shared, &Note::title), ElementsAre("storm"));
    EXPECT_THAT(compactMap(shared, keyPath<&Note::title>()), ElementsAre("storm"));
    EXPECT_THAT(
        compactMap(shared, [](const Ref<Note>& note) { return note == nullptr; }), ElementsAre(false, true));
}

TEST(SequenceRemoveEmpty, KeepsPresentAndNonEmptyCollections)
{
    using Numbers = std::vector<int>;
    const std::vector<std::optional<Numbers>> lists{std::nullopt, Numbers{}, Numbers{1}};

    EXPECT_THAT(removeEmpty(lists), ElementsAre(ElementsAre(1)));
    EXPECT_THAT(lists | removeEmpty(), ElementsAre(ElementsAre(1)));
    EXPECT_THAT(removeEmpty(std::vector<std::string>{"", "a"}), ElementsAre("a"));
}
