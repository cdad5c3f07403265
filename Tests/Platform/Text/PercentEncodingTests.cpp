#include "Orrenby/Platform/Text/PercentEncoding.hpp"

#include "Orrenby/Platform/Objects/Data.hpp"
#include <gmock/gmock.h>
#include <random>
#include <string>

using namespace orrenby;
using Kind = PercentDecodingError::Kind;

namespace {

const CharacterSet letters = CharacterSet::fromRange('a', 'z');

std::optional<PercentDecodingError> error(std::string_view text)
{
    return tryRemovingPercentEncoding(text).error();
}

std::string everyByteBelow128()
{
    std::string text;
    for (char byte = 0; byte < 127; ++byte)
        text += byte;
    return text + '\x7F';
}

} // namespace

TEST(PercentEncoding, EscapesAndBack)
{
    //! [Escaping and back]
    const auto query = addingPercentEncoding("q=café au lait", CharacterSet::urlQueryAllowed());

    EXPECT_EQ(query, "q=caf%C3%A9%20au%20lait");
    EXPECT_EQ(removingPercentEncoding("q=caf%c3%a9%20au%20lait"), "q=café au lait");
    EXPECT_EQ(addingPercentEscapes("50% off", CharacterSet("%")), "50%25 off");
    //! [Escaping and back]
}

TEST(PercentEncoding, LeavesEmptyTextEmpty)
{
    EXPECT_EQ(addingPercentEncoding("", letters), "");
    EXPECT_EQ(addingPercentEscapes("", letters), "");
    EXPECT_EQ(removingPercentEncoding(""), "");
}

TEST(PercentEncoding, EscapesAgainWhatIsEscaped)
{
    EXPECT_EQ(addingPercentEncoding("%20", CharacterSet::urlQueryAllowed()), "%2520");
}

TEST(PercentEncoding, AllowsNothingBeyondASCII)
{
    EXPECT_EQ(addingPercentEncoding("aé😀", letters.union_(CharacterSet("é😀"))), "a%C3%A9%F0%9F%98%80");
    EXPECT_EQ(addingPercentEncoding("é", CharacterSet().inverted()), "%C3%A9");
}

TEST(PercentEncoding, EscapesMembersBeyondASCIIButKeepsOthers)
{
    EXPECT_EQ(addingPercentEscapes("aéö", CharacterSet("é")), "a%C3%A9ö");
    EXPECT_EQ(addingPercentEscapes("a😀", letters), "%61😀");
}

TEST(PercentEncoding, EscapesNUL)
{
    EXPECT_EQ(addingPercentEncoding(std::string_view("a\0b", 3), letters), "a%00b");
    EXPECT_EQ(removingPercentEncoding("a%00b"), std::string("a\0b", 3));
}

TEST(PercentEncoding, GivesNothingForTextThatIsNoUTF8)
{
    EXPECT_EQ(addingPercentEncoding("a\xFF", letters), std::nullopt);
    EXPECT_EQ(addingPercentEscapes("a\xED\xA0\x80", letters), std::nullopt);
}

TEST(PercentEncoding, WritesAndReadsEveryASCIICharacter)
{
    const auto encoded = addingPercentEncoding(everyByteBelow128(), CharacterSet());

    EXPECT_EQ(encoded->size(), 128U * 3);
    EXPECT_TRUE(encoded->starts_with("%00%01%02%03%04%05%06%07%08%09%0A%0B"));
    EXPECT_EQ(removingPercentEncoding(*encoded), everyByteBelow128());
}

TEST(PercentEncoding, ReadsBackRandomTexts)
{
    std::mt19937 engine(11);
    for (int round = 0; round < 2'000; ++round) {
        std::string text;
        for (auto length = engine() % 40; length > 0; --length)
            text += std::array{"a", "%", "%4", " ", "&", "é", "€", "😀", "\n", "41"}[engine() % 10];

        EXPECT_EQ(removingPercentEncoding(*addingPercentEncoding(text, letters)), text);
        EXPECT_EQ(removingPercentEncoding(*addingPercentEscapes(text, CharacterSet("% &é"))), text);
    }
}

TEST(PercentEncoding, KeepsAPlus)
{
    EXPECT_EQ(removingPercentEncoding("a+b"), "a+b");
    EXPECT_EQ(removingPercentEncoding("a%2Bb"), "a+b");
}

TEST(PercentEncoding, KeepsCharactersBeyondASCIIThatAreNotEscaped)
{
    EXPECT_EQ(removingPercentEncoding("é%20ö"), "é ö");
}

TEST(PercentDecodingError, TellsOfAnEscapeThatIsCut)
{
    EXPECT_EQ(error("%"), PercentDecodingError(Kind::Cut, 0));
    EXPECT_EQ(error("ab%4"), PercentDecodingError(Kind::Cut, 2));
    EXPECT_EQ(error("%41%"), PercentDecodingError(Kind::Cut, 3));
    EXPECT_EQ(removingPercentEncoding("ab%4"), std::nullopt);
}

TEST(PercentDecodingError, TellsOfCharactersThatAreNoDigits)
{
    EXPECT_EQ(error("%zz"), PercentDecodingError(Kind::NoDigit, 0));
    EXPECT_EQ(error("ab%4g"), PercentDecodingError(Kind::NoDigit, 2));
    EXPECT_EQ(error("%%41"), PercentDecodingError(Kind::NoDigit, 0));
    EXPECT_EQ(error("% 1"), PercentDecodingError(Kind::NoDigit, 0));
}

TEST(PercentDecodingError, TellsWhereTheTextIsNoUTF8)
{
    EXPECT_EQ(error("a%20%FFb"), PercentDecodingError(Kind::NotUTF8, 4));
    EXPECT_EQ(error("%C3%A9%C3"), PercentDecodingError(Kind::NotUTF8, 6));
    EXPECT_EQ(error("%41\x80"), PercentDecodingError(Kind::NotUTF8, 3));
    EXPECT_EQ(error("%ED%A0%80"), PercentDecodingError(Kind::NotUTF8, 0));
}

TEST(PercentDecodingError, PrintsWhatIsWrongAndWhere)
{
    EXPECT_EQ(error("ab%4")->description(), "Fewer than two digits behind the \"%\" at byte 2");
    EXPECT_EQ(error("%zz")->description(), "No hexadecimal digits behind the \"%\" at byte 0");
    EXPECT_EQ(error("%FF")->description(), "No UTF-8 at byte 0");
}

TEST(PercentDecodingError, IsAPlatformErrorObject)
{
    const auto object = error("%zz")->nsError();

    EXPECT_EQ(object.domain(), "PercentDecodingError");
    EXPECT_EQ(object.code(), 2);
    EXPECT_EQ(object.localizedDescription(), "No hexadecimal digits behind the \"%\" at byte 0");
}

TEST(PercentDecodingError, IsCaughtByItsTypeAndAsAnyException)
{
    EXPECT_THROW(static_cast<void>(tryRemovingPercentEncoding("%").unwrap()), PercentDecodingError);
    EXPECT_THROW(static_cast<void>(tryRemovingPercentEncoding("%").unwrap()), std::exception);
    EXPECT_EQ(tryRemovingPercentEncoding("%41").unwrap(), "A");
}
