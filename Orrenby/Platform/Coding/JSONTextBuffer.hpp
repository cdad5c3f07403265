#pragma once

/// @file
/// Where JSON text is written. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A growing text, and the few ways in which JSON is appended to it. Not synchronised.
class JSONTextBuffer {
public:
    JSONTextBuffer() = default;
    JSONTextBuffer(const JSONTextBuffer&) = delete;
    JSONTextBuffer& operator=(const JSONTextBuffer&) = delete;
    ORRENBY_EXPORT ~JSONTextBuffer();

    std::size_t size() const noexcept { return static_cast<std::size_t>(m_end - m_start); }
    std::string_view view() const noexcept { return {m_start, size()}; }
    char last() const noexcept { return m_end[-1]; }

    void append(char byte)
    {
        ensure(1);
        *m_end++ = byte;
    }
    void append(std::string_view text)
    {
        ensure(text.size());
        if (!text.empty())
            std::memcpy(m_end, text.data(), text.size());
        m_end += text.size();
    }

    /// `size` is at most the present one.
    void truncate(std::size_t size) noexcept { m_end = m_start + size; }

    void appendInteger(std::int64_t value);
    void appendUnsigned(std::uint64_t value);
    /// `value` is finite.
    void appendDouble(double value);
    void appendFloat(float value);

    /// In quotes, with escapes for quotes, backslashes and control characters. False, and nothing is
    /// appended, when the text is not valid UTF-8.
    bool appendText(std::string_view text);

private:
    void ensure(std::size_t count)
    {
        if (static_cast<std::size_t>(m_limit - m_end) < count)
            grow(count);
    }
    ORRENBY_EXPORT void grow(std::size_t count);

    char* m_start = nullptr;
    char* m_end = nullptr;
    char* m_limit = nullptr;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
