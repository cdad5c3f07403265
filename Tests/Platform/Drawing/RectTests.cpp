#include "Orrenby/Platform/Drawing/Rect.hpp"

#include <cmath>
#include <gmock/gmock.h>

using namespace orrenby;

namespace {

constexpr Rect card{.origin = {.x = 1, .y = 2}, .size = {.width = 3, .height = 4}};

} // namespace

TEST(Rect, ComparesPlaceAndSize)
{
    EXPECT_EQ(card, (Rect{{1, 2}, {3, 4}}));
    EXPECT_NE(card, (Rect{{0, 2}, {3, 4}}));
    EXPECT_NE(card, (Rect{{1, 2}, {3, 5}}));
}

TEST(Rect, IsEmptyUnlessBothSidesAreLongerThanZero)
{
    EXPECT_FALSE(card.isEmpty());
    EXPECT_TRUE(Rect().isEmpty());
    EXPECT_TRUE((Rect{{1, 2}, {3, 0}}.isEmpty()));
    EXPECT_TRUE((Rect{{1, 2}, {-1, 4}}.isEmpty()));
    EXPECT_TRUE((Rect{{1, 2}, {std::nan(""), 4}}.isEmpty()));
}

TEST(Rect, HashesPlaceAndSize)
{
    const std::hash<Rect> hash;

    EXPECT_EQ(hash(card), hash({{1, 2}, {3, 4}}));
    EXPECT_NE(hash(card), hash({{3, 4}, {1, 2}}));
}

TEST(Rect, Prints)
{
    EXPECT_EQ(describe(card), "((1.0, 2.0), (3.0, 4.0))");
    EXPECT_EQ(debugDescribe(card), "Rect((1.0, 2.0), (3.0, 4.0))");
}
