#include "Orrenby/Foundation/SafeCopies.hpp"

#include "Orrenby/Platform/Objects/NSOrderedSet.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include <gmock/gmock.h>
#include <memory>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr SafeDictionaryOptions removingEmpty = {.removeEmptyCollections = true};

Dictionary dictionary(std::initializer_list<Dictionary::Entry> entries) { return Dictionary(entries); }

/// `core` inside that many lists.
Any nestedLists(int levels, Any core)
{
    for (int level = 0; level < levels; ++level)
        core = Array{std::move(core)};
    return core;
}

/// `core` inside that many dictionaries.
Any nestedDictionaries(int levels, Any core)
{
    for (int level = 0; level < levels; ++level)
        core = Dictionary{{"inner", std::move(core)}};
    return core;
}

/// How many lists are around the innermost one, and that one. Lets go of one level after the other, because
/// letting go of all at once takes stack.
std::pair<int, Array> takeApart(Array list)
{
    int levels = 0;
    while (list.size() == 1 && list[0].get<Array>() != nullptr) {
        const Any inner = std::move(list[0]);
        list = *inner.get<Array>();
        ++levels;
    }
    return {levels, list};
}

/// Whether two values share what they hold.
bool isShared(const Any& first, const Any& second)
{
    return first.get<Array>() != nullptr && first.get<Array>() == second.get<Array>();
}

} // namespace

TEST(SafeCopies, CleanANestedCollection)
{
    //! [Cleaning a nested collection]
    const Dictionary answer = {
        {"title", "Ford"},
        {"note", NSNull{}},
        {"tags", Array{"wet", NSNull{}, Array{}}},
        {"photos", Array{NSNull{}}},
    };

    EXPECT_EQ(describe(answer | safeDictionary), R"(["photos": [], "tags": ["wet"], "title": "Ford"])");
    EXPECT_EQ(describe(answer | safeDictionary({.removeEmptyCollections = true})),
        R"(["tags": ["wet"], "title": "Ford"])");
    //! [Cleaning a nested collection]
}

TEST(SafeCopies, CleanAList)
{
    //! [Cleaning a list]
    const Array answers = {1, NSNull{}, Array{NSNull{}}, Dictionary{{"a", Array{}}, {"b", 2}}};

    EXPECT_EQ(describe(answers | safeArray), R"([1, ["b": 2]])");
    //! [Cleaning a list]
}

TEST(SafeCopies, CleanASet)
{
    //! [Cleaning a set]
    const NSSet answers = {"a", NSNull{}, Array{1, NSNull{}}, Array{1}};

    EXPECT_EQ(answers | safeSet, (NSSet{"a", Array{1}}));
    //! [Cleaning a set]
}

TEST(SafeDictionary, RemovesNullMarkers)
{
    EXPECT_EQ(
        safeDictionary(dictionary({{"a", NSNull{}}, {"b", 1}, {"c", nullptr}})), dictionary({{"b", 1}}));
}

TEST(SafeDictionary, RemovesNullMarkersAtEveryDepth)
{
    const auto deep = dictionary({{"a", Dictionary{{"b", Dictionary{{"c", NSNull{}}, {"d", 1}}}}}});

    EXPECT_EQ(safeDictionary(deep), dictionary({{"a", Dictionary{{"b", Dictionary{{"d", 1}}}}}}));
}

TEST(SafeDictionary, KeepsAnEmptyListUnlessAsked)
{
    const auto subject = dictionary({{"list", Array{}}});

    EXPECT_EQ(safeDictionary(subject), subject);
    EXPECT_EQ(safeDictionary(subject, {.removeEmptyCollections = false}), subject);
    EXPECT_THAT(safeDictionary(subject, {.removeEmptyCollections = true}), IsEmpty());
}

TEST(SafeDictionary, RemovesEveryKindOfEmptyContainerWhenAsked)
{
    const auto subject = dictionary(
        {{"list", Array{}}, {"dictionary", Dictionary{}}, {"set", NSSet{}}, {"x", 1}});

    EXPECT_EQ(safeDictionary(subject), subject);
    EXPECT_EQ(safeDictionary(subject, removingEmpty), dictionary({{"x", 1}}));
}

TEST(SafeDictionary, JudgesContainersAfterTheyWereCleaned)
{
    const auto subject = dictionary(
        {{"list", Array{NSNull{}}}, {"dictionary", Dictionary{{"a", NSNull{}}}}, {"set", NSSet{NSNull{}}}});

    EXPECT_EQ(safeDictionary(subject),
        dictionary({{"list", Array{}}, {"dictionary", Dictionary{}}, {"set", NSSet{}}}));
    EXPECT_THAT(safeDictionary(subject, removingEmpty), IsEmpty());
}

