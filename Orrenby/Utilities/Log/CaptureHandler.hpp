#pragma once

/// @file
/// A log handler that remembers what was logged.

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/Log/DeferredEvent.hpp"
#include "Orrenby/Utilities/Log/Event.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::Log {

/// Keeps every entry, for tests and for reports that show the latest ones.
///
/// It serves as event handler, as critical-error handler, or as both. It never forgets by itself: call
/// `clear()`.
///
/// @snippet Tests/Utilities/Log/CaptureHandlerTests.cpp Capturing entries
///
/// A handle: copies share what they captured. Safe to use from several threads.
class ORRENBY_EXPORT CaptureHandler {
public:
    /// An entry as it came.
    struct Entry {
        Level level; ///< That of the call.
        Event event; ///< Whole: it was made when it was captured.
        friend bool operator==(const Entry&, const Entry&) = default;
    };

    /// What the handler of critical errors was called with.
    struct CriticalError {
        Event event;   ///< Whole: it was made when it was captured.
        NSError error; ///< Made from the entry, or the error that was logged.
        friend bool operator==(const CriticalError&, const CriticalError&) = default;
    };

    CaptureHandler();

    /// Keeps an entry, a critical error.
    void operator()(Level level, const DeferredEvent& event) const;
    void operator()(const Event& event, const NSError& error) const;

    /// In the order in which they came.
    std::vector<Entry> entries() const;
    /// What the critical-error handler was called with.
    std::vector<CriticalError> criticalErrors() const;

    /// How many entries were captured, of all levels or of exactly one.
    std::size_t count() const;
    std::size_t count(Level level) const;

    /// The messages in the order in which they came, of all levels or of exactly one.
    std::vector<std::string> messages() const;
    std::vector<std::string> messages(Level level) const;
    /// Whether there is an entry of exactly this level and message.
    bool contains(Level level, std::string_view message) const;

    /// Forgets all that it captured; its copies forget it, too.
    void clear() const;

private:
    struct Contents;
    std::shared_ptr<Contents> m_contents;
};

} // namespace orrenby::Log
