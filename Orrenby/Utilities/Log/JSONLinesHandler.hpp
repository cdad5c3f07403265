#pragma once

/// @file
/// A log handler for programs that read the log.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include "Orrenby/Utilities/Log/DeferredEvent.hpp"
#include "Orrenby/Utilities/Log/Event.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI::Log {

/// Options of a `JSONLinesHandler`.
struct JSONLinesOptions {
    /// Where to; standard output by default. Stays open as long as the handler is used.
    int descriptor = 1;
    /// Entries below it are not written, and their events are not made.
    Level level = Level::debug;
};

/// Writes each entry as one JSON object on a line of its own.
///
/// @snippet Tests/Utilities/Log/JSONLinesHandlerTests.cpp Writing a line
///
/// The members are `time` (UTC), `level` and `queue` (by name, whatever `Log::useEmoji()` says), `file`,
/// `line`, `function`, `message` and, when there are any, `properties`. Lists, sets and dictionaries among
/// these are nested, up to 64 deep; what lies deeper is "…". Numbers that JSON does not know, bytes and
/// objects are written as their printed forms.
///
/// Whatever the texts hold, a line is valid JSON and valid UTF-8: what is no UTF-8 becomes U+FFFD.
///
/// Each line goes out in one call; failures to write are ignored. Safe to use from several threads, as
/// `ConsoleHandler`.
class ORRENBY_EXPORT JSONLinesHandler {
public:
    /// Keeps the options; nothing is opened.
    explicit JSONLinesHandler(JSONLinesOptions options = {});

    /// Writes one line, unless the level is below that of the options.
    void operator()(Level level, const DeferredEvent& event) const;

    /// The line, with its line end.
    static std::string line(Level level, const Event& event, Date time);

private:
    int m_descriptor;
    Level m_level;
};

} // namespace orrenby::Log
