#pragma once

/// @file
/// What integers lack: spans of time, tests of ranges, and of being even.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Standard/Ranges.hpp"
#include <concepts>
#include <cstdint>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

constexpr std::int64_t multiplied(std::int64_t count, std::int64_t factor, int line)
{
    std::int64_t product = 0;
    if (__builtin_mul_overflow(count, factor, &product))
        fatalError("The number of seconds does not fit in 64 bits", "Standard/Integers", line);
    return product;
}

} // namespace detail

/// Whether lower bound ≤ value < upper bound. Integers of different widths and signs compare by their values.
///
/// @snippet Tests/Standard/IntegersTests.cpp Counting time
template <std::integral Value, std::integral Bound>
constexpr bool in(Value value, const Range<Bound>& range) noexcept
{
    return std::cmp_less_equal(range.lowerBound(), value) && std::cmp_less(value, range.upperBound());
}

/// Whether lower bound ≤ value ≤ upper bound.
template <std::integral Value, std::integral Bound>
constexpr bool in(Value value, const ClosedRange<Bound>& range) noexcept
{
    return std::cmp_less_equal(range.lowerBound(), value) && std::cmp_less_equal(value, range.upperBound());
}

/// Whether the value is a multiple of 2: also 0 and negative even numbers.
///
/// @snippet Tests/Standard/IntegersTests.cpp Telling even from odd
template <std::integral Integer> constexpr bool isEven(Integer value) noexcept { return value % 2 == 0; }

/// So many minutes in seconds. More seconds than 64 bits hold are a programming error and end the process.
template <std::signed_integral Integer> constexpr double minutes(Integer count)
{
    return static_cast<double>(detail::multiplied(count, 60, 46));
}

/// So many hours in seconds. More seconds than 64 bits hold are a programming error and end the process.
template <std::signed_integral Integer> constexpr double hours(Integer count)
{
    return static_cast<double>(detail::multiplied(count, 3600, 52));
}

/// So many days in seconds. The days count as hours until they are a floating number: it is those hours'
/// seconds, a 24th of the result, that have to fit in 64 bits.
template <std::signed_integral Integer> constexpr double days(Integer count)
{
    return static_cast<double>(detail::multiplied(count, 3600, 59)) * 24.0;
}

} // namespace orrenby
