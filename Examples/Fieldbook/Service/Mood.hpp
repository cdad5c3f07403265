#pragma once

/// @file
/// How willing a service is.

namespace fieldbook {

/// Fails as services do, and in the same way every time: which attempt succeeds follows from the number of
/// the report. Every third report is taken at once, the next one at the second attempt, the next one at the
/// third; numbers that end in 3 never are.
///
/// @param attempt  From 1.
constexpr bool isTakenWhenMoody(int number, int attempt) { return number % 10 != 3 && attempt > number % 3; }

/// Takes everything.
constexpr bool isAlwaysTaken(int, int) { return true; }

} // namespace fieldbook
