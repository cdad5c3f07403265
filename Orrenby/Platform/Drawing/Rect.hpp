#pragma once

/// @file
/// Rectangles.

#include "Orrenby/Platform/Drawing/Point.hpp"
#include "Orrenby/Platform/Drawing/Size.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// A rectangle whose sides are upright and level: one corner, and how far it reaches from there.
///
/// Which corner that is, is for the drawing to say. It prints as `((x, y), (width, height))`. A plain value.
/// Not synchronised.
struct Rect {
    Point origin{}; ///< One corner.
    Size size{};    ///< How far it reaches from there.

    /// Whether it covers nothing: a side is zero, negative or not a number.
    constexpr bool isEmpty() const noexcept { return !(size.width > 0 && size.height > 0); }

    std::string description() const { return "(" + origin.description() + ", " + size.description() + ")"; }
    std::string debugDescription() const { return "Rect" + description(); }

    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::Rect> {
    std::size_t operator()(const orrenby::Rect& rect) const noexcept
    {
        return std::hash<orrenby::Point>{}(rect.origin) * 0x9E3779B97F4A7C15U
            + std::hash<orrenby::Size>{}(rect.size);
    }
};
