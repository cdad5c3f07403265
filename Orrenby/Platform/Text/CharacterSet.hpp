#pragma once

/// @file
/// Sets of Unicode scalar values.

#include "Orrenby/Platform/Export.hpp"
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A set of Unicode scalar values: what to trim, what to leave unescaped.
///
/// It knows single scalar values, not the characters that people see, which may consist of several.
///
/// @snippet Tests/Platform/Text/CharacterSetTests.cpp Asking for members
///
/// A plain value. The ready-made sets live as long as the process. Not synchronised, but the ready-made sets
/// are safe to use from several threads.
class ORRENBY_EXPORT CharacterSet {
public:
    /// Empty.
    CharacterSet() = default;

    /// The scalar values of a text. What is no UTF-8 adds U+FFFD.
    explicit CharacterSet(std::string_view members);

    /// All from the first to the last, both included; empty when they stand in the wrong order. Surrogates
    /// and numbers above U+10FFFF are left out.
    static CharacterSet fromRange(char32_t first, char32_t last);

    /// Space, tab, and every space of other scripts and widths (category Zs).
    static const CharacterSet& whitespaces();

    /// U+000A to U+000D, U+0085, U+2028 and U+2029.
    static const CharacterSet& newlines();

    /// Both together. U+200B, which has no width, is no white space.
    static const CharacterSet& whitespacesAndNewlines();

    /// What may stand in the query of a URL as it is (RFC 3986): ASCII letters and digits, and
    /// `-._~!$&'()*+,;=:@/?`.
    static const CharacterSet& urlQueryAllowed();

    /// Constant time in ASCII, else the logarithm of the number of stretches.
    bool contains(char32_t scalar) const noexcept
    {
        if (scalar < 128)
            return ((m_ascii[scalar / 64] >> (scalar % 64)) & 1U) != 0;
        return containsBeyondASCII(scalar);
    }

    /// The scalar values that are not in this set.
    CharacterSet inverted() const;

    /// Those that are in either.
    CharacterSet union_(const CharacterSet& other) const;

    /// Those that are in both.
    CharacterSet intersection(const CharacterSet& other) const;

    /// Whether no character is a member.
    bool isEmpty() const noexcept { return m_stretches.empty(); }

    /// What follows each other as one stretch: `U+0009 to U+000D, U+0020`; `none` when empty.
    std::string description() const;

    /// Linear in the number of stretches.
    std::size_t hash() const noexcept;

    friend bool operator==(const CharacterSet& first, const CharacterSet& second) noexcept
    {
        return first.m_stretches == second.m_stretches;
    }

private:
    /// Scalar values that follow each other, both ends included.
    struct Stretch {
        char32_t first;
        char32_t last;

        friend constexpr bool operator==(const Stretch&, const Stretch&) = default;
    };

    explicit CharacterSet(std::vector<Stretch> stretches);
    static void addRange(std::vector<Stretch>& stretches, char32_t first, char32_t last);
    bool containsBeyondASCII(char32_t scalar) const noexcept;

    /// A bit for each ASCII character, which is what is asked for most.
    std::array<std::uint64_t, 2> m_ascii{};
    /// In order, with a gap between each two.
    std::vector<Stretch> m_stretches;
};

} // namespace orrenby

template <> struct std::hash<orrenby::CharacterSet> {
    std::size_t operator()(const orrenby::CharacterSet& set) const noexcept { return set.hash(); }
};
