#include "Orrenby/Platform/Drawing/Color.hpp"

#include <array>

namespace orrenby::inline ORRENBY_ABI {

namespace {

std::optional<unsigned> digitValue(char digit) noexcept
{
    if (digit >= '0' && digit <= '9')
        return static_cast<unsigned>(digit - '0');
    if (digit >= 'a' && digit <= 'f')
        return static_cast<unsigned>(digit - 'a') + 10;
    if (digit >= 'A' && digit <= 'F')
        return static_cast<unsigned>(digit - 'A') + 10;
    return std::nullopt;
}

void appendByte(std::string& text, std::uint8_t byte)
{
    text += "0123456789abcdef"[byte >> 4U];
    text += "0123456789abcdef"[byte & 0xFU];
}

} // namespace

std::optional<Color> Color::fromHex(std::string_view text)
{
    if (text.starts_with('#'))
        text.remove_prefix(1);
    const bool isShort = text.size() == 3 || text.size() == 4;
    if (!isShort && text.size() != 6 && text.size() != 8)
        return std::nullopt;
    const std::size_t width = isShort ? 1 : 2;
    std::array<std::uint8_t, 4> parts{0, 0, 0, 255};
    for (std::size_t index = 0; index * width < text.size(); ++index) {
        const auto high = digitValue(text[index * width]);
        const auto low = digitValue(text[index * width + width - 1]);
        if (!high || !low)
            return std::nullopt;
        parts[index] = static_cast<std::uint8_t>(*high * 16 + *low);
    }
    return Color{parts[0], parts[1], parts[2], parts[3]};
}

std::string Color::description() const
{
    std::string text = "#";
    for (const auto part : {red, green, blue})
        appendByte(text, part);
    if (alpha != 255)
        appendByte(text, alpha);
    return text;
}

} // namespace orrenby
