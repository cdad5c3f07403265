#pragma once

/// @file
/// A log handler for people who watch a terminal.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include "Orrenby/Utilities/Log/DeferredEvent.hpp"
#include "Orrenby/Utilities/Log/Event.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI::Log {

/// Options of a `ConsoleHandler`.
struct ConsoleOptions {
    /// When lines are coloured.
    enum class Colour {
        automatic, ///< When the descriptor is a terminal and the environment variable `NO_COLOR` is absent or
                   ///< empty.
        always,
        never
    };

    /// Where to; standard error by default. Stays open as long as the handler is used.
    int descriptor = 2;
    Colour colour = Colour::automatic; ///< When lines are coloured.
    /// Entries below it are not shown, and their events are not made.
    Level level = Level::debug;
};

/// Writes each entry as one line: `10:00:00.125 W Feed:120 load [MAIN] request failed`.
///
/// The time is that of the current world's clock, in UTC. Whatever the texts hold, an entry is one line of
/// UTF-8 and does not steer the terminal: control characters and marks of writing direction are written as
/// `\n` or `\u{001B}`, what is no UTF-8 as U+FFFD.
///
/// @snippet Tests/Utilities/Log/ConsoleHandlerTests.cpp Showing the log
///
/// Each line goes out in one call; nothing is buffered. Failures to write are ignored. Safe to use from
/// several threads: lines may change places, but do not mix as long as the system takes each whole, as it
/// does for files and, up to 4096 bytes, for pipes.
class ORRENBY_EXPORT ConsoleHandler {
public:
    /// Keeps the options; nothing is opened.
    explicit ConsoleHandler(ConsoleOptions options = {});

    /// Writes one line, unless the level is below that of the options.
    void operator()(Level level, const DeferredEvent& event) const;

    /// The line, with its line end.
    static std::string line(Level level, const Event& event, Date time, bool isColoured);

private:
    int m_descriptor;
    Level m_level;
    bool m_isColoured;
};

} // namespace orrenby::Log
