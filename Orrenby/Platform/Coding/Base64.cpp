#include "Orrenby/Platform/Coding/Base64.hpp"

#include <array>
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t noLetter = 0xFF;

constexpr std::array<std::uint8_t, 256> valuesOfLetters()
{
    std::array<std::uint8_t, 256> values{};
    values.fill(noLetter);
    for (std::size_t index = 0; index < letters.size(); ++index)
        values[static_cast<unsigned char>(letters[index])] = static_cast<std::uint8_t>(index);
    return values;
}

constexpr auto values = valuesOfLetters();

} // namespace

std::optional<Data> dataFromBase64(std::string_view text)
{
    if (text.size() % 4 != 0)
        return std::nullopt;
    std::size_t padding = 0;
    while (padding < 2 && !text.empty() && text.back() == '=') {
        text.remove_suffix(1);
        ++padding;
    }

    Data data;
    data.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char letter : text) {
        const auto value = values[static_cast<unsigned char>(letter)];
        if (value == noLetter)
            return std::nullopt;
        bits = bits << 6U | value;
        count += 6;
        if (count >= 8) {
            count -= 8;
            data.push_back(static_cast<std::byte>(bits >> count & 0xFFU));
        }
    }
    // What is left over is filled with zeros, in the one right form.
    return (bits & ((1U << count) - 1)) == 0 ? std::optional(std::move(data)) : std::nullopt;
}

void appendBase64(std::span<const std::byte> data, JSONTextBuffer& text)
{
    const auto letter = [](std::uint32_t bits, unsigned shift) { return letters[bits >> shift & 0x3FU]; };
    for (std::size_t index = 0; index < data.size(); index += 3) {
        const auto count = data.size() - index;
        const auto byte = [&](std::size_t place) {
            return place < count ? static_cast<std::uint32_t>(data[index + place]) : 0U;
        };
        const auto bits = byte(0) << 16U | byte(1) << 8U | byte(2);
        const char group[] = {letter(bits, 18), letter(bits, 12), count > 1 ? letter(bits, 6) : '=',
            count > 2 ? letter(bits, 0) : '='};
        text.append(std::string_view(group, sizeof group));
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
