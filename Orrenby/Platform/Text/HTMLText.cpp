#include "Orrenby/Platform/Text/HTMLText.hpp"

#include "Orrenby/Platform/Coding/Base64.hpp"
#include "Orrenby/Platform/Coding/JSONTextBuffer.hpp"
#include "Orrenby/Platform/Drawing/Color.hpp"
#include "Orrenby/Platform/Drawing/Font.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Text/ShownAttributes.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using detail::isOn;

constexpr detail::StopBytes stops("&<>\"'");

void appendEscaped(std::string& html, char32_t scalar)
{
    switch (scalar) {
    case '&':
        html += "&amp;";
        return;
    case '<':
        html += "&lt;";
        return;
    case '>':
        html += "&gt;";
        return;
    case '"':
        html += "&quot;";
        return;
    case '\'':
        html += "&#39;";
        return;
    default:
        const bool isKept = !detail::isControl(scalar) || scalar == '\t' || scalar == '\n' || scalar == '\r';
        appendUTF8(html, isKept ? scalar : replacementScalar);
    }
}

/// LF and CR, VT, FF, U+0085, U+2028, U+2029.
bool isLineEnd(char32_t scalar) noexcept
{
    return (scalar >= '\n' && scalar <= '\r') || scalar == 0x85 || scalar == 0x2028 || scalar == 0x2029;
}

/// `name:17px;`, unless the number is none.
void appendLength(std::string& style, std::string_view name, double pixels)
{
    if (!std::isfinite(pixels))
        return;
    auto number = describe(pixels);
    if (number.ends_with(".0"))
        number.resize(number.size() - 2);
    style.append(name).append(":").append(number).append("px;");
}

/// A text between single quotes, in which nothing but letters, digits and blanks stands for itself.
std::string cssText(std::string_view text)
{
    std::string result = "'";
    forEachScalar(text, [&](char32_t scalar) {
        const bool isPlain = (scalar >= 'a' && scalar <= 'z') || (scalar >= 'A' && scalar <= 'Z')
            || (scalar >= '0' && scalar <= '9') || scalar == ' ' || scalar == '-' || scalar == '_';
        if (isPlain) {
            result += static_cast<char>(scalar);
            return;
        }
        result += '\\';
        for (int shift = 20; shift >= 0; shift -= 4)
            result += "0123456789abcdef"[(scalar >> static_cast<unsigned>(shift)) & 0xFU];
    });
    return result + "'";
}

void appendFont(std::string& style, const Font& font)
{
    const bool isSystem = font.name() == "System";
    if (!font.name().empty())
        style.append("font-family:").append(isSystem ? "system-ui" : cssText(font.name()));
    if (font.isMonospaced())
        style.append(font.name().empty() ? "font-family:monospace" : ",monospace");
    if (!font.name().empty() || font.isMonospaced())
        style += ';';
    if (font.size() > 0)
        appendLength(style, "font-size", font.size());
    if (font.isBold())
        style += "font-weight:bold;";
    if (font.isItalic())
        style += "font-style:italic;";
}

/// Holds nothing that would have to be escaped.
std::string styleOf(const TextAttributes& attributes)
{
    std::string style;
    if (const auto color = attributes.get(TextAttribute::foregroundColor))
        style.append("color:").append(color->description()).append(";");
    if (const auto color = attributes.get(TextAttribute::backgroundColor))
        style.append("background-color:").append(color->description()).append(";");
    if (const auto font = attributes.get(TextAttribute::font))
        appendFont(style, *font);
    const bool isUnderlined = isOn(attributes, TextAttribute::underline);
    const bool isStruck = isOn(attributes, TextAttribute::strikethrough);
    if (isUnderlined || isStruck)
        style.append("text-decoration:")
            .append(isUnderlined ? "underline" : "")
            .append(isUnderlined && isStruck ? " " : "")
            .append(isStruck ? "line-through" : "")
            .append(";");
    return style;
}

std::string imageElement(const NSTextAttachment& attachment, std::string_view name)
{
    const auto& image = attachment.image;
    if (image.mimeType().empty())
        return escapedHTML(name);
    std::string element = "<img src=\"data:";
    element.append(image.mimeType()).append(";base64,");
    detail::JSONTextBuffer digits;
    detail::appendBase64(image.data(), digits);
    element.append(digits.view()).append("\" alt=\"").append(escapedHTML(name)).append("\" style=\"");
    const auto bounds = attachment.shownBounds();
    appendLength(element, "width", bounds.size.width);
    appendLength(element, "height", bounds.size.height);
    if (bounds.origin.y != 0)
        appendLength(element, "vertical-align", bounds.origin.y);
    return element + "\">";
}

class Writer {
public:
    explicit Writer(const HTMLTextOptions& options)
        : m_options(options)
    {}

    void add(std::string_view text, const TextAttributes& attributes)
    {
        const auto link = detail::shownLink(attributes, m_options.linkSchemes);
        const auto style = styleOf(attributes);
        if (link)
            html.append("<a href=\"").append(escapedHTML(*link)).append("\">");
        if (!style.empty())
            html.append("<span style=\"").append(style).append("\">");
        addContent(text, attributes.get(TextAttribute::attachment));
        html.append(style.empty() ? "" : "</span>").append(link ? "</a>" : "");
    }

    std::string html;

private:
    void addContent(std::string_view text, const std::optional<NSTextAttachment>& attachment)
    {
        const auto image = attachment ? imageElement(*attachment, m_options.attachmentText) : std::string();
        const auto appendPlain = [&](std::string_view plain) {
            html += plain;
            m_last = 0;
        };
        detail::forEachPiece(text, stops, appendPlain, [&](char32_t scalar) {
            const bool isSecondHalf = m_last == '\r' && scalar == '\n'; // of one line end
            m_last = scalar;
            if (isSecondHalf)
                return;
            if (isLineEnd(scalar))
                html += "<br>";
            else if (attachment && scalar == NSTextAttachment::character)
                html += image;
            else
                appendEscaped(html, scalar);
        });
    }

    const HTMLTextOptions& m_options;
    char32_t m_last = 0;
};

} // namespace

std::string htmlText(const NSAttributedString& text, const HTMLTextOptions& options)
{
    Writer writer(options);
    for (const auto& run : text.runs())
        writer.add(run.in(text.string()), run.attributes);
    return std::move(writer.html);
}

std::string escapedHTML(std::string_view text)
{
    std::string html;
    html.reserve(text.size());
    const auto appendPlain = [&](std::string_view plain) { html += plain; };
    detail::forEachPiece(replacingInvalidUTF8(std::string(text)), stops, appendPlain,
        [&](char32_t scalar) { appendEscaped(html, scalar); });
    return html;
}

} // namespace orrenby
