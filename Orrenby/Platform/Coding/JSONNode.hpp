#pragma once

/// @file
/// The row of the table that a JSON text is read into. Not in the umbrella header: part of the coders' own
/// workings.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI {

/// The kinds of JSON values.
enum class JSONKind : std::uint8_t { Null, Bool, Number, Text, List, Object };

namespace detail {

/// One value, together with the key under which it stands in its object.
struct JSONNode {
    std::uint32_t keyOffset; ///< Of the key's text in the source, or of its copy.
    std::uint32_t bits;      ///< Kind, flags, and the length of a key that is not copied.
    std::uint32_t offset;    ///< Of the value in the source.
    /// Numbers and texts: the length, or the place of a copied text. Lists and objects: the node after the
    /// last one inside.
    std::uint32_t extent;

    static constexpr std::uint32_t kindMask = 7;
    static constexpr std::uint32_t isTrue = 8;  ///< Of a boolean.
    static constexpr std::uint32_t isPlain = 8; ///< Of a number: digits alone, with or without a sign.
    static constexpr std::uint32_t keyIsCopied = 16;
    static constexpr std::uint32_t textIsCopied = 32;
    static constexpr std::uint32_t keyLengthShift = 6;
    static constexpr std::uint32_t longestKeyInPlace = (1U << 26U) - 1;

    JSONKind kind() const noexcept { return static_cast<JSONKind>(bits & kindMask); }
    bool is(std::uint32_t flag) const noexcept { return (bits & flag) != 0; }
    bool holdsOthers() const noexcept { return kind() >= JSONKind::List; }
    std::uint32_t keyLength() const noexcept { return bits >> keyLengthShift; }
};
static_assert(sizeof(JSONNode) == 16);

} // namespace detail

} // namespace orrenby
