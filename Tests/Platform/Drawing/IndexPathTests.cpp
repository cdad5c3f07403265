#include "Orrenby/Platform/Drawing/IndexPath.hpp"

#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include <algorithm>
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

IndexPath path(std::vector<IndexPath::Index> indexes) { return IndexPath::fromIndexes(std::move(indexes)); }

} // namespace

TEST(IndexPath, NamesPlaces)
{
    //! [Naming places]
    const IndexPath third({.item = 2, .section = 0});

    EXPECT_EQ(third.item(), 2);
    EXPECT_EQ(third.section(), 0);
    EXPECT_LT(IndexPath::one(), third);
    EXPECT_EQ(describe(third.appending(5)), "[0, 2, 5]");
    //! [Naming places]
}

TEST(IndexPath, ZeroIsTheFirstItemOfTheFirstSection)
{
    EXPECT_EQ(IndexPath::zero().item(), 0);
    EXPECT_EQ(IndexPath::zero().section(), 0);
    EXPECT_EQ(IndexPath::zero(), path({0, 0}));
}

TEST(IndexPath, OneIsTheSecondItemOfTheFirstSection)
{
    EXPECT_EQ(IndexPath::one().item(), 1);
    EXPECT_EQ(IndexPath::one().section(), 0);
    EXPECT_EQ(IndexPath::one(), path({0, 1}));
}

TEST(IndexPath, HasTheSectionBeforeTheItem)
{
    EXPECT_THAT(IndexPath({.item = 7, .section = 3}), ElementsAre(3, 7));
}

TEST(IndexPath, ChangesItemAndSection)
{
    auto place = IndexPath::one();

    place.setItem(4);
    place.setSection(9);

    EXPECT_EQ(place, IndexPath({.item = 4, .section = 9}));
}

TEST(IndexPath, ChangesAnyLevel)
{
    auto deep = path({1, 2, 3});

    deep.set(2, 30);

    EXPECT_THAT(deep, ElementsAre(1, 2, 30));
    EXPECT_EQ(deep[2], 30);
}

TEST(IndexPath, WithoutIndexesIsTheWhole)
{
    const IndexPath whole;

    EXPECT_TRUE(whole.empty());
    EXPECT_EQ(whole.count(), 0u);
    EXPECT_EQ(whole.droppingLast(), whole);
    EXPECT_EQ(describe(whole), "[]");
    EXPECT_TRUE(IndexPath::zero().startsWith(whole));
}

TEST(IndexPath, GoesFurtherIn)
{
    EXPECT_EQ(path({1}).appending(2), path({1, 2}));
    EXPECT_EQ(path({1}).appending(path({2, 3})), path({1, 2, 3}));
    EXPECT_EQ(path({1}).appending(IndexPath()), path({1}));
}

TEST(IndexPath, GoesOut)
{
    EXPECT_EQ(path({1, 2, 3}).droppingLast(), path({1, 2}));
    EXPECT_EQ(path({1, 2, 3}).prefix(1), path({1}));
    EXPECT_EQ(path({1, 2, 3}).prefix(0), IndexPath());
    EXPECT_EQ(path({1, 2, 3}).prefix(9), path({1, 2, 3}));
}

TEST(IndexPath, TellsBeginnings)
{
    EXPECT_TRUE(path({1, 2}).startsWith(path({1, 2})));
    EXPECT_TRUE(path({1, 2}).startsWith(path({1})));
    EXPECT_FALSE(path({1, 2}).startsWith(path({2})));
    EXPECT_FALSE(path({1}).startsWith(path({1, 2})));
}

TEST(IndexPath, IsOrderedAsATableOfContents)
{
    std::vector paths = {path({2}), path({1, 10}), path({1}), path({1, 2}), IndexPath(), path({1, 2, 0})};

    std::sort(paths.begin(), paths.end());

    EXPECT_THAT(
        paths, ElementsAre(IndexPath(), path({1}), path({1, 2}), path({1, 2, 0}), path({1, 10}), path({2})));
}

TEST(IndexPath, HashesAsItCompares)
{
    const std::hash<IndexPath> hash;

    EXPECT_EQ(hash(path({1, 2})), hash(IndexPath({.item = 2, .section = 1})));
    EXPECT_NE(hash(path({1, 2})), hash(path({2, 1})));
    EXPECT_NE(hash(path({0})), hash(path({0, 0})));
}

TEST(IndexPath, KeepsAnyInteger)
{
    using Limits = std::numeric_limits<IndexPath::Index>;

    EXPECT_THAT(path({Limits::min(), -1, Limits::max()}), ElementsAre(Limits::min(), -1, Limits::max()));
}

TEST(IndexPath, Prints)
{
    EXPECT_EQ(describe(IndexPath::one()), "[0, 1]");
    EXPECT_EQ(debugDescribe(IndexPath::one()), "IndexPath[0, 1]");
    EXPECT_EQ(typeName<IndexPath>(), "IndexPath");
}

TEST(IndexPath, IsKeptInAnAny)
{
    const Any any = IndexPath::one();

    EXPECT_EQ(any, Any(path({0, 1})));
    EXPECT_EQ(any.cast<IndexPath>(), IndexPath::one());
}

TEST(IndexPathDeathTest, HasNoItemUnlessItHasTwoLevels)
{
    const auto message = "Fatal error: An item has an index path of a section and an item: "
                         "file Platform/IndexPath";
    auto deep = path({1, 2, 3});

    EXPECT_DEATH(static_cast<void>(path({1}).item()), message);
    EXPECT_DEATH(static_cast<void>(IndexPath().section()), message);
    EXPECT_DEATH(deep.setItem(1), message);
    EXPECT_DEATH(deep.setSection(1), message);
}

TEST(IndexPathDeathTest, HasNoIndexBeyondItsLevels)
{
    const auto message = "Fatal error: The index path has no such level: file Platform/IndexPath";
    auto place = IndexPath::one();

    EXPECT_DEATH(static_cast<void>(place[2]), message);
    EXPECT_DEATH(place.set(2, 0), message);
}
