#pragma once

/// @file
/// The service that reports are uploaded to. There is none: it is simulated.

namespace fieldbook {

/// Fails as services do, and in the same way every time: which attempt succeeds follows from the number of
/// the report. Every third report is taken at once, the next one at the second attempt, the next one at the
/// third; numbers that end in 3 never are.
struct UploadService {
    /// Seconds until it answers.
    static constexpr double latency = 0.5;

    /// @param attempt  From 1.
    static bool accepts(int number, int attempt) { return number % 10 != 3 && attempt > number % 3; }
};

} // namespace fieldbook
