#include "Orrenby/Platform/Text/Hexadecimal.hpp"

#include "Orrenby/Platform/Text/HexadecimalDigits.hpp"
#include <array>
#include <cstring>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using Pair = std::array<char, 2>;

constexpr auto pairs = [] {
    std::array<Pair, 256> result{};
    for (std::size_t byte = 0; byte < result.size(); ++byte)
        result[byte] = {"0123456789abcdef"[byte / 16], "0123456789abcdef"[byte % 16]};
    return result;
}();

} // namespace

std::string hexadecimalText(std::span<const std::byte> bytes)
{
    std::string text(bytes.size() * 2, '\0');
    char* place = text.data();
    for (const std::byte byte : bytes) {
        std::memcpy(place, pairs[std::to_integer<std::size_t>(byte)].data(), 2); // one move of 16 bits
        place += 2;
    }
    return text;
}

std::optional<Data> bytesFromHexadecimal(std::string_view text)
{
    if (text.size() % 2 != 0)
        return std::nullopt;
    Data bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t place = 0; place < text.size(); place += 2) {
        const int high = detail::hexadecimalDigit(text[place]);
        const int low = detail::hexadecimalDigit(text[place + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes.push_back(static_cast<std::byte>(high * 16 + low));
    }
    return bytes;
}

} // namespace orrenby
