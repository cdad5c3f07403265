#pragma once

/// @file
/// Places on a plane.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include <cstddef>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// A place on a plane, in whatever unit the drawing has. It prints as `(x, y)`.
///
/// Zero and negative zero are equal and have one hash. A plain value. Not synchronised.
struct Point {
    double x = 0; ///< In the unit of the drawing, as `y`; any number, also one that is not finite.
    double y = 0; ///< Which way is up, the drawing says.

    std::string description() const { return "(" + describe(x) + ", " + describe(y) + ")"; }
    std::string debugDescription() const { return "Point" + description(); }

    friend constexpr bool operator==(const Point&, const Point&) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::Point> {
    /// By x, then y; the hash of a negative zero is that of zero.
    std::size_t operator()(const orrenby::Point& point) const noexcept
    {
        const auto side = [](double length) { return std::hash<double>{}(length == 0 ? 0.0 : length); };
        return side(point.x) * 0x9E3779B97F4A7C15U + side(point.y);
    }
};
