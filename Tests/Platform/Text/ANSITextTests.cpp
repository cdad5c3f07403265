#include "Orrenby/Platform/Text/ANSIText.hpp"

#include "Orrenby/Platform/Drawing/Color.hpp"
#include "Orrenby/Platform/Drawing/Font.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

namespace {

const TextAttributes underlined{{TextAttribute::underline, true}};
const TextAttributes linked{{TextAttribute::link, "https://hut.example/a"_url}};

std::string ansi(
    std::string_view text, const TextAttributes& attributes = {}, const ANSITextOptions& options = {})
{
    return ansiText(NSAttributedString(text, attributes), options);
}

/// What switches the attributes on.
std::string parameters(const TextAttributes& attributes, ANSIColors colors = ANSIColors::Full)
{
    const auto result = ansi("x", attributes, {.colors = colors});
    const std::string_view closing = "mx\x1B[0m";
    if (!result.starts_with("\x1B[") || !result.ends_with(closing))
        return "no style: " + result;
    return result.substr(2, result.size() - 2 - closing.size());
}

std::string coloured(std::uint32_t color, ANSIColors colors)
{
    return parameters({{TextAttribute::foregroundColor, Color::rgb(color)}}, colors);
}

} // namespace

TEST(ANSIText, WritesStyles)
{
    //! [Writing for a terminal]
    NSMutableAttributedString text;
    text.append("Adders: ", {{TextAttribute::font, Font::boldSystem(13)}});
    text.append("how to treat them", {{TextAttribute::underline, true}});

    EXPECT_EQ(ansiText(text.attributedString()), "\x1B[1mAdders: \x1B[0m\x1B[4mhow to treat them\x1B[0m");
    EXPECT_EQ(ansiText(text.attributedString(), {.isStyled = false}), "Adders: how to treat them");
    //! [Writing for a terminal]
}

TEST(ANSIText, IsEmptyForTheEmptyText) { EXPECT_EQ(ansiText({}), ""); }

TEST(ANSIText, LeavesPlainTextAsItIs) { EXPECT_EQ(ansi("a\té 中 😀\nb"), "a\té 中 😀\nb"); }

TEST(ANSIText, SwitchesSeveralStylesAtOnce)
{
    EXPECT_EQ(parameters({{TextAttribute::font, Font({.isBold = true, .isItalic = true})},
                  {TextAttribute::underline, true}, {TextAttribute::strikethrough, true},
                  {TextAttribute::foregroundColor, Color::rgb(0x010203)},
                  {TextAttribute::backgroundColor, Color::white()}}),
        "1;3;4;9;38;2;1;2;3;48;2;255;255;255");
}

TEST(ANSIText, DoesNotSwitchWhatIsOff)
{
    EXPECT_EQ(ansi("x", {{TextAttribute::underline, false}, {TextAttribute::font, Font::system(40)}}), "x");
}

TEST(ANSIText, FindsTheNearestColourThatThereIs)
{
    EXPECT_EQ(coloured(0xC00000, ANSIColors::Basic), "31");
    EXPECT_EQ(coloured(0xFF1111, ANSIColors::Basic), "91");
    EXPECT_EQ(coloured(0x000000, ANSIColors::Basic), "30");
    EXPECT_EQ(coloured(0xFFFFFF, ANSIColors::Basic), "97");
    EXPECT_EQ(coloured(0xFF0000, ANSIColors::Palette), "38;5;196");
    EXPECT_EQ(coloured(0x767676, ANSIColors::Palette), "38;5;243");
    EXPECT_EQ(coloured(0x000000, ANSIColors::Palette), "38;5;16");
    EXPECT_EQ(coloured(0x5F87AF, ANSIColors::Palette), "38;5;67");
    EXPECT_EQ(coloured(0x123456, ANSIColors::Full), "38;2;18;52;86");
}

TEST(ANSIText, ColoursWhatIsBehindTheLetters)
{
    const TextAttributes red{{TextAttribute::backgroundColor, Color::rgb(0xFF0000)}};

    EXPECT_EQ(parameters(red, ANSIColors::Basic), "101");
    EXPECT_EQ(parameters(red, ANSIColors::Palette), "48;5;196");
    EXPECT_EQ(parameters(red, ANSIColors::Full), "48;2;255;0;0");
}