TEST(SafeDictionary, PassesItsFlagToNestedDictionaries)
{
    const auto subject = dictionary({{"a", Dictionary{{"b", Dictionary{{"c", Array{}}}}}}});

    EXPECT_EQ(safeDictionary(subject), subject);
    EXPECT_THAT(safeDictionary(subject, removingEmpty), IsEmpty());
}

TEST(SafeDictionary, AlwaysRemovesWhatIsEmptyInsideListsAndSets)
{
    const auto inner = Dictionary{{"c", Array{}}, {"d", 1}};
    const auto subject = dictionary(
        {{"list", Array{inner, Array{}, NSSet{}}}, {"set", NSSet{inner, Dictionary{}}}});
    const auto cleaned = Dictionary{{"d", 1}};

    EXPECT_EQ(safeDictionary(subject), dictionary({{"list", Array{cleaned}}, {"set", NSSet{cleaned}}}));
}

TEST(SafeDictionary, KeepsAListThatItEmptiedUnlessAsked)
{
    EXPECT_EQ(safeDictionary(dictionary({{"a", Array{Array{Array{}}}}})), dictionary({{"a", Array{}}}));
}

TEST(SafeDictionary, KeepsTheOrderOfKeys)
{
    const auto subject = dictionary(
        {{"z", 1}, {"gone", NSNull{}}, {"m", Dictionary{{"y", 1}, {"x", NSNull{}}, {"b", 2}}}, {"a", 3}});

    const auto result = safeDictionary(subject);

    EXPECT_THAT(result.keys(), ElementsAre("z", "m", "a"));
    EXPECT_THAT(result.cast<Dictionary>("m")->keys(), ElementsAre("y", "b"));
}

TEST(SafeDictionary, FindsMembersOfALargeDictionaryAfterRemovals)
{
    Dictionary subject;
    for (int number = 0; number < 200; ++number)
        subject.set("key " + std::to_string(number), number % 2 == 0 ? Any(number) : Any());

    const auto result = safeDictionary(subject);

    EXPECT_EQ(result.size(), 100U);
    EXPECT_EQ(result.cast<int>("key 198"), 198);
    EXPECT_FALSE(result.contains("key 199"));
}

TEST(SafeDictionary, OfAnEmptyDictionaryIsEmpty)
{
    EXPECT_THAT(safeDictionary(Dictionary()), IsEmpty());
    EXPECT_THAT(safeDictionary(Dictionary(), removingEmpty), IsEmpty());
}

TEST(SafeDictionary, LeavesItsSubjectAlone)
{
    const auto subject = dictionary({{"a", NSNull{}}, {"b", Array{NSNull{}}}});
    const auto before = subject;

    static_cast<void>(safeDictionary(subject));

    EXPECT_EQ(subject, before);
    EXPECT_EQ(subject.size(), 2U);
}

TEST(SafeDictionary, SharesNestedContainersWithoutAnythingToRemove)
{
    const auto subject = dictionary({{"same", Array{1, Array{2}}}, {"other", Array{NSNull{}}}});

    const auto result = safeDictionary(subject);

    EXPECT_TRUE(isShared(result["same"], subject["same"]));
    EXPECT_FALSE(isShared(result["other"], subject["other"]));
}

TEST(SafeDictionary, ChangesAnRvalueInPlace)
{
    auto subject = dictionary({{"a", NSNull{}}, {"a key too long to be kept in place", 1}});
    subject.erase("a");
    const auto* entry = subject.begin();

    const auto result = safeDictionary(std::move(subject));

    EXPECT_EQ(result.begin(), entry);
}

TEST(SafeDictionary, LeavesContainersOfOtherTypesAlone)
{
    const auto subject = dictionary({{"ordered", NSOrderedSet{}}, {"bytes", Data{}}, {"text", ""}});

    EXPECT_EQ(safeDictionary(subject, removingEmpty), subject);
}

TEST(SafeDictionary, TakesKeysOfAnyKind)
{
    const AnyEntries subject = {
        {1, NSNull{}}, {"two", Array{NSNull{}}}, {NSNull{}, "kept"}, {Array{}, Array{1, NSNull{}}}};

    EXPECT_EQ(
        subject | safeDictionary, (AnyEntries{{"two", Array{}}, {NSNull{}, "kept"}, {Array{}, Array{1}}}));
    EXPECT_EQ(subject | safeDictionary({.removeEmptyCollections = true}),
        (AnyEntries{{NSNull{}, "kept"}, {Array{}, Array{1}}}));
    EXPECT_EQ(safeDictionary(AnyEntries{}), AnyEntries{});
}

TEST(SafeArray, RemovesNullMarkersInOrder)
{
    EXPECT_EQ(safeArray(Array{3, NSNull{}, 1, Any(), 2}), (Array{3, 1, 2}));
}

