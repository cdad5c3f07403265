#pragma once

/// @file
/// Inputs as a source of numbers and texts.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

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
