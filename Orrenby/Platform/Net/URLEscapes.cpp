#include "Orrenby/Platform/Net/URLEscapes.hpp"

#include "Orrenby/Platform/Text/HexadecimalDigits.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";

void appendEscaped(std::string& result, char character)
{
    const auto byte = static_cast<unsigned char>(character);
    result += '%';
    result += digits[byte >> 4];
    result += digits[byte & 15];
}

/// The byte of the escape at the place; −1 where none stands.
int escapedByte(std::string_view text, std::size_t place) noexcept
{
    if (text[place] != '%' || text.size() - place < 3)
        return -1;
    const int high = hexadecimalDigit(text[place + 1]);
    const int low = hexadecimalDigit(text[place + 2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

} // namespace

std::string escapedForURL(std::string_view text, URLPart part, std::string_view also)
{
    std::string result;
    result.reserve(text.size());
    for (const char character : text)
        if (isOfURLPart(character, part) && also.find(character) == std::string_view::npos)
            result += character;
        else
            appendEscaped(result, character);
    return result;
}

std::string mendedForURL(std::string_view text, URLPart part)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size(); ++place)
        if (isOfURLPart(text[place], part) || escapedByte(text, place) >= 0)
            result += text[place];
        else
            appendEscaped(result, text[place]);
    return result;
}

std::string unescapedFromURL(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size(); ++place) {
        const int byte = escapedByte(text, place);
        result += byte < 0 ? text[place] : static_cast<char>(byte);
        place += byte < 0 ? 0 : 2;
    }
    return result;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
