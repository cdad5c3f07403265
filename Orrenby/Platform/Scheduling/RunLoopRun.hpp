#pragma once

/// @file
/// One run of a run loop. Not in the umbrella header: part of RunLoop.cpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Scheduling/RunLoopCore.hpp"
#include <atomic>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A run that is going on.
struct RunLoopCore::Frame {
    Mode& mode;
    Frame* outer;
    std::atomic<bool> isStopped = false;
};

} // namespace orrenby::detail
