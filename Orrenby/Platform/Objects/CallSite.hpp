#pragma once

/// @file
/// The place in the source from which an operation was called.

#include "Orrenby/Platform/Export.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// File, line and plain function name of a caller.
///
/// An operation that reports its caller takes one as its last parameter, with `CallSite::current()` as
/// default, and the compiler fills it in at the call. The texts are the compiler's own and live as long as
/// the process.
///
/// @snippet Tests/Platform/Objects/CallSiteTests.cpp Taking the caller's place
///
/// A plain value; ten instructions at a call that passes it. Safe to use from several threads.
class CallSite {
public:
    /// A place spelled out, for entries that carry a fixed source position instead of the caller's. The texts
    /// are kept by pointer.
    constexpr CallSite(const char* file, int line, const char* function) noexcept
        : CallSite(file, line, function, true)
    {}

    /// The place of the caller, when it stands as a default argument.
    static constexpr CallSite current(const char* file = __builtin_FILE(), int line = __builtin_LINE(),
        const char* function = __builtin_FUNCTION()) noexcept
    {
        return {file, line, function, false};
    }

    /// The path as it was given to the compiler.
    constexpr const char* file() const noexcept { return m_file; }

    /// Counted from 1.
    constexpr int line() const noexcept { return m_line; }

    /// The plain name, without parameters, template arguments or enclosing scopes; of a place that is spelled
    /// out the name as it was given.
    constexpr std::string_view function() const noexcept
    {
        const auto name = std::string_view(m_function);
        return m_isSpelledOut || name.starts_with("operator") ? name : name.substr(0, name.find('<'));
    }

    /// Whether the texts are a caller's own, not the compiler's.
    constexpr bool isSpelledOut() const noexcept { return m_isSpelledOut; }

private:
    constexpr CallSite(const char* file, int line, const char* function, bool isSpelledOut) noexcept
        : m_file(file)
        , m_line(line)
        , m_isSpelledOut(isSpelledOut)
        , m_function(function)
    {}

    const char* m_file;
    int m_line;
    bool m_isSpelledOut; // takes no room: it stands in the gap behind the line
    const char* m_function;
};

} // namespace orrenby
