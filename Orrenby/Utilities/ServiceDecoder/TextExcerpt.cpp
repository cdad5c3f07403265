#include "Orrenby/Utilities/ServiceDecoder/TextExcerpt.hpp"

#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::size_t charactersBefore = 24;
constexpr std::size_t charactersAfter = 40;
constexpr std::size_t longestCharacter = 4; // bytes

bool isInside(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// The bytes of the character that the text begins with; 0 if they are none.
std::size_t characterLength(std::string_view text)
{
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const auto first = byte(0);
    if (first < 0x80)
        return 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length)
        return 0;
    for (std::size_t index = 1; index < length; ++index)
        if (!isInside(text[index]))
            return 0;
    // Longer than needed, a half of a pair, or beyond the last character.
    const auto second = byte(1);
    const bool isNone = (first == 0xE0 && second < 0xA0) || (first == 0xED && second >= 0xA0)
        || (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90);
    return isNone ? 0 : length;
}

/// In one line of valid UTF-8.
std::string inOneLine(std::string_view text)
{
    std::string line;
    while (!text.empty()) {
        const auto length = characterLength(text);
        const bool isBlank = static_cast<unsigned char>(text[0]) <= ' ' || text[0] == '\x7F';
        if (length == 0)
            line += "\uFFFD";
        else if (!isBlank)
            line += text.substr(0, length);
        else if (line.empty() || line.back() != ' ')
            line += ' ';
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return line;
}

/// How many bytes the first characters take, at most `count`.
std::size_t lengthOfFirst(std::string_view text, std::size_t count)
{
    std::size_t length = 0;
    while (length < text.size() && (count > 0 || isInside(text[length])))
        if (!isInside(text[length++]))
            --count;
    return length;
}

/// How many bytes the last characters take, at most `count`.
std::size_t lengthOfLast(std::string_view text, std::size_t count)
{
    std::size_t length = 0;
    while (length < text.size() && count > 0)
        if (!isInside(text[text.size() - ++length]))
            --count;
    return length;
}

/// Moves a place that is inside a character to where the character begins.
std::size_t atCharacter(std::string_view text, std::size_t offset)
{
    for (std::size_t steps = 1; steps < longestCharacter && offset > 0 && offset < text.size(); ++steps)
        if (isInside(text[offset]))
            --offset;
    return offset;
}

} // namespace

std::string textExcerpt(std::string_view text, std::size_t offset)
{
    // Room for blanks in a row, as indented texts have them.
    constexpr std::size_t room = 4 * longestCharacter;
    offset = std::min(offset, text.size());
    const auto begin = offset - std::min(offset, charactersBefore * room);
    const auto end = std::min(text.size(), offset + charactersAfter * room);
    const auto first = atCharacter(text, begin);
    const auto before = inOneLine(text.substr(first, offset - first));
    const auto after = inOneLine(text.substr(offset, atCharacter(text, end) - offset));

    const auto kept = lengthOfLast(before, charactersBefore);
    const auto taken = lengthOfFirst(after, charactersAfter);
    std::string excerpt = first > 0 || kept < before.size() ? "…" : "";
    excerpt.append(before, before.size() - kept);
    excerpt.append(after, 0, taken);
    return excerpt + (end < text.size() || taken < after.size() ? "…" : "");
}

} // namespace orrenby::inline ORRENBY_ABI::detail
