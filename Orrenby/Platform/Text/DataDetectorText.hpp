#pragma once

/// @file
/// The text that a detector reads, and the kinds of its characters. Not in the umbrella header: part of
/// DataDetector.cpp.

#include "Orrenby/Platform/Export.hpp"
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A stretch of text in bytes, `end` behind it.
struct DetectorSpan {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// One scalar value of a text. What is no UTF-8 reads as U+FFFD, which belongs to nothing.
struct DetectorScalar {
    char32_t value = 0;
    std::size_t length = 0;
};

/// Kinds of ASCII characters; one character may be of several.
enum class DetectorClass : std::uint8_t {
    /// A letter or digit.
    Word = 1,
    Digit = 2,
    Upper = 4,
    /// What may follow the first letter of a scheme.
    Scheme = 8,
    /// What may stand before the "@" of a mail address.
    Head = 16,
    /// What never stands in a link.
    Barrier = 32,
    /// What a telephone number begins with.
    PhoneBegin = 64,
};

constexpr std::array<std::uint8_t, 128> detectorClasses = [] {
    std::array<std::uint8_t, 128> result{};
    const auto mark = [&](std::string_view characters, DetectorClass kind) {
        for (const char character : characters)
            result[static_cast<unsigned char>(character)] |= static_cast<std::uint8_t>(kind);
    };
    constexpr std::string_view digits = "0123456789", upper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ",
                               lower = "abcdefghijklmnopqrstuvwxyz";
    for (const auto letters : {digits, upper, lower})
        for (const auto kind : {DetectorClass::Word, DetectorClass::Scheme, DetectorClass::Head})
            mark(letters, kind);
    mark(digits, DetectorClass::Digit);
    mark(digits, DetectorClass::PhoneBegin);
    mark("+(", DetectorClass::PhoneBegin);
    mark(upper, DetectorClass::Upper);
    mark("+-.", DetectorClass::Scheme);
    mark("._%+-'&", DetectorClass::Head);
    mark("\"<>\\^`{|}\x7F", DetectorClass::Barrier);
    for (std::size_t control = 0; control <= 0x20; ++control)
        result[control] |= static_cast<std::uint8_t>(DetectorClass::Barrier);
    return result;
}();

/// Whether the scalar value belongs to words: letters, digits and marks of all scripts, and ideographs.
/// Beyond ASCII it tells them from spaces, punctuation, symbols and pictures by their blocks.
bool isWordScalar(char32_t value) noexcept;

/// Whether the scalar value is of a script that is written without blanks between words.
constexpr bool isWideScalar(char32_t value) noexcept { return value >= 0x2E80 && value < 0x1F000; }

/// The lower-case letter of a capital of Latin (up to U+017F), Greek (U+0386 to U+03AB) or Cyrillic (up to
/// U+04BF); any other value as it is.
ORRENBY_EXPORT char32_t loweredScalar(char32_t value) noexcept;

/// A view of text that counts how many bytes were read of it, so that the cost of a detector can be told
/// without a clock.
///
/// Not synchronised.
class DetectorText {
public:
    explicit DetectorText(std::string_view text)
        : m_text(text)
    {}

    std::size_t size() const noexcept { return m_text.size(); }
    std::string_view slice(DetectorSpan span) const
    {
        return m_text.substr(span.begin, span.end - span.begin);
    }

    /// The byte at a place; 0, as for a barrier, at the end and beyond.
    unsigned char at(std::size_t place) const noexcept
    {
        ++m_reads;
        return place < m_text.size() ? static_cast<unsigned char>(m_text[place]) : 0;
    }
    bool isAt(std::size_t place, DetectorClass kind) const noexcept
    {
        const auto byte = at(place);
        return byte < 128 && (detectorClasses[byte] & static_cast<std::uint8_t>(kind)) != 0;
    }
    bool isDigitAt(std::size_t place) const noexcept { return isAt(place, DetectorClass::Digit); }

    /// The scalar value that begins at a place; of length 0 at the end.
    DetectorScalar scalarAt(std::size_t place) const noexcept;
    /// The scalar value that ends at a place; of length 0 at the beginning.
    DetectorScalar scalarBefore(std::size_t place) const noexcept;

    /// The length of the letter, digit or mark that begins at a place, 0 when there is none.
    std::size_t wordLengthAt(std::size_t place) const noexcept
    {
        const auto byte = at(place);
        if (byte < 128)
            return detectorClasses[byte] & static_cast<std::uint8_t>(DetectorClass::Word);
        const auto scalar = scalarAt(place);
        return isWordScalar(scalar.value) ? scalar.length : 0;
    }
    bool isWordBefore(std::size_t place) const noexcept { return isWordScalar(scalarBefore(place).value); }

    /// The length of the blank that begins at a place, 0 when there is none: a space, a tab, or one of the
    /// spaces that do not break a line.
    std::size_t blankLengthAt(std::size_t place) const noexcept;
    /// The length of the hyphen or short dash that begins at a place, 0 when there is none.
    std::size_t dashLengthAt(std::size_t place) const noexcept;

    /// The text of a span in lower case. For words, of which there are only short ones.
    std::string lowered(DetectorSpan span) const;

    /// How many bytes were read so far.
    std::size_t reads() const noexcept { return m_reads; }

private:
    std::string_view m_text;
    mutable std::size_t m_reads = 0;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
