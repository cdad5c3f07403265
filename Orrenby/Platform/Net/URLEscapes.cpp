#include "Orrenby/Platform/Net/URLEscapes.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";

/// −1 for anything but a hexadecimal digit.
constexpr int digitValue(char digit) noexcept
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return -1;
}

} // namespace

std::string escapedForURL(std::string_view text, URLPart part, std::string_view also)
{
    std::string result;
    result.reserve(text.size());
    for (const char character : text) {
        if (isOfURLPart(character, part) && also.find(character) == std::string_view::npos) {
            result += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        result += '%';
        result += digits[byte >> 4];
        result += digits[byte & 15];
    }
    return result;
}

std::string unescapedFromURL(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size(); ++place) {
        const bool isEscape = text[place] == '%' && text.size() - place > 2;
        const int high = isEscape ? digitValue(text[place + 1]) : -1;
        const int low = isEscape ? digitValue(text[place + 2]) : -1;
        if (high < 0 || low < 0) {
            result += text[place];
            continue;
        }
        result += static_cast<char>(high * 16 + low);
        place += 2;
    }
    return result;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
