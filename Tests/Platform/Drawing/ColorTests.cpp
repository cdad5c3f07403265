#include "Orrenby/Platform/Drawing/Color.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <gmock/gmock.h>

using namespace orrenby;

TEST(Color, IsMadeOfItsParts)
{
    //! [Mixing colours]
    const auto moss = Color::rgb(0x6B8E23);

    EXPECT_EQ(moss, (Color{.red = 107, .green = 142, .blue = 35}));
    EXPECT_EQ(describe(moss.withAlpha(128)), "#6b8e2380");
    EXPECT_EQ(Color::fromHex("#6B8E23"), moss);
    //! [Mixing colours]
}

TEST(Color, LeavesOutWhatIsAbove24Bits) { EXPECT_EQ(Color::rgb(0xFF112233), Color::rgb(0x112233)); }

TEST(Color, ReadsEveryFormOfDigits)
{
    EXPECT_EQ(Color::fromHex("fff"), Color::white());
    EXPECT_EQ(Color::fromHex("#19A"), Color::rgb(0x1199AA));
    EXPECT_EQ(Color::fromHex("#19a8"), Color::rgb(0x1199AA).withAlpha(0x88));
    EXPECT_EQ(Color::fromHex("00000000"), Color::clear());
}

TEST(Color, ReadsNothingElse)
{
    for (const auto* text : {"", "#", "#12", "#12345", "#1234567", "#123456789", "#12345g", "##12345", "red",
             " #123", "#\xFF\xFF\xFF"})
        EXPECT_EQ(Color::fromHex(text), std::nullopt) << text;
}

TEST(Color, IsReadAgainFromItsPrintedForm)
{
    for (const auto color :
        {Color::black(), Color::white(), Color::gray(), Color::clear(), Color{1, 2, 3, 4}})
        EXPECT_EQ(Color::fromHex(describe(color)), color);
}

TEST(Color, Prints)
{
    EXPECT_EQ(describe(Color::gray()), "#808080");
    EXPECT_EQ(debugDescribe(Color::clear()), "Color(#00000000)");
}

TEST(Color, HashesEveryPart)
{
    const std::hash<Color> hash;

    EXPECT_EQ(hash(Color::gray()), hash(Color::rgb(0x808080)));
    EXPECT_NE(hash(Color::gray()), hash(Color::gray().withAlpha(254)));
    EXPECT_NE(hash({1, 2, 3}), hash({3, 2, 1}));
}
