#pragma once

/// @file
/// The callable that a timer may carry. Not in the umbrella header: `<functional>` costs every file that
/// includes it.

#include "Orrenby/Platform/Export.hpp"
#include <functional>

namespace orrenby::inline ORRENBY_ABI {

class Timer;

/// A callable that receives the timer, in the form in which a timer's user info may carry one.
using TimerBlock = std::function<void(Timer&)>;

} // namespace orrenby
