#include "Orrenby/Utilities/Log/LineText.hpp"

#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <unistd.h>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::string_view replacement = "\uFFFD";

/// The bytes of one character of a text, or of one ill-formed sequence.
struct Piece {
    std::string_view bytes;
    std::uint32_t scalar = 0;
    bool isValid = false;
};

std::uint32_t byteAt(std::string_view text, std::size_t index)
{
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0;
}

/// @param text  Not empty. An ill-formed sequence is as long as it could still have become a character.
Piece firstPiece(std::string_view text)
{
    const auto lead = byteAt(text, 0);
    if (lead < 0x80)
        return {text.substr(0, 1), lead, true};
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF ? 2
        : lead >= 0xE0 && lead <= 0xEF                      ? 3
        : lead >= 0xF0 && lead <= 0xF4                      ? 4
                                                            : 1;
    if (length == 1)
        return {text.substr(0, 1)};

    // The second byte decides against overlong forms, surrogates and what lies beyond U+10FFFF.
    const std::uint32_t lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const std::uint32_t highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    auto scalar = lead & (0x7FU >> length);
    for (std::size_t index = 1; index < length; ++index) {
        const auto byte = byteAt(text, index);
        if (byte < (index == 1 ? lowest : 0x80) || byte > (index == 1 ? highest : 0xBF))
            return {text.substr(0, index)};
        scalar = (scalar << 6) | (byte & 0x3F);
    }
    return {text.substr(0, length), scalar, true};
}

/// Control characters, and what some readers take for the end of a line.
bool isControl(std::uint32_t scalar)
{
    return scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0) || scalar == 0x2028 || scalar == 0x2029;
}

/// Marks that make what follows look like something else.
bool isDirectionMark(std::uint32_t scalar)
{
    return scalar == 0x061C || scalar == 0x200E || scalar == 0x200F || (scalar >= 0x202A && scalar <= 0x202E)
        || (scalar >= 0x2066 && scalar <= 0x2069);
}

/// The letter after the backslash; NUL where there is none.
char shortEscape(std::uint32_t scalar)
{
    switch (scalar) {
    case '\n':
        return 'n';
    case '\r':
        return 'r';
    case '\t':
        return 't';
    default:
        return '\0';
    }
}

/// Four digits: nothing that is escaped lies above U+FFFF.
void appendHexadecimal(std::string& line, std::uint32_t scalar)
{
    for (const int shift : {12, 8, 4, 0})
        line += "0123456789ABCDEF"[(scalar >> shift) & 0xF];
}

/// Three digits.
void appendMilliseconds(std::string& text, int milliseconds)
{
    text += '.';
    for (const int unit : {100, 10, 1})
        text += static_cast<char>('0' + milliseconds / unit % 10);
}

template <class Append> void appendPieces(std::string& line, std::string_view text, const Append& append)
{
    while (!text.empty()) {
        const auto piece = firstPiece(text);
        text.remove_prefix(piece.bytes.size());
        if (piece.isValid)
            append(piece);
        else
            line += replacement;
    }
}

/// `2026-11-21 10:00:00`, the milliseconds apart; a time without them is spelled out whole.
struct Moment {
    std::string text;
    int milliseconds = -1;
};

Moment momentOf(Date time)
{
    const double rounded = std::floor(time.secondsSince1970() * 1000 + 0.5);
    const double seconds = std::floor(rounded / 1000);
    auto text = Date(seconds).description();
    constexpr std::string_view zone = " +0000";
    if (!text.ends_with(zone))
        return {std::move(text)};
    text.resize(text.size() - zone.size());
    return {std::move(text), static_cast<int>(rounded - seconds * 1000)};
}

} // namespace

void appendVisible(std::string& line, std::string_view text)
{
    appendPieces(line, text, [&](const Piece& piece) {
        if (const char letter = shortEscape(piece.scalar))
            line.append({'\\', letter});
        else if (isControl(piece.scalar) || isDirectionMark(piece.scalar)) {
            appendHexadecimal(line.append("\\u{"), piece.scalar);
            line += '}';
        } else
            line += piece.bytes;
    });
}

void appendJSONText(std::string& line, std::string_view text)
{
    line += '"';
    appendPieces(line, text, [&](const Piece& piece) {
        if (piece.scalar == '"' || piece.scalar == '\\')
            line.append({'\\', static_cast<char>(piece.scalar)});
        else if (const char letter = shortEscape(piece.scalar))
            line.append({'\\', letter});
        else if (isControl(piece.scalar))
            appendHexadecimal(line.append("\\u"), piece.scalar);
        else
            line += piece.bytes;
    });
    line += '"';
}

std::string timestamp(Date time)
{
    auto [text, milliseconds] = momentOf(time);
    if (milliseconds < 0)
        return text;
    text[text.rfind(' ')] = 'T';
    appendMilliseconds(text, milliseconds);
    return text + "Z";
}

std::string timeOfDay(Date time)
{
    auto [text, milliseconds] = momentOf(time);
    if (milliseconds < 0)
        return text;
    text.erase(0, text.rfind(' ') + 1);
    appendMilliseconds(text, milliseconds);
    return text;
}

void writeLine(int descriptor, std::string_view line) noexcept
{
    const int saved = errno;
    while (!line.empty()) {
        const auto written = ::write(descriptor, line.data(), line.size());
        if (written > 0)
            line.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0 || errno != EINTR)
            break;
    }
    errno = saved;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
