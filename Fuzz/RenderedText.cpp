// Texts with attributes, made of arbitrary bytes, as HTML and for terminals: whatever the text holds, a
// reader that knows only the few forms that may occur finds the text again, no markup in it, every element
// closed, no address but of the schemes that are allowed, no escape sequence but those of styles and links,
// and no style that reaches beyond a line.

#include "Fuzz/Support/FuzzedBytes.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Platform/Drawing/Color.hpp"
#include "Orrenby/Platform/Drawing/Font.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Text/ANSIText.hpp"
#include "Orrenby/Platform/Text/HTMLText.hpp"
#include "Orrenby/Platform/Text/NSMutableAttributedString.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"
#include <array>
#include <optional>
#include <vector>

using namespace orrenby;

namespace {

/// A PNG file of 2 by 1 pixels, with bytes of the input behind it.
Image image(const std::string& rest)
{
    std::string file("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\2\0\0\0\1\x8\6\0\0\0....", 33);
    return Image::make(dataFromText(file + rest)).value();
}

TextAttributes fuzzedAttributes(FuzzedBytes& bytes)
{
    TextAttributes attributes;
    const auto kinds = static_cast<unsigned>(bytes.number());
    const auto color = [&] { return Color::rgb(static_cast<std::uint32_t>(bytes.number()) * 0x010305U); };
    if ((kinds & 1U) != 0)
        attributes.set(TextAttribute::foregroundColor, color());
    if ((kinds & 2U) != 0)
        attributes.set(TextAttribute::backgroundColor, color().withAlpha(7));
    if ((kinds & 4U) != 0)
        attributes.set(TextAttribute::font,
            Font({.name = bytes.text(),
                .size = std::bit_cast<double>(bytes.word()),
                .isBold = bytes.number() % 2 == 0,
                .isItalic = bytes.number() % 2 == 0,
                .isMonospaced = bytes.number() % 2 == 0}));
    if (const auto url = URL::make((kinds & 8U) != 0 ? bytes.text() : "\n"))
        attributes.set(TextAttribute::link, *url);
    if ((kinds & 16U) != 0)
        attributes.set(TextAttribute::underline, bytes.number() % 2 == 0);
    if ((kinds & 32U) != 0)
        attributes.set(TextAttribute::strikethrough, true);
    if ((kinds & 64U) != 0)
        attributes.set(TextAttribute::attachment,
            {.image = bytes.number() % 2 == 0 ? Image({3, 4}) : image(bytes.text()),
                .bounds = {
                    {0, std::bit_cast<double>(bytes.word())}, {std::bit_cast<double>(bytes.word()), 1}}});
    return attributes;
}

NSAttributedString fuzzedText(FuzzedBytes& bytes)
{
    NSMutableAttributedString text;
    while (!bytes.isEmpty()) {
        const auto attributes = fuzzedAttributes(bytes);
        text.append(bytes.text(), attributes);
        if (bytes.number() % 4 == 0)
            text.append("\uFFFC", attributes);
    }
    return text.attributedString();
}

bool takeFront(std::string_view& text, std::string_view front)
{
    if (!text.starts_with(front))
        return false;
    text.remove_prefix(front.size());
    return true;
}

bool isControl(char32_t scalar) { return scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0); }

bool isAllowedAddress(std::string_view address)
{
    std::string scheme;
    for (const char letter : address.substr(0, address.find(':')))
        scheme += letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    return scheme == "http" || scheme == "https" || scheme == "mailto" || scheme == "tel";
}

/// The value up to the quote.
std::string_view takeValue(std::string_view& html)
{
    const auto value = html.substr(0, html.find('"'));
    html.remove_prefix(value.size());
    requireThat(takeFront(html, "\"") && value.find_first_of("<>'") == value.npos);
    return value;
}

