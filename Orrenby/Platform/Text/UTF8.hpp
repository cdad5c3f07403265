#pragma once

/// @file
/// Text as Unicode scalar values.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Stands for what is no UTF-8.
inline constexpr char32_t replacementScalar = 0xFFFD;

/// One scalar value as it stands in UTF-8 text.
struct UTF8Scalar {
    /// U+FFFD where the bytes are no UTF-8.
    char32_t value = replacementScalar;
    /// In bytes, at least 1.
    std::uint8_t length = 1;
    bool isValid = false; ///< Whether the bytes are UTF-8; a U+FFFD that stands in the text is.

    friend constexpr bool operator==(const UTF8Scalar&, const UTF8Scalar&) = default;
};

namespace detail {

/// Of text that does not begin with ASCII.
ORRENBY_EXPORT UTF8Scalar firstLongUTF8Scalar(std::string_view text) noexcept;
/// Of text that does not end with ASCII.
ORRENBY_EXPORT UTF8Scalar lastLongUTF8Scalar(std::string_view text) noexcept;

constexpr bool isASCII(char byte) noexcept { return static_cast<unsigned char>(byte) < 128; }
constexpr UTF8Scalar asciiScalar(char byte) noexcept
{
    return {.value = static_cast<unsigned char>(byte), .length = 1, .isValid = true};
}

} // namespace detail

/// The scalar value at the front of a text that is not empty.
///
/// Of bytes that are no UTF-8 it takes as many as could begin a scalar value, one at least, and gives U+FFFD
/// for them, as the Unicode standard recommends: walking on by `length` meets each byte once.
///
/// Constant time. Safe to use from several threads.
inline UTF8Scalar firstUTF8Scalar(std::string_view text) noexcept
{
    return detail::isASCII(text.front()) ? detail::asciiScalar(text.front())
                                         : detail::firstLongUTF8Scalar(text);
}

/// The scalar value at the end of a text that is not empty. In text that is no UTF-8 it may cut at another
/// place than walking from the front does, but meets each byte once, too.
inline UTF8Scalar lastUTF8Scalar(std::string_view text) noexcept
{
    return detail::isASCII(text.back()) ? detail::asciiScalar(text.back()) : detail::lastLongUTF8Scalar(text);
}

/// How many bytes a scalar value takes in UTF-8.
constexpr std::size_t utf8Length(char32_t scalar) noexcept
{
    return scalar < 0x80 ? 1 : scalar < 0x800 ? 2 : scalar < 0x10000 ? 3 : 4;
}

/// Adds a scalar value to the text; U+FFFD for a number that is none.
ORRENBY_EXPORT void appendUTF8(std::string& text, char32_t scalar);

/// The text with U+FFFD in place of what is no UTF-8. Linear; a valid text is handed back as it is.
///
/// @snippet Tests/Platform/Text/UTF8Tests.cpp Mending text
ORRENBY_EXPORT std::string replacingInvalidUTF8(std::string text);

/// Calls with each scalar value, first to last, U+FFFD in place of what is no UTF-8. Linear.
template <class F> void forEachScalar(std::string_view text, F&& perform)
{
    while (!text.empty()) {
        const auto scalar = firstUTF8Scalar(text);
        perform(scalar.value);
        text.remove_prefix(scalar.length);
    }
}

} // namespace orrenby
