#pragma once

/// @file
/// What is logged while a test runs.

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Testing/Printing.hpp"
#include "Orrenby/Utilities/Log/CaptureHandler.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

/// What a test may choose about its log.
struct LogCaptureOptions {
    /// The lowest level that is captured.
    Log::Level level = Log::Level::debug;
    /// Whether events carry emoji for levels and queues, or codes.
    bool useEmoji = false;
};

/// Captures the log while it lives, instead of the handlers that were installed before, and puts these and
/// the settings back at its end.
///
/// @snippet Tests/Testing/LogCaptureTests.cpp Capturing the log
///
/// Several nest like the scopes they stand in; the innermost gets the entries. Safe to use from several
/// threads, also while others log. Those that log must be done before it ends, or start after it.
class ORRENBY_EXPORT LogCapture {
public:
    /// What an entry consists of, and a critical error.
    using Entry = Log::CaptureHandler::Entry;
    using CriticalError = Log::CaptureHandler::CriticalError;

    /// Takes the place of the log's handlers until the end of the scope.
    explicit LogCapture(LogCaptureOptions options = {});
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture();

    /// In the order in which they came, with everything that is known of them.
    std::vector<Entry> entries() const { return m_captured.entries(); }

    /// How many entries came, of all levels or of exactly one.
    std::size_t count() const { return m_captured.count(); }
    std::size_t count(Log::Level level) const { return m_captured.count(level); }

    /// The messages in the order in which they came, of all entries or of those of one level.
    std::vector<std::string> messages() const { return m_captured.messages(); }
    std::vector<std::string> messages(Log::Level level) const { return m_captured.messages(level); }

    /// Level, message and properties of each entry, without places and queues: `Warning: disk is full
    /// ["free": 0]`. What a test compares as a whole.
    std::vector<std::string> lines() const;

    /// Whether there is an entry of exactly this level and message.
    bool contains(Log::Level level, std::string_view message) const
    {
        return m_captured.contains(level, message);
    }

    /// What reached the handler of critical errors.
    std::vector<CriticalError> criticalErrors() const { return m_captured.criticalErrors(); }

    /// Forgets all entries and critical errors.
    void clear() { m_captured.clear(); }

    /// The lines as a list, for messages of failed tests.
    std::string description() const;

private:
    struct Settings;

    const std::unique_ptr<const Settings> m_previous;
    const Log::CaptureHandler m_captured;
};

} // namespace orrenby::testing
