#pragma once

/// @file
/// Back-off schedules: how long to wait before the next attempt.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <optional>
#include <variant>

namespace orrenby::inline ORRENBY_ABI {

/// Hands out the delay before each further attempt at something that failed.
///
/// A schedule only counts: it neither sleeps nor calls anything, so the caller keeps the clock and the
/// thread.
///
/// @snippet Tests/Utilities/RetryTests.cpp Retrying until it works
///
/// Not copyable: two holders of one schedule share it by reference, so that an attempt is counted once.
///
/// Not synchronised: one caller at a time.
class ORRENBY_EXPORT Retry {
public:
    /// Each delay is the one before it times `base`; the first is the interval itself.
    struct Exponential {
        double base = 2; ///< What each delay is multiplied by; 1 keeps the interval.
        friend bool operator==(const Exponential&, const Exponential&) = default;
    };

    /// Delays grow by the interval: 1×, 2×, 3× …
    struct Linear {
        friend bool operator==(const Linear&, const Linear&) = default;
    };

    /// A whole number of intervals, drawn evenly below 2^(attempt − 1) from the random source of the current
    /// world; the first is always 0.
    ///
    /// From the 33rd attempt on that bound does not fit in 32 bits, which ends the process: keep the limit at
    /// 32 or below.
    struct ExponentialJitter {
        friend bool operator==(const ExponentialJitter&, const ExponentialJitter&) = default;
    };

    /// How the delays grow.
    using Method = std::variant<Exponential, Linear, ExponentialJitter>;

    /// @param interval  Base delay in seconds.
    /// @param limit     Attempts that get a delay. With 0 the first call already gives nothing.
    Retry(double interval, std::int64_t limit, Method method) noexcept;
    Retry(const Retry&) = delete;
    Retry& operator=(const Retry&) = delete;

    /// Counts one more attempt.
    ///
    /// Ends the process when the count is already the largest of 64 bits.
    ///
    /// @returns The delay before it in seconds, or nothing once `limit` delays were handed out. O(1).
    [[nodiscard]] std::optional<double> nextInterval();

    /// Attempts counted so far, those that got no delay included.
    std::int64_t count() const noexcept { return m_count; }

    /// Setting 0 restarts the schedule. After a negative number the schedule goes on as if there were
    /// attempts before the first: shorter exponential delays, linear ones of 0 and below, no jitter.
    void setCount(std::int64_t count) noexcept { m_count = count; }

private:
    double m_interval;
    std::int64_t m_limit;
    Method m_method;
    std::int64_t m_count = 0;
};

} // namespace orrenby
