#pragma once

/// @file
/// The calls of this room that take seconds, with durations of the standard library. Not in the umbrella
/// header: including `<chrono>` costs more than the rest of the room.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/Timer.hpp"
#include <chrono>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// A duration as the seconds that the library counts in.
///
/// @snippet Tests/Platform/Scheduling/ChronoTests.cpp Delaying by a duration
///
/// Exact up to the 53 bits of a `double`. Safe to use from several threads.
template <class Rep, class Period>
constexpr double inSeconds(std::chrono::duration<Rep, Period> duration) noexcept
{
    return std::chrono::duration<double>(duration).count();
}

/// See `DispatchQueue::asyncAfter`.
template <class Rep, class Period>
void asyncAfter(const DispatchQueue& queue, std::chrono::duration<Rep, Period> delay,
    UniqueFunction<void()> work, TraceSite site = TraceSite::current())
{
    queue.asyncAfter(inSeconds(delay), std::move(work), site);
}

/// See `RunLoop::runFor`.
template <class Rep, class Period> void runFor(RunLoop& loop, std::chrono::duration<Rep, Period> duration)
{
    loop.runFor(inSeconds(duration));
}

/// See `Timer::timerWithTimeInterval`.
template <class Rep, class Period>
Ref<Timer> timerWithTimeInterval(
    std::chrono::duration<Rep, Period> interval, bool repeats, Timer::Block block)
{
    return Timer::timerWithTimeInterval(inSeconds(interval), repeats, std::move(block));
}

/// See `Timer::scheduledTimerWithTimeInterval`.
template <class Rep, class Period>
Ref<Timer> scheduledTimerWithTimeInterval(std::chrono::duration<Rep, Period> interval, bool repeats,
    Timer::Block block, TraceSite site = TraceSite::current())
{
    return Timer::scheduledTimerWithTimeInterval(inSeconds(interval), repeats, std::move(block), site);
}

} // namespace orrenby
