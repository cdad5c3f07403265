#include "Orrenby/Platform/Text/HTMLText.hpp"

#include "Orrenby/Platform/Drawing/Color.hpp"
#include "Orrenby/Platform/Drawing/Font.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <string>

using namespace orrenby;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string html(
    std::string_view text, const TextAttributes& attributes = {}, const HTMLTextOptions& options = {})
{
    return htmlText(NSAttributedString(text, attributes), options);
}

std::string linked(std::string_view url)
{
    return html("x", {{TextAttribute::link, URL::make(url).value()}});
}

std::string styled(const TextAttributes& attributes)
{
    const auto result = html("x", attributes);
    const std::string_view opening = "<span style=\"";
    const std::string_view closing = "\">x</span>";
    if (!result.starts_with(opening) || !result.ends_with(closing))
        return "not in one span: " + result;
    return result.substr(opening.size(), result.size() - opening.size() - closing.size());
}

std::string inFont(const FontOptions& font) { return styled({{TextAttribute::font, Font(font)}}); }

/// The front of a PNG file of 2 by 1 pixels.
Image dot()
{
    return Image::make(
        dataFromText(std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\2\0\0\0\1\x8\6\0\0\0....", 33)))
        .value();
}

constexpr std::string_view dotAddress = "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAIAAAABCAYAAAAuLi4u";

} // namespace

TEST(HTMLText, WritesLinksAndStyles)
{
    //! [Writing HTML]
    NSMutableAttributedString text;
    text.append("Adders & ");
    text.append("how to treat them", {{TextAttribute::link, "https://hut.example/?a=1&b=2"_url}});
    text.append("!", {{TextAttribute::foregroundColor, Color::rgb(0xCC0000)}});

    EXPECT_EQ(htmlText(text.attributedString()),
        "Adders &amp; <a href=\"https://hut.example/?a=1&amp;b=2\">how to treat them</a>"
        "<span style=\"color:#cc0000;\">!</span>");
    //! [Writing HTML]
}

TEST(HTMLText, IsEmptyForTheEmptyText) { EXPECT_EQ(htmlText({}), ""); }

TEST(HTMLText, EscapesWhatWouldBeMarkup)
{
    EXPECT_EQ(html("<b title=\"a\" id='c'>&amp;</b>"),
        "&lt;b title=&quot;a&quot; id=&#39;c&#39;&gt;&amp;amp;&lt;/b&gt;");
}

TEST(HTMLText, KeepsTextOfEveryScript) { EXPECT_EQ(html("é 中 😀\t\u200F"), "é 中 😀\t\u200F"); }

TEST(HTMLText, ReplacesControlCharacters)
{
    EXPECT_EQ(html(std::string_view("a\0b\x1B\x7F\u0080", 7)), "a\uFFFDb\uFFFD\uFFFD\uFFFD");
}

TEST(HTMLText, BreaksLinesAtEveryKindOfLineEnd)
{
    EXPECT_EQ(html("a\nb\rc\r\nd\n\re"), "a<br>b<br>c<br>d<br><br>e");
    EXPECT_EQ(html("a\vb\fc\u0085d\u2028e\u2029"), "a<br>b<br>c<br>d<br>e<br>");
}

TEST(HTMLText, BreaksALineOnceWhereAStretchEndsInside)
{
    NSMutableAttributedString text;
    text.append("a\r");
    text.append("\nb", {{TextAttribute::underline, true}});

    EXPECT_EQ(htmlText(text.attributedString()), "a<br><span style=\"text-decoration:underline;\">b</span>");
}

TEST(HTMLText, LinksToSchemesThatRunNothing)
{
    EXPECT_EQ(linked("https://a.example/"), "<a href=\"https://a.example/\">x</a>");
    EXPECT_EQ(linked("HTTP://a.example/"), "<a href=\"HTTP://a.example/\">x</a>");
    EXPECT_EQ(linked("mailto:a@b.co"), "<a href=\"mailto:a@b.co\">x</a>");
    EXPECT_EQ(linked("tel:+441614960123"), "<a href=\"tel:+441614960123\">x</a>");
}

TEST(HTMLText, DoesNotLinkToAnythingElse)
{
    for (const auto* url : {"javascript:alert(1)", "JavaScript:alert(1)", "data:text/html,x", "vbscript:x",
             "file:///etc", "ftp://a.example", "a/b", "//a.example/b", "?q", "", "https.evil:x", "http"})
        EXPECT_EQ(linked(url), "x") << url;
}

TEST(HTMLText, LinksToTheSchemesThatItIsTold)
{
    const TextAttributes link{{TextAttribute::link, "ftp://a.example"_url}};
    const TextAttributes other{{TextAttribute::link, "https://a.example"_url}};

    EXPECT_EQ(html("x", link, {.linkSchemes = {"FTP"}}), "<a href=\"ftp://a.example\">x</a>");
    EXPECT_EQ(html("x", other, {.linkSchemes = {"ftp"}}), "x");
    EXPECT_EQ(html("x", other, {.linkSchemes = {}}), "x");
}

TEST(HTMLText, EscapesAddresses)
{
    EXPECT_EQ(linked("https://a.example/'&(b)"), "<a href=\"https://a.example/&#39;&amp;(b)\">x</a>");
}

TEST(HTMLText, StylesColours)
{
    EXPECT_EQ(styled({{TextAttribute::foregroundColor, Color::black().withAlpha(128)}}), "color:#00000080;");
    EXPECT_EQ(styled({{TextAttribute::backgroundColor, Color::white()}}), "background-color:#ffffff;");
}

TEST(HTMLText, StylesLines)
{
    EXPECT_EQ(styled({{TextAttribute::underline, true}}), "text-decoration:underline;");
    EXPECT_EQ(styled({{TextAttribute::strikethrough, true}}), "text-decoration:line-through;");
    EXPECT_EQ(styled({{TextAttribute::strikethrough, true}, {TextAttribute::underline, true}}),
        "text-decoration:underline line-through;");
    EXPECT_EQ(html("x", {{TextAttribute::underline, false}}), "x");
}

TEST(HTMLText, StylesFonts)
{
    EXPECT_EQ(inFont({}), "font-family:system-ui;font-size:17px;");
    EXPECT_EQ(
        inFont({.name = "Fira Code", .size = 12.5, .isBold = true, .isItalic = true, .isMonospaced = true}),
        "font-family:'Fira Code',monospace;font-size:12.5px;font-weight:bold;font-style:italic;");
    EXPECT_EQ(inFont({.name = "", .isMonospaced = true}), "font-family:monospace;font-size:17px;");
    EXPECT_EQ(inFont({.name = "", .size = 0, .isBold = true}), "font-weight:bold;");
}

TEST(HTMLText, EscapesFontNames)
{
    EXPECT_EQ(inFont({.name = "a';x:y(\"</é", .size = 1}),
        "font-family:'a\\000027\\00003bx\\00003ay\\000028\\000022\\00003c\\00002f\\0000e9';font-size:1px;");
}

TEST(HTMLText, LeavesOutSizesThatAreNone)
{
    for (const double size : {0.0, -1.0, infinity, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(inFont({.size = size}), "font-family:system-ui;");
}

TEST(HTMLText, LeavesOutAttributesThatItDoesNotKnow)
{
    EXPECT_EQ(html("x", {{TextAttributeKey<Any>("own"), "<b>"}}), "x");
    EXPECT_EQ(html("x", {{TextAttributeKey<std::string>("link"), "https://a.example"}}), "x")
        << "of another type under a known name";
}

TEST(HTMLText, PutsImagesIntoTheText)
{
    const NSAttributedString text(NSTextAttachment{.image = dot(), .bounds = {{0, -6}, {24, 12.5}}});

    EXPECT_EQ(htmlText(text, {.attachmentText = "a \"dot\""}),
        "<img src=\"" + std::string(dotAddress)
            + "\" alt=\"a &quot;dot&quot;\" style=\"width:24px;height:12.5px;vertical-align:-6px;\">");
}

TEST(HTMLText, ShowsImagesInTheirOwnSizeWithoutBounds)
{
    EXPECT_EQ(htmlText(NSAttributedString(NSTextAttachment{.image = dot()})),
        "<img src=\"" + std::string(dotAddress) + "\" alt=\"[image]\" style=\"width:2px;height:1px;\">");
}

TEST(HTMLText, LeavesOutBoundsThatAreNotFinite)
{
    const NSTextAttachment attachment{.image = dot(), .bounds = {{infinity, infinity}, {infinity, 3}}};

    EXPECT_EQ(htmlText(NSAttributedString(attachment)),
        "<img src=\"" + std::string(dotAddress) + "\" alt=\"[image]\" style=\"height:3px;\">");
}

TEST(HTMLText, NamesImagesThatNobodyCanShow)
{
    const NSAttributedString text(NSTextAttachment{.image = Image({2, 2}, dataFromText("<svg/>"))});

    EXPECT_EQ(htmlText(text), "[image]");
    EXPECT_EQ(htmlText(text, {.attachmentText = "<i>"}), "&lt;i&gt;");
}

TEST(HTMLText, ShowsAnAttachmentForEachOfItsCharactersOnly)
{
    const TextAttributes attached{{TextAttribute::attachment, NSTextAttachment{}}};

    EXPECT_EQ(html("a\uFFFC\uFFFCb", attached), "a[image][image]b");
    EXPECT_EQ(html("a\uFFFCb"), "a\uFFFCb");
}

TEST(HTMLText, EscapesTextsAlone)
{
    EXPECT_EQ(escapedHTML(""), "");
    EXPECT_EQ(escapedHTML("<&>\"'"), "&lt;&amp;&gt;&quot;&#39;");
    EXPECT_EQ(escapedHTML("a\r\n\t\x01\xFF"), "a\r\n\t\uFFFD\uFFFD");
}
