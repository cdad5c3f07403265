#include "Terminal/Text.hpp"

#include <charconv>
#include <cstddef>

namespace fieldbook {

namespace {

/// How many bytes a character has, told by its first one; 0 for a byte that cannot be the first.
std::size_t lengthAfter(unsigned char first)
{
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first < 0xE0)
        return 2;
    if (first >= 0xE0 && first < 0xF0)
        return 3;
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

/// The smallest character for which so many bytes are needed. A longer form of a smaller one is malformed.
constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};

bool isBetween(char32_t character, char32_t first, char32_t last)
{
    return first <= character && character <= last;
}

} // namespace

std::optional<char32_t> takeCharacter(std::string_view& rest)
{
    const auto first = static_cast<unsigned char>(rest.front());
    const auto length = lengthAfter(first);
    char32_t character = length < 2 ? first : first & (0x7FU >> length);
    bool isGood = length != 0 && length <= rest.size();
    for (std::size_t index = 1; isGood && index < length; ++index) {
        const auto byte = static_cast<unsigned char>(rest[index]);
        isGood = (byte & 0xC0) == 0x80;
        character = character << 6 | (byte & 0x3FU);
    }
    isGood = isGood && character >= smallest[length] && character <= 0x10FFFF
        && !isBetween(character, 0xD800, 0xDFFF);
    rest.remove_prefix(isGood ? length : 1);
    return isGood ? std::optional(character) : std::nullopt;
}

bool isPrintable(char32_t character)
{
    const bool isControl = character < 0x20 || isBetween(character, 0x7F, 0x9F);
    const bool isLineEnd = isBetween(character, 0x2028, 0x2029);
    const bool turnsWriting = character == 0x061C || isBetween(character, 0x200E, 0x200F)
        || isBetween(character, 0x202A, 0x202E) || isBetween(character, 0x2066, 0x2069);
    return !isControl && !isLineEnd && !turnsWriting;
}

std::string printable(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const auto before = text;
        const auto character = takeCharacter(text);
        if (character && isPrintable(*character))
            result += before.substr(0, before.size() - text.size());
        else
            result += '?';
    }
    return result;
}

std::optional<int> numberIn(std::string_view text)
{
    int number = 0;
    const auto* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end || number <= 0)
        return std::nullopt;
    return number;
}

std::string counted(std::size_t count, std::string_view thing)
{
    auto result = std::to_string(count) + ' ';
    result.append(thing);
    return count == 1 ? result : result + 's';
}

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

} // namespace fieldbook
