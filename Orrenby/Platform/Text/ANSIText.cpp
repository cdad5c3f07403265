#include "Orrenby/Platform/Text/ANSIText.hpp"

#include "Orrenby/Platform/Drawing/Font.hpp"
#include "Orrenby/Platform/Text/ANSIPalette.hpp"
#include "Orrenby/Platform/Text/ShownAttributes.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"
#include <optional>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using detail::isOn;

constexpr detail::StopBytes stops("\xD8"); // of U+061C

/// Whether a terminal would obey the character, or show what follows it in another place.
bool isHarmful(char32_t scalar) noexcept
{
    const bool turnsWriting = scalar == 0x061C || scalar == 0x200E || scalar == 0x200F
        || (scalar >= 0x202A && scalar <= 0x202E) || (scalar >= 0x2066 && scalar <= 0x2069);
    return detail::isControl(scalar) || scalar == 0x2028 || scalar == 0x2029 || turnsWriting;
}

void appendVisible(std::string& result, char32_t scalar)
{
    if (!isHarmful(scalar) || scalar == '\t') {
        appendUTF8(result, scalar);
        return;
    }
    result += "\\u{";
    for (const unsigned shift : {12U, 8U, 4U, 0U}) // nothing that is harmful lies above U+FFFF
        result += "0123456789ABCDEF"[(scalar >> shift) & 0xFU];
    result += '}';
}

std::string visible(std::string_view text)
{
    std::string result;
    forEachScalar(text, [&](char32_t scalar) { appendVisible(result, scalar); });
    return result;
}

/// `1;4;31`
std::string parametersOf(const TextAttributes& attributes, ANSIColors colors)
{
    std::string result;
    const auto add = [&](bool isWanted, std::string_view parameter) {
        if (isWanted && !parameter.empty())
            result.append(result.empty() ? "" : ";").append(parameter);
    };
    const auto font = attributes.get(TextAttribute::font);
    add(font && font->isBold(), "1");
    add(font && font->isItalic(), "3");
    add(isOn(attributes, TextAttribute::underline), "4");
    add(isOn(attributes, TextAttribute::strikethrough), "9");
    if (const auto color = attributes.get(TextAttribute::foregroundColor))
        add(true, detail::ansiColor(*color, colors, false));
    if (const auto color = attributes.get(TextAttribute::backgroundColor))
        add(true, detail::ansiColor(*color, colors, true));
    return result;
}

/// What stands in front of each piece of a line and behind it.
struct Frame {
    std::string opening;
    std::string closing;
};

Frame frameOf(const TextAttributes& attributes, const ANSITextOptions& options)
{
    Frame frame;
    if (!options.isStyled)
        return frame;
    if (const auto parameters = parametersOf(attributes, options.colors); !parameters.empty()) {
        frame.opening = "\x1B[" + parameters + "m";
        frame.closing = "\x1B[0m";
    }
    // An address consists of visible characters only.
    if (const auto link = detail::shownLink(attributes, options.linkSchemes); link && options.hasLinks) {
        frame.opening = "\x1B]8;;" + *link + "\x1B\\" + frame.opening;
        frame.closing += "\x1B]8;;\x1B\\";
    }
    return frame;
}

} // namespace

std::string ansiText(const NSAttributedString& text, const ANSITextOptions& options)
{
    std::string result;
    const auto attachment = visible(options.attachmentText);
    for (const auto& run : text.runs()) {
        const auto frame = frameOf(run.attributes, options);
        const bool isAttached = run.attributes.get(TextAttribute::attachment).has_value();
        std::string piece;
        const auto endPiece = [&] {
            if (!piece.empty())
                result.append(frame.opening).append(piece).append(frame.closing);
            piece.clear();
        };
        auto behind = std::string_view(text.string()).substr(run.byteOffset);
        const auto appendPlain = [&](std::string_view plain) {
            piece += plain;
            behind.remove_prefix(plain.size());
        };
        detail::forEachPiece(run.in(text.string()), stops, appendPlain, [&](char32_t scalar) {
            behind.remove_prefix(utf8Length(scalar));
            if (scalar == '\r' && behind.starts_with('\n'))
                return;
            if (scalar == '\n') {
                endPiece();
                result += '\n';
            } else if (isAttached && scalar == NSTextAttachment::character)
                piece += attachment;
            else
                appendVisible(piece, scalar);
        });
        endPiece();
    }
    return result;
}

} // namespace orrenby
