#pragma once

/// @file
/// Timers that are scheduled in one call, in any mode.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Scheduling/RunLoopMode.hpp"
#include "Orrenby/Platform/Scheduling/Timer.hpp"
#include "Orrenby/Platform/Scheduling/TimerBlock.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Calls `block` after `duration` seconds, or every `duration` seconds, on the current thread's run loop in
/// its default mode.
///
/// @snippet Tests/Utilities/Timer+BlockTests.cpp Scheduling in one call
///
/// The loop keeps the timer alive; whoever may want to stop it keeps the reference. What holds for durations
/// holds for those of `Timer::timerWithTimeInterval`.
ORRENBY_EXPORT Ref<Timer> scheduledTimer(
    double duration, bool repeats, Timer::Block block, TraceSite site = TraceSite::current());

/// The same in `mode` alone, which may be any text. `NSRunLoopCommonModes` stands for all common ones.
ORRENBY_EXPORT Ref<Timer> scheduledTimer(double duration, bool repeats, std::string_view mode,
    Timer::Block block, TraceSite site = TraceSite::current());

/// `scheduledTimer` in the default mode, under the name that callers use who know operations by name only.
ORRENBY_EXPORT Ref<Timer> scheduledTimerWithDuration(
    double duration, bool repeats, Timer::Block block, TraceSite site = TraceSite::current());

/// Calls what the timer carries as its user info, with the timer.
///
/// That is a `TimerBlock` or a plain `void (*)(Timer&)`. Anything else, also an empty one, is left alone.
ORRENBY_EXPORT void timerFired(Timer& timer);

} // namespace orrenby
