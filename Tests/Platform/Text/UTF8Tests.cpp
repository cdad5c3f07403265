#include "Orrenby/Platform/Text/UTF8.hpp"

#include "Orrenby/Platform/Objects/Data.hpp"
#include <gmock/gmock.h>
#include <string>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

std::vector<char32_t> scalars(std::string_view text)
{
    std::vector<char32_t> result;
    forEachScalar(text, [&](char32_t scalar) { result.push_back(scalar); });
    return result;
}

std::string utf8(char32_t scalar)
{
    std::string text;
    appendUTF8(text, scalar);
    return text;
}

UTF8Scalar valid(char32_t value, std::uint8_t length)
{
    return {.value = value, .length = length, .isValid = true};
}
UTF8Scalar invalid(std::uint8_t length) { return {.value = 0xFFFD, .length = length, .isValid = false}; }

} // namespace

TEST(UTF8, MendsText)
{
    //! [Mending text]
    EXPECT_EQ(replacingInvalidUTF8("caf\xE9 noir"), "caf\uFFFD noir");
    EXPECT_EQ(replacingInvalidUTF8("café noir"), "café noir");
    //! [Mending text]
}

TEST(UTF8, ReadsAndWritesEveryScalarValue)
{
    for (char32_t scalar = 0; scalar <= 0x10FFFF; ++scalar) {
        if (scalar == 0xD800)
            scalar = 0xE000;
        const auto text = utf8(scalar);
        const auto expected = valid(scalar, static_cast<std::uint8_t>(text.size()));
        ASSERT_TRUE(isValidUTF8(text)) << static_cast<std::uint32_t>(scalar);
        ASSERT_EQ(firstUTF8Scalar(text + "a"), expected) << static_cast<std::uint32_t>(scalar);
        ASSERT_EQ(lastUTF8Scalar("a" + text), expected) << static_cast<std::uint32_t>(scalar);
        ASSERT_EQ(utf8Length(scalar), text.size()) << static_cast<std::uint32_t>(scalar);
    }
}

TEST(UTF8, WritesTheReplacementForNumbersThatAreNoScalarValues)
{
    EXPECT_EQ(utf8(0xD800), "\uFFFD");
    EXPECT_EQ(utf8(0xDFFF), "\uFFFD");
    EXPECT_EQ(utf8(0x110000), "\uFFFD");
}

TEST(UTF8, AgreesWithTheValidityOfEveryPairOfBytes)
{
    for (unsigned pair = 0; pair < 0x10000; ++pair) {
        const std::string text{static_cast<char>(pair >> 8U), static_cast<char>(pair & 0xFFU)};
        const auto first = firstUTF8Scalar(text);
        const bool isWhole = first.isValid
            && (first.length == 2 || firstUTF8Scalar(std::string_view(text).substr(1)).isValid);
        ASSERT_EQ(isWhole, isValidUTF8(text)) << pair;
    }
}

TEST(UTF8, TakesWhatCouldBeginAScalarValueAsOne)
{
    EXPECT_EQ(firstUTF8Scalar("\xF0\x9F\x99"), invalid(3));
    EXPECT_EQ(firstUTF8Scalar("\xF0\x9F\x99z"), invalid(3));
    EXPECT_EQ(firstUTF8Scalar("\xE2\x82"), invalid(2));
    EXPECT_EQ(firstUTF8Scalar("\xC3"), invalid(1));
}

TEST(UTF8, TakesWhatCanBeginNothingByteByByte)
{
    EXPECT_EQ(firstUTF8Scalar("\x80\x80"), invalid(1));
    EXPECT_EQ(firstUTF8Scalar("\xC0\x80"), invalid(1));         // overlong
    EXPECT_EQ(firstUTF8Scalar("\xE0\x9F\xBF"), invalid(1));     // overlong
    EXPECT_EQ(firstUTF8Scalar("\xED\xA0\x80"), invalid(1));     // a surrogate
    EXPECT_EQ(firstUTF8Scalar("\xF4\x90\x80\x80"), invalid(1)); // beyond the last
    EXPECT_EQ(firstUTF8Scalar("\xFF"), invalid(1));
}

TEST(UTF8, FindsTheLastScalarValueOfTextThatIsCut)
{
    EXPECT_EQ(lastUTF8Scalar("a\xE2\x82"), invalid(2));
    EXPECT_EQ(lastUTF8Scalar("a\x80"), invalid(1));
    EXPECT_EQ(lastUTF8Scalar("\x80\x80\x80\x80\x80"), invalid(1));
}

TEST(UTF8, WalksOverBrokenTextWithoutLosingItsWay)
{
    EXPECT_THAT(scalars("a\xF0\x9F\x99z\x80é"), ElementsAre('a', 0xFFFD, 'z', 0xFFFD, 0xE9));
}

TEST(UTF8, WalksOverNothing) { EXPECT_THAT(scalars(""), ElementsAre()); }

TEST(UTF8, KeepsNULsAndTheReplacementItself)
{
    const std::string text("a\0\uFFFD", 5);

    EXPECT_THAT(scalars(text), ElementsAre('a', 0, 0xFFFD));
    EXPECT_EQ(replacingInvalidUTF8(text), text);
}
