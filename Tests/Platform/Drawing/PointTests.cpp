#include "Orrenby/Platform/Drawing/Point.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(Point, HashesByXAndThenY)
{
    const std::hash<Point> hash;

    EXPECT_EQ(hash({1, 2}), hash({1, 2}));
    EXPECT_NE(hash({1, 2}), hash({2, 1}));
}

TEST(Point, HashesNegativeZeroAsZero)
{
    EXPECT_EQ((Point{-0.0, 0}), (Point{0, -0.0}));
    EXPECT_EQ(std::hash<Point>{}({-0.0, 1}), std::hash<Point>{}({0.0, 1}));
}

TEST(Point, Prints)
{
    EXPECT_EQ(describe(Point{1, -2.5}), "(1.0, -2.5)");
    EXPECT_EQ(debugDescribe(Point{1, -2.5}), "Point(1.0, -2.5)");
}
