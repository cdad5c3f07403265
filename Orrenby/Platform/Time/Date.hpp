#pragma once

/// @file
/// A moment in time.

#include "Orrenby/Platform/Export.hpp"
#include <compare>
#include <cstddef>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// A moment, as seconds since 1970-01-01T00:00:00Z.
///
/// It knows no calendar, zone or locale: days, months and printed forms for people belong to the formatters.
/// Leap seconds are not counted, as everywhere on this platform.
///
/// @snippet Tests/Platform/Time/DateTests.cpp Reckoning with moments
///
/// A plain value of eight bytes. Near the present a step is about 0.2 microseconds. Not synchronised.
class Date {
public:
    /// 1970-01-01T00:00:00Z.
    constexpr Date() noexcept = default;

    /// @param seconds  Seconds since 1970-01-01T00:00:00Z, negative before it. Infinite ones are the ends of
    /// time.
    constexpr explicit Date(double seconds) noexcept
        : m_seconds(seconds)
    {}

    /// The present moment of the current world's clock.
    ORRENBY_EXPORT static Date now();

    /// Before every moment.
    static constexpr Date distantPast() noexcept { return Date(-__builtin_inf()); }

    /// After every moment.
    static constexpr Date distantFuture() noexcept { return Date(__builtin_inf()); }

    /// Negative before 1970, infinite for the two distant dates.
    constexpr double secondsSince1970() const noexcept { return m_seconds; }

    /// Seconds from `other` to this moment; negative when this one is earlier.
    constexpr double secondsSince(Date other) const noexcept { return m_seconds - other.m_seconds; }

    /// The moment in UTC, whole seconds rounded down: `2026-11-21 10:00:00 +0000`.
    ///
    /// Years before 1 and after 9999 carry their sign (`-0043`, `+12026`). A moment beyond a billion years,
    /// or none at all, is written as its seconds: `inf`.
    ORRENBY_EXPORT std::string description() const;

    /// Moves the moment by seconds, which may be fractions, negative or infinite.
    constexpr Date& operator+=(double seconds) noexcept
    {
        m_seconds += seconds;
        return *this;
    }
    constexpr Date& operator-=(double seconds) noexcept
    {
        m_seconds -= seconds;
        return *this;
    }

    /// The moment moved by seconds, which may be fractions, negative or infinite.
    friend constexpr Date operator+(Date date, double seconds) noexcept
    {
        return Date(date.m_seconds + seconds);
    }
    friend constexpr Date operator-(Date date, double seconds) noexcept
    {
        return Date(date.m_seconds - seconds);
    }

    /// Seconds between the two; negative when the first is earlier.
    friend constexpr double operator-(Date later, Date earlier) noexcept
    {
        return later.secondsSince(earlier);
    }

    friend constexpr bool operator==(Date, Date) noexcept = default;
    friend constexpr std::partial_ordering operator<=>(Date, Date) noexcept = default;

private:
    double m_seconds = 0;
};

} // namespace orrenby

/// Equal moments hash alike, 0 and −0 included.
template <> struct std::hash<orrenby::Date> {
    std::size_t operator()(orrenby::Date date) const noexcept
    {
        return std::hash<double>()(date.secondsSince1970());
    }
};
