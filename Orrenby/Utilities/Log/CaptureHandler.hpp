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
    struct Entry {
        Level level;
        Event event;
        friend bool operator==(const Entry&, const Entry&) = default;
    };
    struct CriticalError {
        Event event;
        NSError error;
        friend bool operator==(const CriticalError&, const CriticalError&) = default;
    };

    CaptureHandler();

    void operator()(Level level, const DeferredEvent& event) const;
    void operator()(const Event& event, const NSError& error) const;

    /// In the order in which they came.
    std::vector<Entry> entries() const;
    /// What the critical-error handler was called with.
    std::vector<CriticalError> criticalErrors() const;

    std::size_t count() const;
    std::size_t count(Level level) const;
    std::vector<std::string> messages() const;
    std::vector<std::string> messages(Level level) const;
    /// Whether there is an entry of exactly this level and message.
    bool contains(Level level, std::string_view message) const;

    void clear() const;

private:
    struct Contents;
    std::shared_ptr<Contents> m_contents;
};

} // namespace orrenby::Log