TEST(SafeArray, RemovesNestedContainersThatEndUpEmpty)
{
    const Array subject = {Array{}, Array{NSNull{}}, Dictionary{{"a", NSNull{}}}, NSSet{Array{}}, 1};

    EXPECT_EQ(safeArray(subject), (Array{1}));
}

TEST(SafeArray, RemovesWhatIsEmptyInDictionariesBelowIt)
{
    EXPECT_EQ(safeArray(Array{Dictionary{{"a", Dictionary{{"b", Array{}}}}, {"c", 1}}}),
        (Array{Dictionary{{"c", 1}}}));
}

TEST(SafeArray, OfNothingButNullMarkersIsEmpty)
{
    EXPECT_THAT(safeArray(Array{NSNull{}, NSNull{}}), IsEmpty());
    EXPECT_THAT(safeArray(Array()), IsEmpty());
}

TEST(SafeArray, KeepsElementsAroundEveryChange)
{
    const Array subject = {Array{1, 2, NSNull{}, 3, Array{NSNull{}}, 4, Array{5, NSNull{}}, 6}};

    EXPECT_EQ(safeArray(subject), (Array{Array{1, 2, 3, 4, Array{5}, 6}}));
}

TEST(SafeArray, KeepsFalsyValues)
{
    const Array subject = {0, false, "", 0.0, Data{}};

    EXPECT_EQ(safeArray(subject), subject);
}

TEST(SafeArray, MovesTheElementsOfAnRvalue)
{
    const auto object = std::make_shared<const int>(7);
    Array subject = {NSNull{}, object};
    ASSERT_EQ(object.use_count(), 2);

    const auto result = safeArray(std::move(subject));

    EXPECT_EQ(object.use_count(), 2);
    EXPECT_EQ(result.size(), 1U);
}

TEST(SafeArray, TakesWhatIsNestedTenThousandTimes)
{
    constexpr int levels = 10'000;

    EXPECT_THAT(safeArray(Array{nestedLists(levels, NSNull{})}), IsEmpty());
    EXPECT_THAT(safeArray(Array{nestedLists(levels, Array{1})}), ElementsAre(nestedLists(levels, Array{1})));
}

TEST(SafeDictionary, TakesWhatIsNestedTenThousandTimes)
{
    constexpr int levels = 10'000;
    const Any deep = nestedDictionaries(levels, Array{1, NSNull{}});

    const auto result = safeDictionary(*deep.get<Dictionary>());

    EXPECT_EQ(Any(result), nestedDictionaries(levels, Array{1}));
    EXPECT_THAT(
        safeDictionary(*nestedDictionaries(levels, NSNull{}).get<Dictionary>(), removingEmpty), IsEmpty());
}

TEST(SafeArray, NeedsNoStackForAMillionLevels)
{
    constexpr int levels = 1'000'000;
    Array subject{nestedLists(levels, Array{1, NSNull{}})};

    Array result = safeArray(subject);

    EXPECT_EQ(takeApart(std::move(result)), std::pair(levels + 1, Array{1}));
    EXPECT_EQ(takeApart(std::move(subject)), std::pair(levels + 1, Array{1, NSNull{}}));
}

TEST(SafeSet, RemovesNullMarkersAndWhatEndsUpEmpty)
{
    EXPECT_EQ(safeSet(NSSet{NSNull{}, Array{}, Dictionary{{"a", NSSet{}}}, 1}), (NSSet{1}));
    EXPECT_THAT(safeSet(NSSet{NSNull{}}), IsEmpty());
    EXPECT_THAT(safeSet(NSSet{}), IsEmpty());
}

TEST(SafeSet, MakesOneOfMembersThatBecomeEqual)
{
    const NSSet subject = {Array{1, NSNull{}}, "a", Array{1}, Array{NSNull{}, 1}};

    EXPECT_THAT(safeSet(subject).allObjects(), ElementsAre(Any(Array{1}), Any("a")));
}

TEST(SafeSet, CleansSetsInsideOfOtherContainers)
{
    const Array subject = {NSSet{NSNull{}, 1, NSSet{2, NSNull{}}}, NSSet{NSSet{NSNull{}}}};

    EXPECT_EQ(safeArray(subject), (Array{NSSet{1, NSSet{2}}}));
}

TEST(SafeSet, GivesASetBackAsItWasWhenNothingIsToRemove)
{
    NSSet subject = {3, "a", Array{1}};
    const auto* first = subject.begin();

    const auto result = safeSet(std::move(subject));

    EXPECT_EQ(result.begin(), first);
    EXPECT_THAT(result.allObjects(), ElementsAre(Any(3), Any("a"), Any(Array{1})));
}
