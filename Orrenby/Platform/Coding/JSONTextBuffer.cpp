#include "Orrenby/Platform/Coding/JSONTextBuffer.hpp"

#include "Orrenby/Platform/Coding/JSONNumber.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <algorithm>
#include <cstdlib>
#include <new>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::uint64_t ones = 0x0101010101010101U;
constexpr std::uint64_t highBits = 0x8080808080808080U;

/// Whether one of eight bytes is a quote, a backslash, a control character or not ASCII.
bool needsCare(std::uint64_t word)
{
    const auto quotes = word ^ (ones * '"');
    const auto backslashes = word ^ (ones * '\\');
    // Exact up to the first byte that is found; whatever it reports behind that does no harm.
    return ((word | (word - ones * 0x20) | (quotes - ones) | (backslashes - ones)) & highBits) != 0;
}

/// The bytes at the start of `text` that stand in JSON as they are.
std::size_t plainCount(std::string_view text)
{
    std::size_t index = 0;
    for (; index + 8 <= text.size(); index += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + index, sizeof word);
        if (needsCare(word))
            break;
    }
    for (; index < text.size(); ++index) {
        const auto byte = static_cast<unsigned char>(text[index]);
        if (byte < 0x20 || byte >= 0x80 || byte == '"' || byte == '\\')
            break;
    }
    return index;
}

std::size_t nonASCIICount(std::string_view text)
{
    std::size_t count = 0;
    while (count < text.size() && static_cast<unsigned char>(text[count]) >= 0x80)
        ++count;
    return count;
}

char* writeEscape(char* place, char byte)
{
    constexpr char digits[] = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(byte);
    *place++ = '\\';
    switch (byte) {
    case '"':
    case '\\':
        *place++ = byte;
        return place;
    case '\b':
        *place++ = 'b';
        return place;
    case '\f':
        *place++ = 'f';
        return place;
    case '\n':
        *place++ = 'n';
        return place;
    case '\r':
        *place++ = 'r';
        return place;
    case '\t':
        *place++ = 't';
        return place;
    default:
        std::memcpy(place, "u00", 3);
        place[3] = digits[code >> 4U];
        place[4] = digits[code & 0xFU];
        return place + 5;
    }
}

} // namespace

JSONTextBuffer::~JSONTextBuffer() { std::free(m_start); }

void JSONTextBuffer::grow(std::size_t count)
{
    const auto used = size();
    const auto capacity = std::max(used * 2, used + count) + 256;
    auto* grown = static_cast<char*>(std::realloc(m_start, capacity));
    if (grown == nullptr)
        throw std::bad_alloc();
    m_start = grown;
    m_end = grown + used;
    m_limit = grown + capacity;
}

void JSONTextBuffer::appendInteger(std::int64_t value)
{
    ensure(longestJSONNumber);
    m_end = writeJSONInteger(m_end, value);
}

void JSONTextBuffer::appendUnsigned(std::uint64_t value)
{
    ensure(longestJSONNumber);
    m_end = writeJSONUnsigned(m_end, value);
}

void JSONTextBuffer::appendDouble(double value)
{
    ensure(longestJSONNumber);
    m_end = writeJSONDouble(m_end, value);
}

void JSONTextBuffer::appendFloat(float value)
{
    ensure(longestJSONNumber);
    m_end = writeJSONFloat(m_end, value);
}

bool JSONTextBuffer::appendText(std::string_view text)
{
    constexpr std::size_t longestEscape = 6;
    const auto start = size();
    ensure(text.size() + 2);
    *m_end++ = '"';
    while (true) {
        const auto plain = plainCount(text);
        append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty())
            break;
        if (const auto count = nonASCIICount(text); count > 0) {
            if (!isValidUTF8(text.substr(0, count))) {
                m_end = m_start + start;
                return false;
            }
            append(text.substr(0, count));
            text.remove_prefix(count);
        } else {
            ensure(text.size() + longestEscape);
            m_end = writeEscape(m_end, text.front());
            text.remove_prefix(1);
        }
    }
    append('"');
    return true;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
