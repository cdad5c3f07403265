#include "Orrenby/Platform/Text/UTF16.hpp"

#include "Orrenby/Platform/Text/UTF8.hpp"
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// Between two entries of the table stand so many bytes, or up to three more.
constexpr std::size_t stretch = 128;

std::size_t unitsOf(char32_t scalar) noexcept { return scalar < 0x10000 ? 1 : 2; }

/// How many bytes at the front are ASCII; maybe a few less than there are.
std::size_t asciiPrefix(std::string_view text) noexcept
{
    std::size_t length = 0;
    while (text.size() - length >= sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + length, sizeof word);
        if ((word & 0x8080808080808080U) != 0)
            break;
        length += sizeof word;
    }
    return length;
}

} // namespace

std::size_t utf16Length(std::string_view text) noexcept
{
    std::size_t length = 0;
    while (!text.empty()) {
        if (const auto ascii = asciiPrefix(text); ascii > 0) {
            length += ascii;
            text.remove_prefix(ascii);
            continue;
        }
        const auto scalar = firstUTF8Scalar(text);
        length += unitsOf(scalar.value);
        text.remove_prefix(scalar.length);
    }
    return length;
}

std::u16string utf16FromUTF8(std::string_view text)
{
    std::u16string result;
    result.reserve(text.size());
    forEachScalar(text, [&](char32_t scalar) {
        if (scalar < 0x10000)
            result += static_cast<char16_t>(scalar);
        else {
            result += static_cast<char16_t>(0xD7C0U + (scalar >> 10U));
            result += static_cast<char16_t>(0xDC00U | (scalar & 0x3FFU));
        }
    });
    return result;
}

std::string utf8FromUTF16(std::u16string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char32_t unit = text[place];
        const char32_t next = place + 1 < text.size() ? text[place + 1] : 0;
        const bool isPair = (unit & 0xFC00U) == 0xD800U && (next & 0xFC00U) == 0xDC00U;
        appendUTF8(result, isPair ? 0x10000U + ((unit & 0x3FFU) << 10U) + (next & 0x3FFU) : unit);
        place += isPair ? 1 : 0;
    }
    return result;
}

UTF16View::UTF16View(std::string_view text)
    : m_text(text)
    , m_length(utf16Length(text))
{
    if (m_length == text.size()) // whatever takes several bytes takes fewer units
        return;
    m_places.reserve(text.size() / stretch + 1);
    for (Place place; place.bytes < text.size();) {
        if (place.bytes >= m_places.size() * stretch)
            m_places.push_back(place);
        const auto scalar = firstUTF8Scalar(text.substr(place.bytes));
        place.bytes += scalar.length;
        place.units += unitsOf(scalar.value);
    }
}

std::optional<std::size_t> UTF16View::byteOffset(std::size_t utf16Offset) const noexcept
{
    if (utf16Offset > m_length)
        return std::nullopt;
    if (isUniform())
        return utf16Offset;
    auto place = *std::prev(std::upper_bound(m_places.begin(), m_places.end(), utf16Offset,
        [](std::size_t offset, const Place& entry) { return offset < entry.units; }));
    while (place.units < utf16Offset) {
        const auto scalar = firstUTF8Scalar(m_text.substr(place.bytes));
        place.bytes += scalar.length;
        place.units += unitsOf(scalar.value);
    }
    return place.units == utf16Offset ? std::optional(place.bytes) : std::nullopt;
}

std::optional<std::size_t> UTF16View::utf16Offset(std::size_t byteOffset) const noexcept
{
    if (byteOffset > m_text.size())
        return std::nullopt;
    if (isUniform())
        return byteOffset;
    auto place = *std::prev(std::upper_bound(m_places.begin(), m_places.end(), byteOffset,
        [](std::size_t offset, const Place& entry) { return offset < entry.bytes; }));
    while (place.bytes < byteOffset) {
        const auto scalar = firstUTF8Scalar(m_text.substr(place.bytes));
        place.bytes += scalar.length;
        place.units += unitsOf(scalar.value);
    }
    return place.bytes == byteOffset ? std::optional(place.units) : std::nullopt;
}

std::optional<std::string_view> UTF16View::slice(NSRange range) const noexcept
{
    if (range.location > m_length || range.length > m_length - range.location)
        return std::nullopt;
    const auto start = byteOffset(range.location);
    const auto end = byteOffset(range.upperBound());
    if (!start || !end)
        return std::nullopt;
    return m_text.substr(*start, *end - *start);
}

std::optional<NSRange> UTF16View::range(std::size_t byteOffset, std::size_t byteCount) const noexcept
{
    if (byteOffset > m_text.size() || byteCount > m_text.size() - byteOffset)
        return std::nullopt;
    const auto start = utf16Offset(byteOffset);
    const auto end = utf16Offset(byteOffset + byteCount);
    if (!start || !end)
        return std::nullopt;
    return NSRange{.location = *start, .length = *end - *start};
}

std::optional<NSRange> UTF16View::range(std::string_view piece) const noexcept
{
    const std::less<> before;
    const char* end = m_text.data() + m_text.size();
    if (before(piece.data(), m_text.data()) || before(end, piece.data() + piece.size()))
        return std::nullopt;
    return range(static_cast<std::size_t>(piece.data() - m_text.data()), piece.size());
}

} // namespace orrenby
