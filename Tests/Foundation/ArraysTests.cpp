#include "Orrenby/Foundation/Arrays.hpp"

#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <string>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

bool isText(const Any& value) { return value.kind() == Any::Kind::Text; }
bool isNull(const Any& value) { return value.isNull(); }
bool isNeither(const Any&) { return false; }

} // namespace

TEST(Arrays, AreWorkedWith)
{
    //! [Working with lists]
    const Array values = {1, "two", NSNull{}, "four"};
    const auto twice = [](const Any& value) -> std::optional<Any> {
        const auto number = value.cast<int>();
        return number ? std::optional<Any>(*number * 2) : std::nullopt;
    };

    EXPECT_EQ(values | stripNulls, (Array{1, "two", "four"}));
    EXPECT_EQ(values | findFirstWithBlock(isText), Any("two"));
    EXPECT_EQ(values | filterWithBlock(isText), (Array{"two", "four"}));
    EXPECT_EQ(values | map(twice), Array{2});
    //! [Working with lists]
}

TEST(StripNulls, KeepsTheOrderOfTheOthers)
{
    EXPECT_EQ(stripNulls(Array{NSNull{}, 3, Any(), 1, nullptr, 2, NSNull{}}), (Array{3, 1, 2}));
}

TEST(StripNulls, LooksIntoNothing)
{
    const Array values = {Array{NSNull{}}, Dictionary{{"a", NSNull{}}}};

    EXPECT_EQ(stripNulls(values), values);
}

TEST(StripNulls, OfNothingIsNothing)
{
    EXPECT_THAT(stripNulls(Array()), IsEmpty());
    EXPECT_THAT(stripNulls(Array{NSNull{}}), IsEmpty());
}

TEST(StripNulls, LeavesItsSubjectAlone)
{
    const Array values = {1, NSNull{}};

    EXPECT_EQ(values | stripNulls, Array{1});
    EXPECT_EQ(values.size(), 2U);
}

TEST(StripNulls, MovesTheElementsOfAnRvalue)
{
    const auto object = std::make_shared<const int>(7);
    Array values = {NSNull{}, object};
    const auto* storage = values.data();

    const auto result = stripNulls(std::move(values));

    EXPECT_EQ(result.data(), storage);
    EXPECT_EQ(object.use_count(), 2);
}

TEST(FindFirstWithBlock, GivesNothingWhereThePredicateNeverHolds)
{
    EXPECT_EQ(findFirstWithBlock(Array{1, 2}, isText), std::nullopt);
    EXPECT_EQ(findFirstWithBlock(Array(), isText), std::nullopt);
}

TEST(FindFirstWithBlock, StopsAtTheFirst)
{
    Array asked;
    const auto isLarge = [&](const Any& value) {
        asked.push_back(value);
        return value.cast<int>() > 1;
    };

    EXPECT_EQ(findFirstWithBlock(Array{1, 2, 3}, isLarge), Any(2));
    EXPECT_EQ(asked, (Array{1, 2}));
}

TEST(FindFirstWithBlock, TellsAFoundNullMarkerFromNothing)
{
    EXPECT_EQ(findFirstWithBlock(Array{1, NSNull{}}, isNull), std::optional(Any()));
    EXPECT_EQ(findFirstWithBlock(Array{1}, isNull), std::nullopt);
}

TEST(FindFirstWithBlock, PassesOnWhatThePredicateThrows)
{
    const auto fails = [](const Any&) -> bool { throw std::runtime_error("no"); };

    EXPECT_THROW(findFirstWithBlock(Array{1}, fails), std::runtime_error);
    EXPECT_EQ(findFirstWithBlock(Array(), fails), std::nullopt);
}

TEST(FilterWithBlock, KeepsTheOrderAndNullMarkers)
{
    const auto isOther = [](const Any& value) { return !isText(value); };

    EXPECT_EQ(filterWithBlock(Array{3, "a", NSNull{}, 1}, isOther), (Array{3, NSNull{}, 1}));
}

TEST(FilterWithBlock, GivesAnEmptyListWhereThePredicateNeverHolds)
{
    EXPECT_THAT(filterWithBlock(Array{1, 2}, isNeither), IsEmpty());
    EXPECT_THAT(filterWithBlock(Array(), isText), IsEmpty());
}

TEST(FilterWithBlock, AsksOncePerElementInOrder)
{
    Array asked;
    const auto isAsked = [&](const Any& value) {
        asked.push_back(value);
        return value == Any(2);
    };
    const Array values = {1, 2, 3};

    EXPECT_EQ(values | filterWithBlock(isAsked), Array{2});
    EXPECT_EQ(asked, values);
    asked.clear();
    EXPECT_EQ(Array(values) | filterWithBlock(isAsked), Array{2});
    EXPECT_EQ(asked, values);
}

TEST(FilterWithBlock, LeavesItsSubjectAlone)
{
    const Array values = {1, "a"};

    EXPECT_EQ(filterWithBlock(values, isText), Array{"a"});
    EXPECT_EQ(values, (Array{1, "a"}));
}

TEST(FilterWithBlock, MovesTheElementsOfAnRvalue)
{
    Array values = {1, "a", "b"};
    const auto* storage = values.data();

    const auto result = std::move(values) | filterWithBlock(isText);

    EXPECT_EQ(result.data(), storage);
    EXPECT_EQ(result, (Array{"a", "b"}));
}

TEST(FilterWithBlock, LeavesAnLvalueWholeWhenThePredicateThrows)
{
    const Array values = {1, 2};
    const auto fails = [](const Any& value) -> bool {
        return value == Any(1) || (throw std::runtime_error("no"), false);
    };

    EXPECT_THROW(filterWithBlock(values, fails), std::runtime_error);
    EXPECT_EQ(values, (Array{1, 2}));
}
