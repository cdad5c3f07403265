#pragma once

/// @file
/// The guard between the two engines.

#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Ends the process: a stream object of one engine was used as one of the other.
[[noreturn]] ORRENBY_EXPORT void engineMismatch() noexcept;

/// Ends the process if a stream object of one engine is used as one of the other.
inline void checkEngine(Engine actual, Engine wanted) noexcept
{
    if (actual != wanted) [[unlikely]]
        engineMismatch();
}

} // namespace orrenby::detail
