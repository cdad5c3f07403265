#pragma once

/// @file
/// Ranges between two bounds.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// From a lower bound up to, but not including, an upper one. A lower bound above the upper is a programming
/// error and ends the process.
///
/// A plain value. Not synchronised.
template <class Bound> class Range {
public:
    /// A lower bound above the upper ends the process.
    constexpr Range(Bound lower, Bound upper)
        : m_lower(std::move(lower))
        , m_upper(std::move(upper))
    {
        if (!(m_lower <= m_upper))
            fatalError("The lower bound of a range is above its upper bound", "Standard/Ranges", 20);
    }

    /// The first value that belongs to it, unless it is empty.
    constexpr const Bound& lowerBound() const noexcept { return m_lower; }

    /// The first value behind it.
    constexpr const Bound& upperBound() const noexcept { return m_upper; }

    /// Whether the bounds are equal, so that nothing belongs to it.
    constexpr bool isEmpty() const { return m_lower == m_upper; }

    /// Whether lower ≤ value < upper.
    constexpr bool contains(const Bound& value) const { return m_lower <= value && value < m_upper; }

    /// `1..<3`
    std::string description() const { return describe(m_lower) + "..<" + describe(m_upper); }

    friend constexpr bool operator==(const Range&, const Range&) = default;

private:
    Bound m_lower;
    Bound m_upper;
};

/// As `Range`, but the upper bound belongs to it, so that it is never empty.
template <class Bound> class ClosedRange {
public:
    /// A lower bound above the upper ends the process.
    constexpr ClosedRange(Bound lower, Bound upper)
        : m_lower(std::move(lower))
        , m_upper(std::move(upper))
    {
        if (!(m_lower <= m_upper))
            fatalError("The lower bound of a range is above its upper bound", "Standard/Ranges", 45);
    }

    /// The first value that belongs to it.
    constexpr const Bound& lowerBound() const noexcept { return m_lower; }

    /// The last value that belongs to it.
    constexpr const Bound& upperBound() const noexcept { return m_upper; }

    /// Whether lower ≤ value ≤ upper.
    constexpr bool contains(const Bound& value) const { return m_lower <= value && value <= m_upper; }

    /// `1...3`
    std::string description() const { return describe(m_lower) + "..." + describe(m_upper); }

    friend constexpr bool operator==(const ClosedRange&, const ClosedRange&) = default;

private:
    Bound m_lower;
    Bound m_upper;
};

} // namespace orrenby

template <class Bound> struct std::hash<orrenby::Range<Bound>> {
    std::size_t operator()(const orrenby::Range<Bound>& range) const
    {
        const std::hash<Bound> ofBound;
        return ofBound(range.lowerBound()) * 0x9E3779B97F4A7C15U + ofBound(range.upperBound());
    }
};
template <class Bound> struct std::hash<orrenby::ClosedRange<Bound>> {
    std::size_t operator()(const orrenby::ClosedRange<Bound>& range) const
    {
        const std::hash<Bound> ofBound;
        return ofBound(range.lowerBound()) * 0x9E3779B97F4A7C15U + ofBound(range.upperBound());
    }
};
