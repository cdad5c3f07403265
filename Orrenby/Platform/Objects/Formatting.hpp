#pragma once

/// @file
/// Values formatted by libfmt. Not in the umbrella header: it includes libfmt, which the program has to link.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include <fmt/ranges.h>
#include <string>
#include <type_traits>

/// Formats any value of the library that has a `description()`.
///
/// What stands behind the colon is that of text: `{:>20}`. `{:?}` gives the form of `debugDescribe`. A list
/// of such values looks as `describe` prints it.
///
/// @snippet Tests/Platform/Objects/FormattingTests.cpp Formatting values
///
/// Safe to use from several threads.
template <orrenby::detail::Printed T>
struct fmt::formatter<T, char> : fmt::formatter<fmt::string_view, char> {
    /// Takes "?" for the debug form, nothing for the plain one.
    constexpr auto parse(fmt::format_parse_context& context)
    {
        const auto* begin = context.begin();
        if (begin != context.end() && *begin == '?') {
            m_isDebugForm = true;
            context.advance_to(begin + 1);
        }
        return fmt::formatter<fmt::string_view, char>::parse(context);
    }
    /// Asked for by lists.
    constexpr void set_debug_format(bool isDebugForm = true) { m_isDebugForm = isDebugForm; }

    /// Writes the printed form.
    template <class Context> auto format(const T& value, Context& context) const
    {
        const std::string text = m_isDebugForm ? orrenby::debugDescribe(value) : orrenby::describe(value);
        return fmt::formatter<fmt::string_view, char>::format(text, context);
    }

private:
    bool m_isDebugForm = false;
};

/// A set is formatted in its own printed form, not as any list.
template <orrenby::detail::Printed T> struct fmt::is_range<T, char> : std::false_type {};
