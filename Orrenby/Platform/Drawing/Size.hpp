#pragma once

/// @file
/// Widths and heights.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include <cstddef>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// A width and a height, in whatever unit the drawing has. It prints as `(width, height)`.
///
/// Zero and negative zero are equal and have one hash. A plain value. Not synchronised.
struct Size {
    double width = 0;  ///< In the unit of the drawing, as the height; any number is kept.
    double height = 0; ///< Upwards or downwards alike.

    /// Both sides have this length.
    static constexpr Size square(double length) noexcept { return {length, length}; }

    std::string description() const { return "(" + describe(width) + ", " + describe(height) + ")"; }
    std::string debugDescription() const { return "Size" + description(); }

    friend constexpr bool operator==(const Size&, const Size&) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::Size> {
    /// By the width, then the height; the hash of a negative zero is that of zero.
    std::size_t operator()(const orrenby::Size& size) const noexcept
    {
        const auto side = [](double length) { return std::hash<double>{}(length == 0 ? 0.0 : length); };
        return side(size.width) * 0x9E3779B97F4A7C15U + side(size.height);
    }
};
