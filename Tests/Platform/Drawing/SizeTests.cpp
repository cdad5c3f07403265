#include "Orrenby/Platform/Drawing/Size.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(Size, IsSquare) { EXPECT_EQ(Size::square(3), (Size{.width = 3, .height = 3})); }

TEST(Size, HashesByWidthAndThenHeight)
{
    const std::hash<Size> hash;

    EXPECT_EQ(hash({1, 2}), hash({1, 2}));
    EXPECT_NE(hash({1, 2}), hash({2, 1}));
}

TEST(Size, HashesNegativeZeroAsZero)
{
    EXPECT_EQ((Size{-0.0, 0}), (Size{0, -0.0}));
    EXPECT_EQ(std::hash<Size>{}({-0.0, 1}), std::hash<Size>{}({0.0, 1}));
    EXPECT_EQ(std::hash<Size>{}({1, -0.0}), std::hash<Size>{}({1, 0.0}));
}

TEST(Size, Prints)
{
    EXPECT_EQ(describe(Size{1, 2.5}), "(1.0, 2.5)");
    EXPECT_EQ(debugDescribe(Size{1, 2.5}), "Size(1.0, 2.5)");
}
