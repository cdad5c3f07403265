#pragma once

/// @file
/// Colours.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A colour of the sRGB space with 8 bits for each part, and how much it covers: 255 is all, 0 nothing.
///
/// It prints as `#rrggbb`, and as `#rrggbbaa` when something shines through.
///
/// @snippet Tests/Platform/Drawing/ColorTests.cpp Mixing colours
///
/// A plain value. Not synchronised.
struct ORRENBY_EXPORT Color {
    std::uint8_t red = 0;     ///< From 0 to 255, as the others are.
    std::uint8_t green = 0;   ///< In sRGB, not multiplied by `alpha`.
    std::uint8_t blue = 0;    ///< In sRGB, not multiplied by `alpha`.
    std::uint8_t alpha = 255; ///< How much it covers: 0 is nothing, 255 all.

    /// `Color::rgb(0x336699)`; what stands above 24 bits is left out.
    static constexpr Color rgb(std::uint32_t value) noexcept
    {
        return {static_cast<std::uint8_t>(value >> 16U), static_cast<std::uint8_t>(value >> 8U),
            static_cast<std::uint8_t>(value)};
    }

    /// Reads the printed form, with or without the "#", digits of either case, also in the short form of
    /// three or four digits. Nothing for any other text.
    static std::optional<Color> fromHex(std::string_view text);

    /// The same colour that covers less, or more.
    constexpr Color withAlpha(std::uint8_t newAlpha) const noexcept { return {red, green, blue, newAlpha}; }

    /// The usual ones: all channels 0, 255, 128; they cover everything.
    static constexpr Color black() noexcept { return rgb(0x000000); }
    static constexpr Color white() noexcept { return rgb(0xFFFFFF); }
    static constexpr Color gray() noexcept { return rgb(0x808080); }
    /// Nothing of it is seen.
    static constexpr Color clear() noexcept { return {0, 0, 0, 0}; }

    /// `#336699`, with two more digits unless it covers everything.
    std::string description() const;
    std::string debugDescription() const { return "Color(" + description() + ")"; }

    friend constexpr bool operator==(const Color&, const Color&) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::Color> {
    std::size_t operator()(const orrenby::Color& color) const noexcept
    {
        const auto word = static_cast<std::uint32_t>(color.red) << 24U
            | static_cast<std::uint32_t>(color.green) << 16U | static_cast<std::uint32_t>(color.blue) << 8U
            | color.alpha;
        return std::hash<std::uint32_t>{}(word);
    }
};
