#pragma once

/// @file
/// Remaining time as text.

#include "Orrenby/Platform/Export.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// Hours, minutes and seconds: "01:02:05". Rounds to whole seconds first; hours go on beyond 24.
///
/// Negative and non-finite times are not caught: their parts print as numbers do, signs included ("-0").
///
/// @snippet Tests/Foundation/CountdownsTests.cpp Counting down
///
/// @param timeRemaining  In seconds.
///
/// The same in every language. Safe to use from several threads.
ORRENBY_EXPORT std::string formattedCountdown(double timeRemaining);

/// Minutes, seconds and two digits of the fraction, cut and not rounded: "02:05.25". Hours are dropped.
///
/// A negative time gives "00:00.00", with the exception of negative whole minutes, which print as
/// `formattedCountdown` prints them. A time that is infinite or no number is a programming error and ends the
/// process.
///
/// @param timeRemaining  In seconds.
ORRENBY_EXPORT std::string formattedCountdownForTimeRemainingWithMilliseconds(double timeRemaining);

} // namespace orrenby
