#include "Orrenby/Platform/Objects/Data.hpp"

#include <cstdint>
#include <cstring>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// How many bytes the sequence at the front of `text` takes; 0 when it is not valid.
std::size_t sequenceLength(std::string_view text) noexcept
{
    const auto byte = [&](std::size_t index) { return static_cast<std::uint8_t>(text[index]); };
    const auto continues = [&](std::size_t index) {
        return index < text.size() && (byte(index) & 0xC0) == 0x80;
    };
    const auto first = byte(0);
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return continues(1) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        if (!continues(1) || !continues(2))
            return 0;
        const bool isOverlong = first == 0xE0 && byte(1) < 0xA0;
        const bool isSurrogate = first == 0xED && byte(1) > 0x9F;
        return isOverlong || isSurrogate ? 0 : 3;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        if (!continues(1) || !continues(2) || !continues(3))
            return 0;
        const bool isOverlong = first == 0xF0 && byte(1) < 0x90;
        const bool isTooLarge = first == 0xF4 && byte(1) > 0x8F;
        return isOverlong || isTooLarge ? 0 : 4;
    }
    return 0;
}

/// Whether the next eight bytes are all ASCII, which is what most text is made of.
bool startsWithEightASCII(std::string_view text) noexcept
{
    if (text.size() < 8)
        return false;
    std::uint64_t word = 0;
    std::memcpy(&word, text.data(), sizeof word);
    return (word & 0x8080808080808080U) == 0;
}

} // namespace

bool isValidUTF8(std::string_view text) noexcept
{
    while (!text.empty()) {
        const auto length = startsWithEightASCII(text) ? 8 : sequenceLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

Data dataFromText(std::string_view text)
{
    const auto* bytes = reinterpret_cast<const std::byte*>(text.data());
    return Data(bytes, bytes + text.size());
}

std::optional<std::string> textFromData(std::span<const std::byte> data)
{
    const auto text = std::string_view(reinterpret_cast<const char*>(data.data()), data.size());
    return isValidUTF8(text) ? std::optional(std::string(text)) : std::nullopt;
}

std::span<const std::byte> detail::bytesOf(std::string_view text) noexcept
{
    return std::as_bytes(std::span(text));
}

} // namespace orrenby