TEST(ANSIText, CanDoWithoutColours)
{
    const TextAttributes red{{TextAttribute::foregroundColor, Color::rgb(0xFF0000)}};

    EXPECT_EQ(ansi("x", red, {.colors = ANSIColors::None}), "x");
    EXPECT_EQ(parameters(red.merging(underlined), ANSIColors::None), "4");
}

TEST(ANSIText, DoesNotLetTheTextSteerTheTerminal)
{
    EXPECT_EQ(ansi("\x1B[2J\x07"), "\\u{001B}[2J\\u{0007}");
    EXPECT_EQ(ansi(std::string_view("a\0\x7F\u009B", 5)), "a\\u{0000}\\u{007F}\\u{009B}");
    EXPECT_EQ(ansi("\v\f\u0085\u2028\u2029"), "\\u{000B}\\u{000C}\\u{0085}\\u{2028}\\u{2029}");
    EXPECT_EQ(ansi("\u202Eabc\u2069\u200F\u061C"), "\\u{202E}abc\\u{2069}\\u{200F}\\u{061C}");
    EXPECT_EQ(ansi("\x1B[0m", underlined), "\x1B[4m\\u{001B}[0m\x1B[0m");
}

TEST(ANSIText, EndsStylesBeforeEachLineEnd)
{
    EXPECT_EQ(ansi("a\n\nb\n", underlined), "\x1B[4ma\x1B[0m\n\n\x1B[4mb\x1B[0m\n");
    EXPECT_EQ(ansi("\n", underlined), "\n");
}

TEST(ANSIText, TakesACarriageReturnOnlyInFrontOfALineFeed)
{
    EXPECT_EQ(ansi("a\r\nb"), "a\nb");
    EXPECT_EQ(ansi("a\rb\r"), "a\\u{000D}b\\u{000D}");

    NSMutableAttributedString text;
    text.append("a\r", underlined);
    text.append("\nb");
    EXPECT_EQ(ansiText(text.attributedString()), "\x1B[4ma\x1B[0m\nb");
}

TEST(ANSIText, NamesAttachments)
{
    const TextAttributes attached{{TextAttribute::attachment, NSTextAttachment{}}};

    EXPECT_EQ(ansiText(NSAttributedString(NSTextAttachment{})), "[image]");
    EXPECT_EQ(ansi("a\uFFFC\uFFFC", attached, {.attachmentText = "\x1B*"}), "a\\u{001B}*\\u{001B}*");
    EXPECT_EQ(ansi("\uFFFC"), "\uFFFC");
}

TEST(ANSIText, LinksWhereTheTerminalKnowsLinks)
{
    EXPECT_EQ(ansi("x", linked), "x");
    EXPECT_EQ(ansi("x", linked, {.hasLinks = true}), "\x1B]8;;https://hut.example/a\x1B\\x\x1B]8;;\x1B\\");
    EXPECT_EQ(ansi("x", linked, {.isStyled = false, .hasLinks = true}), "x");
    EXPECT_EQ(ansi("x\ny", linked.merging(underlined), {.hasLinks = true}),
        "\x1B]8;;https://hut.example/a\x1B\\\x1B[4mx\x1B[0m\x1B]8;;\x1B\\\n"
        "\x1B]8;;https://hut.example/a\x1B\\\x1B[4my\x1B[0m\x1B]8;;\x1B\\");
}

TEST(ANSIText, DoesNotLinkToOtherSchemes)
{
    for (const auto* url : {"javascript:alert(1)", "file:///etc/passwd", "ssh://a.example", "a/b"})
        EXPECT_EQ(ansi("x", {{TextAttribute::link, URL::make(url).value()}}, {.hasLinks = true}), "x") << url;
    EXPECT_EQ(ansi("x", {{TextAttribute::link, "SSH://a"_url}}, {.hasLinks = true, .linkSchemes = {"ssh"}}),
        "\x1B]8;;SSH://a\x1B\\x\x1B]8;;\x1B\\");
}
