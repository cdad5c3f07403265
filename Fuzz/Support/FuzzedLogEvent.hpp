#pragma once

/// @file
/// Log events made of arbitrary bytes, and what both log fuzzers check.

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Utilities/Log/Event.hpp"
#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

inline void requireThat(bool condition)
{
    if (!condition)
        std::abort();
}

/// Takes an input apart. After its end everything is 0 and empty.
class FuzzedBytes {
public:
    FuzzedBytes(const std::uint8_t* data, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(data), size)
    {}

    int number()
    {
        if (m_rest.empty())
            return 0;
        const auto byte = static_cast<unsigned char>(m_rest.front());
        m_rest.remove_prefix(1);
        return byte;
    }

    std::string text()
    {
        const auto text = m_rest.substr(0, static_cast<std::size_t>(number()));
        m_rest.remove_prefix(std::min(text.size(), m_rest.size()));
        return std::string(text);
    }

    std::uint64_t word()
    {
        std::uint64_t word = 0;
        for (int byte = 0; byte < 8; ++byte)
            word = word << 8 | static_cast<std::uint64_t>(number());
        return word;
    }

    bool isEmpty() const { return m_rest.empty(); }

private:
    std::string_view m_rest;
};

inline orrenby::Any fuzzedValue(FuzzedBytes& bytes, int depth);

inline orrenby::Dictionary fuzzedDictionary(FuzzedBytes& bytes, int depth)
{
    orrenby::Dictionary dictionary;
    for (int count = bytes.number() % 5; count > 0 && !bytes.isEmpty(); --count) {
        const auto key = bytes.text();
        dictionary.set(key, fuzzedValue(bytes, depth + 1));
    }
    return dictionary;
}

inline orrenby::Any fuzzedValue(FuzzedBytes& bytes, int depth)
{
    switch (depth < 100 ? bytes.number() % 10 : 0) {
    case 1:
        return bytes.text();
    case 2:
        return static_cast<std::int64_t>(bytes.word());
    case 3:
        return std::bit_cast<double>(bytes.word());
    case 4:
        return std::bit_cast<float>(static_cast<std::uint32_t>(bytes.word()));
    case 5:
        return orrenby::Array{fuzzedValue(bytes, depth + 1), fuzzedValue(bytes, depth + 1)};
    case 6:
        return fuzzedDictionary(bytes, depth);
    case 7:
        return orrenby::Date(std::bit_cast<double>(bytes.word()));
    case 8:
        return orrenby::NSSet{fuzzedValue(bytes, depth + 1)};
    case 9:
        return bytes.number() % 2 == 0;
    default:
        return {};
    }
}

inline orrenby::Log::Event fuzzedLogEvent(FuzzedBytes& bytes)
{
    auto level = bytes.text();
    auto filename = bytes.text();
    const auto line = static_cast<std::int64_t>(bytes.word());
    auto function = bytes.text();
    auto queue = bytes.text();
    auto message = bytes.text();
    return {std::move(level), std::move(filename), line, std::move(function), std::move(queue),
        std::move(message), fuzzedDictionary(bytes, 0)};
}

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
