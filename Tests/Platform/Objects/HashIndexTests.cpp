#include "Orrenby/Platform/Objects/HashIndex.hpp"

#include <gmock/gmock.h>

using orrenby::detail::HashIndex;

namespace {

constexpr auto matches = [](std::size_t wanted) {
    return [wanted](std::size_t position) { return position == wanted; };
};

} // namespace

TEST(HashIndex, FindsNothingWhenEmpty)
{
    const HashIndex index;

    EXPECT_TRUE(index.isEmpty());
    EXPECT_EQ(index.find(0, matches(0)), HashIndex::notFound);
}

TEST(HashIndex, TellsPositionsOfOneHashApart)
{
    HashIndex index;
    for (std::size_t position = 0; position < 100; ++position)
        index.insert(7, position);

    for (std::size_t position = 0; position < 100; ++position)
        EXPECT_EQ(index.find(7, matches(position)), position);
    EXPECT_EQ(index.find(7, matches(100)), HashIndex::notFound);
}

TEST(HashIndex, AsksOnlyForPositionsWhoseHashAgrees)
{
    HashIndex index;
    index.insert(1, 0);
    index.insert(2, 1);
    int questions = 0;

    index.find(2, [&](std::size_t) {
        ++questions;
        return false;
    });

    EXPECT_EQ(questions, 1);
}

TEST(HashIndex, KeepsEverythingWhileItGrows)
{
    HashIndex index;
    for (std::size_t position = 0; position < 5000; ++position)
        index.insert(position * 1024, position);

    for (std::size_t position = 0; position < 5000; ++position)
        EXPECT_EQ(index.find(position * 1024, matches(position)), position);
}

TEST(HashIndex, ForgetsEverythingWhenCleared)
{
    HashIndex index;
    index.insert(1, 0);
    index.clear();

    EXPECT_TRUE(index.isEmpty());
    EXPECT_EQ(index.find(1, matches(0)), HashIndex::notFound);
}
