#pragma once

/// @file
/// Places in a text.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A place in a text, as programs and as people count it.
///
/// A plain value. Not synchronised.
struct TextPosition {
    /// Bytes of UTF-8 before it, counted after a byte-order mark.
    std::size_t offset = 0;
    /// From 1. A line ends after `\n`, `\r` or both together.
    std::size_t line = 1;
    /// From 1, in Unicode scalar values.
    std::size_t column = 1;

    /// The place `offset` bytes into `text`; its end for an offset beyond it. Linear in the offset.
    ORRENBY_EXPORT static TextPosition in(std::string_view text, std::size_t offset);

    /// The same, counted on from a place that is not behind it. Linear in the distance.
    ORRENBY_EXPORT static TextPosition in(
        std::string_view text, std::size_t offset, const TextPosition& earlier);

    /// `line 2, column 5`
    ORRENBY_EXPORT std::string description() const;

    friend bool operator==(const TextPosition&, const TextPosition&) = default;
};

} // namespace orrenby
