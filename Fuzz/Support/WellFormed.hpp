#pragma once

/// @file
/// UTF-8, judged a second time.

#include <cstddef>
#include <cstdint>
#include <string_view>

/// By decoding each sequence and encoding it again, unlike the code under test.
inline bool isWellFormed(std::string_view text)
{
    for (std::size_t index = 0; index < text.size();) {
        const auto lead = static_cast<unsigned char>(text[index]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xC0 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (length == 0 || lead >= 0xF8 || index + length > text.size())
            return false;
        std::uint32_t scalar = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (std::size_t next = 1; next < length; ++next) {
            const auto byte = static_cast<unsigned char>(text[index + next]);
            if (byte >> 6 != 2)
                return false;
            scalar = scalar << 6 | (byte & 0x3F);
        }
        const std::size_t shortest = scalar < 0x80 ? 1 : scalar < 0x800 ? 2 : scalar < 0x10000 ? 3 : 4;
        if (length != shortest || scalar > 0x10FFFF || (scalar >= 0xD800 && scalar < 0xE000))
            return false;
        index += length;
    }
    return true;
}
