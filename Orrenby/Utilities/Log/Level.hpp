#pragma once

/// @file
/// How grave a log entry is.

#include "Orrenby/Platform/Export.hpp"
#include <optional>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::Log {

/// One of six levels, gravest last: `Log::Level::debug` to `Log::Level::critical`.
///
/// Levels compare by their raw values, 0 to 5, and can be switched over. One that was made without a value is
/// `debug`.
///
/// @snippet Tests/Utilities/Log/LevelTests.cpp Reading a level
///
/// A plain value of one word. Not synchronised.
class Level {
public:
    /// The six, for `switch`.
    enum Case : int { debug, info, event, warning, error, critical };

    /// One of the six; `debug` without any.
    constexpr Level(Case value = debug) noexcept
        : m_case(value)
    {}

    /// The level with a raw value; nothing outside 0 to 5.
    static constexpr std::optional<Level> make(int rawValue) noexcept
    {
        return rawValue >= debug && rawValue <= critical ? std::optional(Level(static_cast<Case>(rawValue)))
                                                         : std::nullopt;
    }

    /// For comparing and for `switch`.
    constexpr operator Case() const noexcept { return m_case; }

    /// From 0 for `debug` to 5 for `critical`.
    constexpr int rawValue() const noexcept { return m_case; }

    /// "Debug", "Info", "Event", "Warning", "Error" or "Critical".
    ORRENBY_EXPORT std::string_view description() const noexcept;

    /// One letter: "D", "I", "U", "W", "E" or "C". That of `event` is "U", because "E" belongs to `error`.
    ORRENBY_EXPORT std::string_view code() const noexcept;

    /// One picture, of one code point or of two.
    ORRENBY_EXPORT std::string_view emoji() const noexcept;

private:
    Case m_case;
};

} // namespace orrenby::Log
