#include "Examples/Fieldbook/Terminal/MarkedText.hpp"

#include "Orrenby/Platform/Drawing/Font.hpp"
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;

const Terminal coloured(-1, true);
const Terminal colourless(-1, false);
const orrenby::TextAttributes emphasised{{orrenby::TextAttribute::font, orrenby::Font::boldSystem(13)}};

std::string underlined(const std::string& text) { return "\x1B[4m" + text + "\x1B[0m"; }
std::string bold(const std::string& text) { return "\x1B[1m" + text + "\x1B[0m"; }

TEST(MarkedText, UnderlinesLinksAndMailAddresses)
{
    EXPECT_EQ(marked(coloured, "See https://hut.example/map, or ask ines@hut.example."),
        "See " + underlined("https://hut.example/map") + ", or ask " + underlined("ines@hut.example") + ".");
}

TEST(MarkedText, UnderlinesTelephoneNumbers)
{
    EXPECT_EQ(
        marked(coloured, "Call (555) 010-9999 first."), "Call " + underlined("(555) 010-9999") + " first.");
}

TEST(MarkedText, UnderlinesPostalAddresses)
{
    EXPECT_EQ(marked(coloured, "The key is at 12 Mill Road, Springfield, IL 62704."),
        "The key is at " + underlined("12 Mill Road, Springfield, IL 62704") + ".");
}

TEST(MarkedText, KeepsTheAttributesAroundWhatIsUnderlined)
{
    EXPECT_EQ(marked(coloured, "Ask ines@hut.example now", emphasised),
        bold("Ask ") + underlined("ines@hut.example") + bold(" now"));
}

TEST(MarkedText, EndsItsStylesWithTheLine)
{
    EXPECT_EQ(marked(coloured, "One\n\ntwo\n", emphasised), bold("One") + "\n\n" + bold("two") + "\n");
    EXPECT_EQ(marked(coloured, "At\n12 Mill Road\nSpringfield, IL 62704\n"),
        "At\n" + underlined("12 Mill Road") + "\n" + underlined("Springfield, IL 62704") + "\n");
}

TEST(MarkedText, IsTheTextItselfWhereThereIsNothingToUnderline)
{
    EXPECT_EQ(marked(coloured, "A nest behind the map: 214 stems, 6 am."),
        "A nest behind the map: 214 stems, 6 am.");
    EXPECT_EQ(marked(coloured, ""), "");
}

TEST(MarkedText, DoesNotLetATextSteerTheTerminal)
{
    EXPECT_EQ(marked(coloured, "a\x1B[2J"), "a\\u{001B}[2J");
    EXPECT_EQ(marked(colourless, "a\x1B[2J"), "a\\u{001B}[2J");
}

TEST(MarkedText, IsTheTextItselfWhereStylesAreUnwelcome)
{
    const auto* const text = "Ask ines@hut.example\nor call (555) 010-9999";

    EXPECT_EQ(marked(colourless, text, emphasised), text);
}

} // namespace
