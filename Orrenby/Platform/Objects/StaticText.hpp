#pragma once

/// @file
/// Text that is part of the program itself.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Text that is written in the source: a literal or a static array. It ends at its first NUL.
///
/// Run-time text does not compile, so what is logged as an event of its own can be grouped by its text, and a
/// pointer to it never dangles. A plain value of two words. Not synchronised.
class StaticText {
public:
    /// A literal or an array with static lifetime; anything else does not compile. Ends at the first NUL.
    template <std::size_t N>
    consteval StaticText(const char (&text)[N])
        : m_text(text)
    {}

    /// Good for the whole run of the process.
    constexpr std::string_view view() const noexcept { return m_text; }
    constexpr operator std::string_view() const noexcept { return m_text; }
    friend constexpr bool operator==(StaticText, StaticText) = default;

private:
    std::string_view m_text;
};

} // namespace orrenby
