#pragma once

/// @file
/// What values that can be compared lack.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Standard/Ranges.hpp"
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

/// The bounds of `isBetween`. Without `inclusive` the bounds themselves are not between them.
template <class T> struct Between {
    T min{};               ///< The lower bound.
    T max{};               ///< The upper bound; below `min`, nothing lies between them.
    bool inclusive = true; ///< Whether the bounds themselves count.
};

/// The value, or the bound of the range that it lies beyond.
///
/// @snippet Tests/Standard/ComparablesTests.cpp Keeping a value in bounds
template <class T> constexpr T clamped(const T& value, const std::type_identity_t<ClosedRange<T>>& range)
{
    const T& raised = value < range.lowerBound() ? range.lowerBound() : value;
    return range.upperBound() < raised ? range.upperBound() : raised;
}

/// Whether min ≤ value ≤ max, or min < value < max when not inclusive. Bounds in the wrong order have nothing
/// between them.
template <class T> constexpr bool isBetween(const T& value, const std::type_identity_t<Between<T>>& bounds)
{
    return bounds.inclusive ? bounds.min <= value && value <= bounds.max
                            : bounds.min < value && value < bounds.max;
}

} // namespace orrenby
