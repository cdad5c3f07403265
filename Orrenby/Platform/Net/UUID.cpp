#include "Orrenby/Platform/Net/UUID.hpp"

#include "Orrenby/Platform/World/UUIDSource.hpp"
#include "Orrenby/Platform/World/World.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr std::size_t textLength = 36;

/// Whether a group ends before the byte of this index.
constexpr bool hasHyphenBefore(std::size_t byte) { return byte == 4 || byte == 6 || byte == 8 || byte == 10; }

/// −1 for anything but an ASCII hexadecimal digit.
constexpr int digitValue(char digit)
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

std::optional<UUID> UUID::make(std::string_view text)
{
    if (text.size() != textLength)
        return std::nullopt;

    auto bytes = Bytes{};
    std::size_t position = 0;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (hasHyphenBefore(index) && text[position++] != '-')
            return std::nullopt;
        const auto high = digitValue(text[position++]);
        const auto low = digitValue(text[position++]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes[index] = static_cast<std::uint8_t>(high * 16 + low);
    }
    return UUID(bytes);
}

UUID UUID::random() { return World::current().uuids().next(); }

std::string UUID::uuidString() const
{
    constexpr auto digits = std::string_view("0123456789ABCDEF");
    std::string text;
    text.reserve(textLength);
    for (std::size_t index = 0; index < m_bytes.size(); ++index) {
        if (hasHyphenBefore(index))
            text += '-';
        text += digits[m_bytes[index] / 16];
        text += digits[m_bytes[index] % 16];
    }
    return text;
}

} // namespace orrenby
