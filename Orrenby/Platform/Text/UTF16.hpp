#pragma once

/// @file
/// UTF-8 text seen as UTF-16 units.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/NSRange.hpp"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// How many UTF-16 units the text has. Linear; what is no UTF-8 counts as the U+FFFD that would stand for it.
ORRENBY_EXPORT std::size_t utf16Length(std::string_view text) noexcept;

/// The text in UTF-16, with U+FFFD in place of what is no UTF-8.
ORRENBY_EXPORT std::u16string utf16FromUTF8(std::string_view text);

/// The text in UTF-8, with U+FFFD in place of surrogates that have no partner.
ORRENBY_EXPORT std::string utf8FromUTF16(std::u16string_view text);

/// Converts between places in UTF-8 text, counted in bytes, and places in the same text as UTF-16.
///
/// A place is between two scalar values, before the first or behind the last. The places inside a scalar
/// value, be it between its bytes or between the two units of a surrogate pair, have no counterpart and give
/// nothing; so do places beyond the end.
///
/// What is no UTF-8 counts as the U+FFFD that would stand for it, and is given whole or not at all.
///
/// @snippet Tests/Platform/Text/UTF16Tests.cpp Converting ranges
///
/// Made in linear time; it keeps a view of the text, and of text that is not all ASCII a table of an eighth
/// of its size. Each conversion takes constant time in ASCII, else the logarithm of the length. Safe to use
/// from several threads.
class ORRENBY_EXPORT UTF16View {
public:
    /// @param text  Outlives the view, and what the view gives.
    explicit UTF16View(std::string_view text);

    /// What it looks at.
    std::string_view text() const noexcept { return m_text; }

    /// In UTF-16 units.
    std::size_t length() const noexcept { return m_length; }
    /// All of the text.
    NSRange fullRange() const noexcept { return {.location = 0, .length = m_length}; }

    /// The place in bytes of a place in UTF-16 units.
    std::optional<std::size_t> byteOffset(std::size_t utf16Offset) const noexcept;

    /// The place in UTF-16 units of a place in bytes.
    std::optional<std::size_t> utf16Offset(std::size_t byteOffset) const noexcept;

    /// What stands in the range; nothing unless both its ends are places of the text.
    std::optional<std::string_view> slice(NSRange range) const noexcept;

    /// The range of so many bytes from a place on; nothing unless both its ends are places of the text.
    std::optional<NSRange> range(std::size_t byteOffset, std::size_t byteCount) const noexcept;

    /// The range of a piece of `text()`, which is found by its address. A piece of another text is nothing.
    std::optional<NSRange> range(std::string_view piece) const noexcept;

private:
    /// A place between two scalar values, in both ways of counting.
    struct Place {
        std::size_t bytes = 0;
        std::size_t units = 0;
    };

    /// Whether both ways of counting are the same everywhere, as they are in ASCII.
    bool isUniform() const noexcept { return m_places.empty(); }

    std::string_view m_text;
    std::size_t m_length;
    /// The first place in every stretch of `stretch` bytes. Empty when the text is uniform.
    std::vector<Place> m_places;
};

} // namespace orrenby
