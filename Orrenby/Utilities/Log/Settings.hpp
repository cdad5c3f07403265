#pragma once

/// @file
/// The settings of the log, one of each for the whole process.

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Utilities/Log/DeferredEvent.hpp"
#include "Orrenby/Utilities/Log/Event.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include <atomic>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Exported, so that an entry below the level costs a load, a comparison and a branch.
ORRENBY_EXPORT extern std::atomic<Log::Level::Case> logLevel;

} // namespace detail

namespace Log {

/// Receives every entry that passes the level, on the thread that made it, before the entry point returns.
///
/// The event is made when the handler calls the `DeferredEvent`, and not at all if it does not.
using EventHandler = UniqueFunction<void(Level, const DeferredEvent&)>;

/// Receives every critical entry, before the event handler does.
using CriticalErrorHandler = UniqueFunction<void(const Event&, const NSError&)>;

/// The lowest level that is passed on. At first `debug`, so that nothing is dropped.
inline Level level() noexcept { return detail::logLevel.load(std::memory_order_relaxed); }

/// Stores the level, then makes a `debug` entry "Log.level = …" that the new level may already drop.
ORRENBY_EXPORT void setLevel(Level level);

/// Whether events show levels and queues as emoji, which is so at first, or as codes.
ORRENBY_EXPORT bool useEmoji() noexcept;

/// Stores the choice, then makes a `debug` entry "Log.useEmoji = …".
ORRENBY_EXPORT void setUseEmoji(bool useEmoji);

} // namespace Log

namespace detail {

/// A handler, and the one that was installed before it.
template <class Handler> struct InstalledHandler {
    Handler handler;
    InstalledHandler* previous;
};

/// Null when there is none.
ORRENBY_EXPORT extern std::atomic<InstalledHandler<Log::EventHandler>*> logEventHandler;

/// Null when there is none. Exported for the test kit, which puts handlers back.
ORRENBY_EXPORT extern std::atomic<InstalledHandler<Log::CriticalErrorHandler>*> logCriticalErrorHandler;

} // namespace detail

namespace Log {

/// Installs what receives the entries, in place of the last one; an empty one removes it.
///
/// There is one handler; `TeeHandler` passes entries on to several. Handlers are called from every thread
/// that logs, at the same time, and may log themselves. What one throws passes to the caller of the entry
/// point.
///
/// Meant for start-up. A handler that was replaced is kept for the rest of the process, because another
/// thread may still be in it.
///
/// @snippet Tests/Utilities/Log/SettingsTests.cpp Installing a handler
///
/// All settings are safe to use from several threads; an entry that is made while one changes sees the old or
/// the new.
ORRENBY_EXPORT void onEvent(EventHandler handler);

/// Installs what receives critical entries, in all else as `onEvent`.
///
/// The error is the item's own, if it has one. Otherwise it is made up: its domain is the file name, followed
/// by a blank and the text where the item is a static text; its code is the line, or 0 where the function's
/// name contains a "(".
ORRENBY_EXPORT void onCriticalError(CriticalErrorHandler handler);

} // namespace Log

} // namespace orrenby
