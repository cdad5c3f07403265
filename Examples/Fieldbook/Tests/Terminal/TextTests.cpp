#include "Examples/Fieldbook/Terminal/Text.hpp"

#include <gtest/gtest.h>

namespace {

using namespace fieldbook;

TEST(Text, PrintableLeavesOrdinaryTextAlone)
{
    EXPECT_EQ(printable(""), "");
    EXPECT_EQ(printable("Tomé Øye 🦉"), "Tomé Øye 🦉");
}

TEST(Text, PrintableReplacesEachThingThatATerminalWouldObeyOrCannotShow)
{
    EXPECT_EQ(printable("a\x1B[2Jb\n\x7F"), "a?[2Jb??");
    EXPECT_EQ(printable("\xFF\xE2\x82"), "???");
    EXPECT_EQ(printable("\xE2\x80\xAE"), "?");
}

TEST(Text, TakeCharacterTakesOneByteOfWhatIsMalformed)
{
    std::string_view rest = "\xE2\x82x";

    EXPECT_EQ(takeCharacter(rest), std::nullopt);
    EXPECT_EQ(rest, "\x82x");
}

TEST(Text, TakeCharacterKnowsTheLimitsOfEachLength)
{
    for (const auto& [bytes, character] : {std::pair<std::string_view, char32_t>{"\x7F", 0x7F},
             {"\xC2\x80", 0x80}, {"\xDF\xBF", 0x7FF}, {"\xE0\xA0\x80", 0x800}, {"\xEF\xBF\xBF", 0xFFFF},
             {"\xF0\x90\x80\x80", 0x10000}, {"\xF4\x8F\xBF\xBF", 0x10FFFF}}) {
        auto rest = bytes;
        EXPECT_EQ(takeCharacter(rest), character);
        EXPECT_EQ(rest, "");
    }
}

TEST(Text, CountedKnowsOneFromMany)
{
    EXPECT_EQ(counted(0, "report"), "0 reports");
    EXPECT_EQ(counted(1, "report"), "1 report");
    EXPECT_EQ(counted(2, "report"), "2 reports");
}

TEST(Text, TrimmedTakesBlanksAndTabsOffBothEnds)
{
    EXPECT_EQ(trimmed("\t a b \t"), "a b");
    EXPECT_EQ(trimmed(" \t"), "");
    EXPECT_EQ(trimmed(""), "");
}

} // namespace
