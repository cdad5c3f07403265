#include "Orrenby/Platform/Drawing/NSTextAttachment.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(NSTextAttachment, StandsInItsBounds)
{
    //! [Placing an image]
    const Image icon({.width = 20, .height = 10});
    const NSTextAttachment attachment{.image = icon, .bounds = {{0, -4}, {40, 20}}};

    EXPECT_EQ(attachment.shownBounds(), (Rect{{0, -4}, {40, 20}}));
    EXPECT_EQ(NSTextAttachment{.image = icon}.shownBounds(), (Rect{{0, 0}, {20, 10}}));
    //! [Placing an image]
}

TEST(NSTextAttachment, ComparesImageAndBounds)
{
    const NSTextAttachment attachment{.image = Image({1, 2}), .bounds = {{0, 0}, {3, 4}}};

    EXPECT_EQ(attachment, (NSTextAttachment{.image = Image({1, 2}), .bounds = {{0, 0}, {3, 4}}}));
    EXPECT_NE(attachment, (NSTextAttachment{.image = Image({1, 3}), .bounds = {{0, 0}, {3, 4}}}));
    EXPECT_NE(attachment, (NSTextAttachment{.image = Image({1, 2}), .bounds = {{0, 1}, {3, 4}}}));
}

TEST(NSTextAttachment, HashesImageAndBounds)
{
    const std::hash<NSTextAttachment> hash;
    const NSTextAttachment attachment{.image = Image({1, 2}), .bounds = {{0, 0}, {3, 4}}};

    EXPECT_EQ(hash(attachment), hash(NSTextAttachment(attachment)));
    EXPECT_NE(hash(attachment), hash({.image = Image({1, 2})}));
    EXPECT_NE(hash(attachment), hash({.bounds = {{0, 0}, {3, 4}}}));
}

TEST(NSTextAttachment, Prints)
{
    const NSTextAttachment attachment{.image = Image({1, 2}), .bounds = {{0, 0}, {3, 4}}};

    EXPECT_EQ(describe(attachment), "Unknown (1.0, 2.0) in ((0.0, 0.0), (3.0, 4.0))");
    EXPECT_EQ(debugDescribe(attachment), "NSTextAttachment(Unknown (1.0, 2.0) in ((0.0, 0.0), (3.0, 4.0)))");
}