void requireStyle(std::string_view& html)
{
    const auto style = html.substr(0, html.find('"'));
    html.remove_prefix(style.size());
    requireThat(takeFront(html, "\"") && !style.empty());
    bool isQuoted = false;
    for (const char letter : style) {
        const bool isPlain = (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z')
            || (letter >= '0' && letter <= '9') || letter == ' ' || letter == '-' || letter == '_';
        isQuoted ^= letter == '\'';
        requireThat(isPlain || letter == '\''
            || (isQuoted ? letter == '\\'
                         : std::string_view(":;,#.+").find(letter) != std::string_view::npos));
    }
    requireThat(!isQuoted && style.back() == ';');
}

/// One reference, or one character that needs none.
void takeCharacter(std::string_view& html, std::string& text)
{
    constexpr std::array<std::pair<std::string_view, char>, 5> references{
        {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&#39;", '\''}}};
    for (const auto& [reference, character] : references)
        if (takeFront(html, reference)) {
            text += character;
            return;
        }
    const auto scalar = firstUTF8Scalar(html);
    requireThat(
        scalar.isValid && std::u32string_view(U"&<>\"'").find(scalar.value) == std::u32string_view::npos);
    requireThat(!isControl(scalar.value) || scalar.value == '\t');
    text += html.substr(0, scalar.length);
    html.remove_prefix(scalar.length);
}

/// The text of the HTML, a line feed for each break and U+FFFC for each image.
std::string readHTML(std::string_view html)
{
    std::string text;
    std::vector<std::string_view> open;
    while (!html.empty()) {
        if (takeFront(html, "<br>"))
            text += '\n';
        else if (takeFront(html, "<a href=\"")) {
            requireThat(isAllowedAddress(takeValue(html)) && takeFront(html, ">"));
            open.push_back("</a>");
        } else if (takeFront(html, "<span style=\"")) {
            requireStyle(html);
            requireThat(takeFront(html, ">"));
            open.push_back("</span>");
        } else if (takeFront(html, "<img src=\"data:image/png;base64,")) {
            requireThat(
                !takeValue(html).empty() && takeFront(html, " alt=\"") && takeValue(html) == "&lt;&amp;");
            requireThat(takeFront(html, " style=\""));
            requireStyle(html);
            requireThat(takeFront(html, ">"));
            text += "\uFFFC";
        } else if (!open.empty() && takeFront(html, open.back()))
            open.pop_back();
        else
            takeCharacter(html, text);
    }
    requireThat(open.empty());
    return text;
}

/// Calls with each scalar of the text and whether an attachment stands there.
template <class F> void forEach(const NSAttributedString& text, const F& perform)
{
    for (const auto& run : text.runs()) {
        const auto attachment = run.attributes.get(TextAttribute::attachment);
        forEachScalar(run.in(text.string()), [&](char32_t scalar) {
            perform(scalar, attachment && scalar == 0xFFFC ? &*attachment : nullptr);
        });
    }
}

std::string textInHTML(const NSAttributedString& text)
{
    std::string result;
    char32_t last = 0;
    forEach(text, [&](char32_t scalar, const NSTextAttachment* attachment) {
        const bool isSecond = last == '\r' && scalar == '\n';
        last = scalar;
        if (isSecond)
            return;
        if (attachment != nullptr)
            result += attachment->image.mimeType().empty() ? "<&" : "\uFFFC";
        else if (std::u32string_view(U"\n\v\f\r\u0085\u2028\u2029").find(scalar) != std::u32string_view::npos)
            result += '\n';
        else
            appendUTF8(result, isControl(scalar) && scalar != '\t' ? 0xFFFD : scalar);
    });
    return result;
}

bool steers(char32_t scalar)
{
    return (isControl(scalar) && scalar != '\t' && scalar != '\n')
        || std::u32string_view(
               U"\u061C\u200E\u200F\u2028\u2029\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069")
               .find(scalar)
        != std::u32string_view::npos;
}

/// What is left without the sequences that switch styles and links. None is on at a line end and at the end.
std::string readANSI(std::string_view shown, bool isStyled)
{
    std::string text;
    bool isStyleOn = false;
    bool isLinkOn = false;
    while (!shown.empty()) {
        if (takeFront(shown, "\x1B[")) {
            const auto parameters = shown.substr(0, shown.find_first_not_of("0123456789;"));
            shown.remove_prefix(parameters.size());
            requireThat(takeFront(shown, "m") && !parameters.empty() && isStyled);
            requireThat(isStyleOn == (parameters == "0"));
            isStyleOn = parameters != "0";
        } else if (takeFront(shown, "\x1B]8;;")) {
            const auto address = shown.substr(0, shown.find('\x1B'));
            shown.remove_prefix(address.size());
            requireThat(takeFront(shown, "\x1B\\") && isStyled && isLinkOn == address.empty());
            requireThat(address.empty() || isAllowedAddress(address));
            for (const char character : address)
                requireThat(character > 0x20 && character < 0x7F);
            isLinkOn = !address.empty();
        } else {
            const auto scalar = firstUTF8Scalar(shown);
            requireThat(scalar.isValid && !steers(scalar.value));
            requireThat(scalar.value != '\n' || (!isStyleOn && !isLinkOn));
            text += shown.substr(0, scalar.length);
            shown.remove_prefix(scalar.length);
        }
    }
    requireThat(!isStyleOn && !isLinkOn);
    return text;
}

std::string textOnTerminal(const NSAttributedString& text)
{
    std::string result;
    const auto append = [&](char32_t scalar) {
        if (!steers(scalar)) {
            appendUTF8(result, scalar);
            return;
        }
        std::array<char, 16> escape{};
        std::snprintf(escape.data(), escape.size(), "\\u{%04X}", static_cast<unsigned>(scalar));
        result += escape.data();
    };
    char32_t held = 0; // a carriage return that may belong to a line feed
    forEach(text, [&](char32_t scalar, const NSTextAttachment* attachment) {
        if (held != 0 && scalar != '\n')
            append(held);
        held = scalar == '\r' ? scalar : 0;
        if (attachment != nullptr)
            result += "<\\u{001B}>";
        else if (held == 0)
            append(scalar);
    });
    if (held != 0)
        append(held);
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzedBytes bytes(data, size);
    const auto colors = static_cast<ANSIColors>(bytes.number() % 4);
    const auto text = fuzzedText(bytes);

    requireThat(readHTML(htmlText(text, {.attachmentText = "<&"})) == textInHTML(text));
    for (const bool isStyled : {true, false}) {
        const auto shown = ansiText(
            text, {.isStyled = isStyled, .colors = colors, .hasLinks = true, .attachmentText = "<\x1B>"});
        requireThat(readANSI(shown, isStyled) == textOnTerminal(text));
    }
    return 0;
}
