#include "Orrenby/Platform/Text/UTF8.hpp"

#include "Orrenby/Platform/Objects/Data.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// The bounds of the second byte and the number of bytes that follow the first; none follow what can begin
/// nothing.
struct Lead {
    std::uint8_t following = 0;
    std::uint8_t low = 0x80;
    std::uint8_t high = 0xBF;
};

constexpr Lead leadOf(std::uint8_t byte) noexcept
{
    if (byte >= 0xC2 && byte <= 0xDF)
        return {.following = 1};
    if (byte == 0xE0) // below U+0800 two bytes are enough
        return {.following = 2, .low = 0xA0};
    if (byte == 0xED) // surrogates are no scalar values
        return {.following = 2, .high = 0x9F};
    if (byte >= 0xE1 && byte <= 0xEF)
        return {.following = 2};
    if (byte == 0xF0) // below U+10000 three bytes are enough
        return {.following = 3, .low = 0x90};
    if (byte == 0xF4) // the last one is U+10FFFF
        return {.following = 3, .high = 0x8F};
    if (byte >= 0xF1 && byte <= 0xF3)
        return {.following = 3};
    return {};
}

} // namespace

UTF8Scalar detail::firstLongUTF8Scalar(std::string_view text) noexcept
{
    const auto first = static_cast<std::uint8_t>(text.front());
    const auto lead = leadOf(first);
    auto low = lead.low;
    auto high = lead.high;
    auto value = static_cast<char32_t>(first & (0x3FU >> lead.following));
    std::uint8_t length = 1;
    for (; length <= lead.following && length < text.size(); ++length) {
        const auto next = static_cast<std::uint8_t>(text[length]);
        if (next < low || next > high)
            return {.length = length};
        low = 0x80;
        high = 0xBF;
        value = (value << 6U) | (next & 0x3FU);
    }
    if (lead.following == 0 || length <= lead.following)
        return {.length = length};
    return {.value = value, .length = length, .isValid = true};
}

UTF8Scalar detail::lastLongUTF8Scalar(std::string_view text) noexcept
{
    for (std::size_t length = 1; length <= 4 && length <= text.size(); ++length) {
        const auto piece = text.substr(text.size() - length);
        if ((static_cast<std::uint8_t>(piece.front()) & 0xC0U) == 0x80U)
            continue;
        const auto scalar = firstUTF8Scalar(piece);
        if (scalar.length == length)
            return scalar;
        break;
    }
    return {};
}

void appendUTF8(std::string& text, char32_t scalar)
{
    if (scalar > 0x10FFFF || (scalar >= 0xD800 && scalar <= 0xDFFF))
        scalar = replacementScalar;
    const auto byte = [](char32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); };
    const auto tail = [&](unsigned shift) { return byte(0x80U | ((scalar >> shift) & 0x3FU)); };
    switch (utf8Length(scalar)) {
    case 1:
        text += byte(scalar);
        break;
    case 2:
        text += {byte(0xC0U | (scalar >> 6U)), tail(0)};
        break;
    case 3:
        text += {byte(0xE0U | (scalar >> 12U)), tail(6), tail(0)};
        break;
    default:
        text += {byte(0xF0U | (scalar >> 18U)), tail(12), tail(6), tail(0)};
    }
}

std::string replacingInvalidUTF8(std::string text)
{
    if (isValidUTF8(text))
        return text;
    std::string result;
    result.reserve(text.size());
    forEachScalar(text, [&](char32_t scalar) { appendUTF8(result, scalar); });
    return result;
}

} // namespace orrenby
