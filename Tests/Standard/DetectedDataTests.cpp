#include "Orrenby/Standard/DetectedData.hpp"

#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using ::testing::IsEmpty;

TEST(DetectedData, IsFoundNowhereInTheEmptyText)
{
    EXPECT_FALSE(containsAddress(""));
    EXPECT_FALSE(containsPhoneNumber(""));
    EXPECT_FALSE(containsURL(""));
    EXPECT_FALSE(containsEmail(""));
    EXPECT_FALSE(containsHyperlink(""));
    EXPECT_THAT(detect(""), IsEmpty());
}

TEST(DetectedData, TellsAddresses)
{
    EXPECT_TRUE(containsAddress("to 12 Main Street, Springfield, IL 62701"));
    EXPECT_FALSE(containsAddress("030 1234567, example.com, a@b.co"));
}

TEST(DetectedData, TellsPhoneNumbers)
{
    EXPECT_TRUE(containsPhoneNumber("call +49 30 1234567"));
    EXPECT_FALSE(containsPhoneNumber("12 Main Street, example.com/030-1234567, a@b.co"));
}

TEST(DetectedData, TellsLinksFromMailLinks)
{
    EXPECT_TRUE(containsURL("see example.com"));
    EXPECT_FALSE(containsEmail("see example.com"));
    EXPECT_FALSE(containsURL("write to a@b.co or mailto:c@d.co"));
    EXPECT_TRUE(containsEmail("write to a@b.co"));
    EXPECT_TRUE(containsEmail("write to mailto:c@d.co"));
}

TEST(DetectedData, FindsBothKindsOfLinksInOneText)
{
    for (const auto* const text :
        {"see example.com or write to a@b.co", "write to a@b.co or see example.com"}) {
        EXPECT_TRUE(containsURL(text)) << text;
        EXPECT_TRUE(containsEmail(text)) << text;
    }
}

TEST(DetectedData, TakesASchemeInCapitalsForAWebLink)
{
    EXPECT_TRUE(containsURL("MAILTO:a@b.co"));
    EXPECT_FALSE(containsEmail("MAILTO:a@b.co"));
    EXPECT_TRUE(containsHyperlink("MAILTO:a@b.co"));
}

TEST(DetectedData, TakesWebAndMailLinksForHyperlinks)
{
    EXPECT_TRUE(containsHyperlink("see example.com"));
    EXPECT_TRUE(containsHyperlink("write to a@b.co"));
    EXPECT_TRUE(containsHyperlink("tel:030-1234567"));
    EXPECT_FALSE(containsHyperlink("12 Main Street, 030 1234567"));
}

TEST(DetectedData, IsGivenWithItsPlaces)
{
    //! [Underlining what a text holds]
    const std::string text = "Ring 0161 496 0123 or see example.com.";
    std::string line(text.size(), ' ');

    for (const auto& match : detect(text))
        line.replace(match.byteOffset, match.byteCount, match.byteCount, '~');
    //! [Underlining what a text holds]

    EXPECT_EQ(line, "     ~~~~~~~~~~~~~        ~~~~~~~~~~~ ");
}
