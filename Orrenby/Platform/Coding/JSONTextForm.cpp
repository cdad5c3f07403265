#include "Orrenby/Platform/Coding/JSONTextForm.hpp"

#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

struct Form {
    std::size_t width = 1; ///< Bytes of a unit.
    bool isBigEndian = false;
    std::size_t mark = 0; ///< Bytes of the byte-order mark.
};

Form formOf(std::span<const std::byte> data)
{
    std::uint8_t head[4] = {1, 1, 1, 1};
    for (std::size_t index = 0; index < 4 && index < data.size(); ++index)
        head[index] = static_cast<std::uint8_t>(data[index]);
    const auto startsWith = [&](auto... bytes) {
        std::size_t index = 0;
        return sizeof...(bytes) <= data.size() && ((head[index++] == bytes) && ...);
    };

    if (startsWith(0xEF, 0xBB, 0xBF))
        return {1, false, 3};
    if (startsWith(0xFF, 0xFE, 0x00, 0x00))
        return {4, false, 4};
    if (startsWith(0x00, 0x00, 0xFE, 0xFF))
        return {4, true, 4};
    if (startsWith(0xFF, 0xFE))
        return {2, false, 2};
    if (startsWith(0xFE, 0xFF))
        return {2, true, 2};
    if (data.size() >= 4 && head[0] == 0 && head[1] == 0 && head[2] == 0)
        return {4, true, 0};
    if (data.size() >= 4 && head[1] == 0 && head[2] == 0 && head[3] == 0)
        return {4, false, 0};
    if (data.size() >= 2 && head[0] == 0 && head[1] != 0)
        return {2, true, 0};
    if (data.size() >= 2 && head[0] != 0 && head[1] == 0)
        return {2, false, 0};
    return {};
}

void append(std::string& text, std::uint32_t scalar)
{
    const auto put = [&](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (scalar < 0x80)
        put(scalar);
    else if (scalar < 0x800) {
        put(0xC0U | scalar >> 6U);
        put(0x80U | (scalar & 0x3FU));
    } else if (scalar < 0x10000) {
        put(0xE0U | scalar >> 12U);
        put(0x80U | (scalar >> 6U & 0x3FU));
        put(0x80U | (scalar & 0x3FU));
    } else {
        put(0xF0U | scalar >> 18U);
        put(0x80U | (scalar >> 12U & 0x3FU));
        put(0x80U | (scalar >> 6U & 0x3FU));
        put(0x80U | (scalar & 0x3FU));
    }
}

bool isSurrogate(std::uint32_t value) { return value >= 0xD800 && value < 0xE000; }

class Converter {
public:
    Converter(std::span<const std::byte> data, Form form, std::string& text)
        : m_data(data)
        , m_form(form)
        , m_text(text)
    {}

    void convert()
    {
        m_text.reserve(m_data.size() / m_form.width + 16);
        if (m_data.size() % m_form.width != 0)
            m_data = m_data.first(m_data.size() - m_data.size() % m_form.width), m_isCut = true;
        while (m_position < m_data.size())
            append(m_text, scalar());
        if (m_isCut)
            fail();
    }

private:
    std::uint32_t unit()
    {
        std::uint32_t value = 0;
        for (std::size_t index = 0; index < m_form.width; ++index) {
            const auto place = m_form.isBigEndian ? index : m_form.width - 1 - index;
            value = value << 8U | static_cast<std::uint32_t>(m_data[m_position + place]);
        }
        m_position += m_form.width;
        return value;
    }

    std::uint32_t scalar()
    {
        const auto first = unit();
        if (first > 0x10FFFF)
            fail();
        if (!isSurrogate(first))
            return first;
        if (m_form.width == 4 || first >= 0xDC00 || m_position == m_data.size())
            fail();
        const auto second = unit();
        if (second < 0xDC00 || second >= 0xE000)
            fail();
        return 0x10000U + ((first - 0xD800U) << 10U) + (second - 0xDC00U);
    }

    [[noreturn]] void fail() const
    {
        throw JSONReadError(JSONReadError::Kind::BadEncoding, TextPosition::in(m_text, m_text.size()));
    }

    std::span<const std::byte> m_data;
    Form m_form;
    std::string& m_text;
    std::size_t m_position = 0;
    bool m_isCut = false;
};

} // namespace

std::string_view jsonTextAsUTF8(std::span<const std::byte> data, std::string& storage)
{
    const auto form = formOf(data);
    const auto content = data.subspan(form.mark);
    if (form.width == 1)
        return {reinterpret_cast<const char*>(content.data()), content.size()};
    Converter(content, form, storage).convert();
    return storage;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
