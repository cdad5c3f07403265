#include "Orrenby/Platform/Text/EmailPattern.hpp"

#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using namespace std::string_literals;

namespace {

bool allMatch(std::initializer_list<std::string_view> texts)
{
    bool result = true;
    for (const auto text : texts)
        if (!matchesEmailPattern(text)) {
            ADD_FAILURE() << "does not match: " << text;
            result = false;
        }
    return result;
}

bool noneMatches(std::initializer_list<std::string_view> texts)
{
    bool result = true;
    for (const auto text : texts)
        if (matchesEmailPattern(text)) {
            ADD_FAILURE() << "matches: " << text;
            result = false;
        }
    return result;
}

} // namespace

TEST(EmailPattern, TakesALocalPartAndADomainWithADot)
{
    EXPECT_TRUE(allMatch({"a@b.c", "a@b.co", "first.last@mail.example.com", "a+b@x-y.org", "1@2.3",
        "!#$%&'*+/=?^_`{|}~-@b.co"}));
    EXPECT_TRUE(noneMatches({"", "a", "a@b", "@b.co", "a@", "a@.co", "a@b.", "a@b..co", "a@@b.co"}));
}

TEST(EmailPattern, WantsDotsBetweenRunsOnly)
{
    EXPECT_TRUE(noneMatches({".a@b.co", "a.@b.co", "a..b@b.co", "a b@b.co", "a@b c.co", "a@b.co "}));
}

TEST(EmailPattern, MatchesTheWholeTextOnly)
{
    EXPECT_TRUE(noneMatches(
        {" a@b.co", "a@b_c.co", "a@b.c_", "a@b.co\n", "x a@b.co", "a@b.co, c@d.co", "a@b.co\0"s}));
}

TEST(EmailPattern, TakesLettersOfAllScripts)
{
    EXPECT_TRUE(allMatch({"\u00E9@b.co", "\u0436\u0443\u043A@\u0434\u043C.\u0440\u0444", "\U00020000@b.co",
        "a@b.\u4E2D\u6587"}));
    EXPECT_TRUE(noneMatches({"\u20AC@b.co", "\U0001F600@b.co", "a@b.c\u0301"})); // no letters
}

TEST(EmailPattern, WantsLowerCaseInsideLabelsButTheLast)
{
    EXPECT_TRUE(allMatch({"a@MaiL.example.com", "a@mail.EXAMPLE", "a@ma-il.example.com", "a@M.example.com"}));
    EXPECT_TRUE(noneMatches({"a@MAIL.example.com", "a@m\u00E9l.example.com", "a@-mail.example.com",
        "a@mail-.example.com", "a@mail.example-"}));
}

TEST(EmailPattern, TakesQuotedLocalParts)
{
    EXPECT_TRUE(allMatch({R"("a@b"@c.co)", R"(""@c.co)", R"("a\"b"@c.co)", "\"\x01\x7F\"@c.co"}));
    EXPECT_TRUE(noneMatches(
        {R"("a b"@c.co)", R"("a"b"@c.co)", R"("a@c.co)", "\"\u00E9\"@c.co", "\"\n\"@c.co", "\"\t\"@c.co"}));
    EXPECT_TRUE(allMatch({"\"\\\t\"@c.co", R"("\ "@c.co)"})); // behind a backslash
}

TEST(EmailPattern, TakesAddressesOfFourNumbers)
{
    EXPECT_TRUE(allMatch({"a@[192.168.0.1]", "a@[255.255.255.255]", "a@[010.001.00.0]"}));
    EXPECT_TRUE(noneMatches(
        {"a@[256.0.0.1]", "a@[1.2.3]", "a@[1.2.3.4.5]", "a@[1.2.3.256]", "a@1.2.3.4]", "a@[1.2.3.0004]"}));
}

TEST(EmailPattern, TakesATagWithAnythingBehindThreeNumbers)
{
    EXPECT_TRUE(
        allMatch({"a@[1.2.3.x:y]", "a@[1.2.3.IPv6:[]\\]", "a@[1.2.3.x-1:\x01\x7F]", "a@[1.2.3.x:a@b]"}));
    EXPECT_TRUE(noneMatches({"a@[x:y]", "a@[1.2.3.:y]", "a@[1.2.3.x:]", "a@[1.2.3.x-:y]", "a@[1.2.3.x: ]"}));
    EXPECT_TRUE(allMatch({"a@[1.2.3.x:\\ ]"}));
}

TEST(EmailPattern, MatchesNoTextThatIsNotUTF8)
{
    EXPECT_TRUE(noneMatches({"\xC3@b.co", "a\xFF@b.co", "a@b.co\x80", "\xED\xA0\x80@b.co"}));
}

TEST(EmailPattern, TakesLongTextsWithoutFail)
{
    const std::string letters(5'000'000, 'a');

    EXPECT_TRUE(matchesEmailPattern(letters + "@b.co"));
    EXPECT_TRUE(matchesEmailPattern("\"" + letters + "\"@b.co"));
    EXPECT_FALSE(matchesEmailPattern(letters));
    EXPECT_FALSE(matchesEmailPattern("a@[1.2.3.a:" + std::string(5'000'000, '\\')));
}

TEST(EmailPattern, IsGivenAsText)
{
    EXPECT_EQ(emailPattern().size(), 448U);
    EXPECT_TRUE(emailPattern().starts_with(R"((?:[\p{L}0-9!#$%\&'*+/=?\^_`{|}~-]+)"));
    EXPECT_TRUE(emailPattern().ends_with(R"(|\\[\x01-\x09\x0b\x0c\x0e-\x7f])+)\]))"));
}
