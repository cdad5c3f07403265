#pragma once

/// @file
/// The guard between the two engines.

#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Ends the process if a stream object of one engine is used as one of the other.
inline void checkEngine(Engine actual, Engine wanted) noexcept
{
    if (actual != wanted) [[unlikely]]
        fatalError("A stream object of one engine was used with the other engine", "Platform/Engines");
}

} // namespace orrenby::detail
