#include "Orrenby/Foundation/Text.hpp"

#include "Orrenby/Platform/Text/PercentEncoding.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

namespace {

constexpr std::string_view escapedCharacters = "!*'();:@&=+$,/?%#[] \n";

std::string text(char32_t scalar)
{
    std::string result;
    appendUTF8(result, scalar);
    return result;
}

} // namespace

TEST(Text, IsCleaned)
{
    //! [Cleaning a text]
    const std::string typed = "  bread & butter\n";

    EXPECT_EQ(trim(typed), "bread & butter");
    EXPECT_EQ(typed | trim | urlencode, "bread%20%26%20butter");
    //! [Cleaning a text]
}

TEST(Trim, RemovesWhiteSpaceAndLineBreaksAroundTheText)
{
    EXPECT_EQ(trim("\t\r\n a\tb \n c \v\f"), "a\tb \n c");
    EXPECT_EQ(trim("\u00A0\u2028\u3000a\u1680\u2029\u0085"), "a");
}

TEST(Trim, LeavesNothingOfNothingAndOfBlanks)
{
    EXPECT_EQ(trim(""), "");
    EXPECT_EQ(trim(" \n\u2003\t "), "");
}

TEST(Trim, KeepsAZeroWidthSpace)
{
    EXPECT_EQ(trim(" \u200Ba\u200B "), "\u200Ba\u200B");
    EXPECT_EQ(trim("\uFEFFa\u180E"), "\uFEFFa\u180E");
}

TEST(Trim, KeepsWhatIsNoUTF8) { EXPECT_EQ(trim(" \x80\xFF "), "\x80\xFF"); }

TEST(Trim, LeavesItsSubjectAlone)
{
    const std::string subject = " a ";

    EXPECT_EQ(subject | trim, "a");
    EXPECT_EQ(subject, " a ");
}

TEST(URLEncode, EscapesTheBlankAndTheAmpersand) { EXPECT_EQ(urlencode("a b&c"), "a%20b%26c"); }

TEST(URLEncode, EscapesExactlyTwentyOneCharacters)
{
    int escaped = 0;
    for (char32_t scalar = 0; scalar < 0x3000; ++scalar) {
        const auto plain = text(scalar);
        const bool isEscaped = urlencode(plain) != plain;
        ASSERT_EQ(isEscaped, escapedCharacters.find(plain) != std::string_view::npos)
            << static_cast<unsigned>(scalar);
        escaped += isEscaped ? 1 : 0;
    }
    EXPECT_EQ(escaped, 21);
}

TEST(URLEncode, WritesUpperCaseDigits)
{
    EXPECT_EQ(
        urlencode(escapedCharacters), "%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%25%23%5B%5D%20%0A");
}

TEST(URLEncode, LeavesOtherTextAlone)
{
    EXPECT_EQ(urlencode("AZaz09-._~\"<>\\^`{|}\t\r"), "AZaz09-._~\"<>\\^`{|}\t\r");
    EXPECT_EQ(urlencode("Zoë 😀"), "Zoë%20😀");
    EXPECT_EQ(urlencode(""), "");
}

TEST(URLEncode, EscapesAgainWhatIsEscaped) { EXPECT_EQ(urlencode("%20"), "%2520"); }

TEST(URLEncode, GivesNothingForTextThatIsNoUTF8) { EXPECT_EQ(urlencode("a\xFF"), std::nullopt); }

TEST(URLEncode, IsUndoneByRemovingThePercentEncoding)
{
    const auto subject = std::string(escapedCharacters).append("é€😀");

    EXPECT_EQ(removingPercentEncoding(urlencode(subject).value()), subject);
}

TEST(HasAnyPrefixFrom, LooksForPrefixes)
{
    //! [Looking for prefixes]
    const NSSet schemes{"http:", "https:"};

    EXPECT_TRUE(hasAnyPrefixFrom("https://example.com", schemes));
    EXPECT_FALSE(hasAnyPrefixFrom("ftp://example.com", schemes));
    //! [Looking for prefixes]
}

TEST(HasAnyPrefixFrom, IsFalseForAnEmptySet)
{
    EXPECT_FALSE(hasAnyPrefixFrom("text", {}));
    EXPECT_FALSE(hasAnyPrefixFrom("", NSSet()));
}

TEST(HasAnyPrefixFrom, PassesOverMembersThatAreNoText)
{
    EXPECT_FALSE(hasAnyPrefixFrom("1 true", NSSet{1, true, nullptr, 1.0}));
    EXPECT_TRUE(hasAnyPrefixFrom("1 true", NSSet{1, nullptr, "1 "}));
}

TEST(HasAnyPrefixFrom, TakesTheEmptyTextForAPrefixOfAll)
{
    EXPECT_TRUE(hasAnyPrefixFrom("text", NSSet{""}));
    EXPECT_TRUE(hasAnyPrefixFrom("", NSSet{""}));
}

TEST(HasAnyPrefixFrom, TakesTheWholeTextForAPrefixButNothingLonger)
{
    EXPECT_TRUE(hasAnyPrefixFrom("text", NSSet{"text"}));
    EXPECT_FALSE(hasAnyPrefixFrom("text", NSSet{"texts"}));
}

TEST(HasAnyPrefixFrom, TellsUpperFromLowerCase) { EXPECT_FALSE(hasAnyPrefixFrom("text", NSSet{"Te"})); }

TEST(NonLocalized, IsTheTextItself)
{
    EXPECT_EQ(nonLocalized("OK"), "OK");
    EXPECT_EQ(nonLocalized(""), "");
}
