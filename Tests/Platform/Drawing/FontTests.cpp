#include "Orrenby/Platform/Drawing/Font.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <gmock/gmock.h>

using namespace orrenby;

TEST(Font, KnowsItsNameAndMeasures)
{
    //! [Choosing a font]
    const Font body({.name = "Alegreya", .size = 16, .capHeight = 10.2});
    const auto title = body.withSize(32).bold();

    EXPECT_EQ(title.name(), "Alegreya");
    EXPECT_DOUBLE_EQ(title.capHeight(), 20.4);
    EXPECT_EQ(describe(title), "Alegreya 32.0 bold");
    //! [Choosing a font]
}

TEST(Font, IsTheSystemsUnlessNamed)
{
    EXPECT_EQ(Font(), Font::system(17));
    EXPECT_EQ(Font::boldSystem(12), Font::system(12).bold());
    EXPECT_EQ(Font::boldSystem(12).bold(false), Font::system(12));
}

TEST(Font, HasCapitalsOfSevenTenthsUnlessTold) { EXPECT_DOUBLE_EQ(Font::system(10).capHeight(), 7); }

TEST(Font, KeepsACapHeightOfZero) { EXPECT_EQ(Font({.capHeight = 0}).capHeight(), 0); }

TEST(Font, GrowsFromNothing)
{
    EXPECT_EQ(Font({.size = 0, .capHeight = 5}).withSize(10), Font::system(10));
    EXPECT_EQ(Font::system(10).withSize(0).capHeight(), 0);
}

TEST(Font, DiffersInEachOfItsParts)
{
    const Font font({.name = "A", .size = 10, .capHeight = 7});
    const Font others[] = {Font({.name = "B", .size = 10, .capHeight = 7}),
        Font({.name = "A", .size = 11, .capHeight = 7}), Font({.name = "A", .size = 10, .capHeight = 8}),
        font.bold(), font.italic(), Font({.name = "A", .size = 10, .capHeight = 7, .isMonospaced = true})};

    for (const auto& other : others) {
        EXPECT_NE(font, other);
        EXPECT_NE(std::hash<Font>{}(font), std::hash<Font>{}(other));
    }
    EXPECT_EQ(std::hash<Font>{}(font), std::hash<Font>{}(Font(font)));
}

TEST(Font, HashesNegativeZeroAsZero)
{
    const Font negative({.size = -0.0, .capHeight = -0.0});
    const Font positive({.size = 0, .capHeight = 0});

    EXPECT_EQ(negative, positive);
    EXPECT_EQ(negative.hash(), positive.hash());
}

TEST(Font, Prints)
{
    EXPECT_EQ(
        describe(Font({.name = "Mono", .size = 9.5, .isBold = true, .isItalic = true, .isMonospaced = true})),
        "Mono 9.5 bold italic monospaced");
    EXPECT_EQ(debugDescribe(Font::system(17)), "Font(System 17.0)");
}
