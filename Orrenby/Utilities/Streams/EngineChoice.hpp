#pragma once

/// @file
/// Which of the two stream engines this process uses.

#include "Orrenby/Platform/Engines/Ground/EngineCheck.hpp"
#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// One vocabulary of publishers, subjects and cancellation handles over two stream engines.
///
/// A stream carries payloads, each a value or a failure; subscribers see every payload and are not told of
/// the end. The first operation that touches a stream fixes the engine for the rest of the process.
namespace Streams {

/// Options of `set`.
struct EngineOptions {
    /// Whether the Combine engine is used where the operating system reports version 13.0.0 or later;
    /// otherwise the Rx engine is.
    bool isCombineEnabledWhenAvailable = true;
};

/// Sets which engine the process will use. Once any stream operation has run, it does nothing.
///
/// @snippet Tests/Utilities/Streams/EngineChoiceTests.cpp Choosing the engine
///
/// For start-up, before any stream object exists. Not synchronised with a first stream operation on another
/// thread.
ORRENBY_EXPORT void set(EngineOptions options);

} // namespace Streams

namespace detail {

/// The engine choice of the process: 0 while it is open, afterwards 1 + the engine.
ORRENBY_EXPORT extern constinit std::atomic<std::uint8_t> engineChoice;

/// Fixes the choice and returns it.
ORRENBY_EXPORT Engine fixEngine() noexcept;

/// The engine of this process; fixes it at the first call. One byte is read.
inline Engine chosenEngine() noexcept
{
    const auto choice = engineChoice.load(std::memory_order_relaxed);
    return choice != 0 ? static_cast<Engine>(choice - 1) : fixEngine();
}

/// What every operation on a stream object begins with.
inline void useEngine(Engine actual) noexcept { checkEngine(actual, chosenEngine()); }

} // namespace detail

} // namespace orrenby
