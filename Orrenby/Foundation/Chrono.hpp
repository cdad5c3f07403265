#pragma once

/// @file
/// The operations of this floor that take seconds, with durations of the standard library. Not in the
/// umbrella header: including `<chrono>` costs more than the rest of the floor.

#include "Orrenby/Foundation/Countdowns.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Scheduling/Chrono.hpp"
#include <chrono>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// See `formattedCountdown` for seconds.
///
/// @snippet Tests/Foundation/ChronoTests.cpp Counting down a duration
template <class Rep, class Period>
std::string formattedCountdown(std::chrono::duration<Rep, Period> timeRemaining)
{
    return formattedCountdown(inSeconds(timeRemaining));
}

/// See `formattedCountdownForTimeRemainingWithMilliseconds` for seconds.
template <class Rep, class Period>
std::string formattedCountdownForTimeRemainingWithMilliseconds(
    std::chrono::duration<Rep, Period> timeRemaining)
{
    return formattedCountdownForTimeRemainingWithMilliseconds(inSeconds(timeRemaining));
}

} // namespace orrenby
