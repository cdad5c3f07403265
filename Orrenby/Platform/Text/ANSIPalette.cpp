#include "Orrenby/Platform/Text/ANSIPalette.hpp"

#include <array>
#include <cstddef>
#include <limits>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::size_t basicCount = 16;
constexpr std::size_t paletteCount = 256;

/// The first 16 as most terminals begin; users change them.
constexpr std::array<std::uint32_t, basicCount> basic{0x000000, 0xCD0000, 0x00CD00, 0xCDCD00, 0x0000EE,
    0xCD00CD, 0x00CDCD, 0xE5E5E5, 0x7F7F7F, 0xFF0000, 0x00FF00, 0xFFFF00, 0x5C5CFF, 0xFF00FF, 0x00FFFF,
    0xFFFFFF};

/// A cube with six steps on each side, then 24 greys.
constexpr Color paletteColor(std::size_t index) noexcept
{
    constexpr std::array<std::uint8_t, 6> steps{0, 95, 135, 175, 215, 255};
    if (index < basicCount)
        return Color::rgb(basic[index]);
    if (index >= 232) {
        const auto grey = static_cast<std::uint8_t>(8 + (index - 232) * 10);
        return {grey, grey, grey};
    }
    const auto place = index - basicCount;
    return {steps[place / 36], steps[place / 6 % 6], steps[place % 6]};
}

int distance(Color first, Color second) noexcept
{
    const int red = first.red - second.red;
    const int green = first.green - second.green;
    const int blue = first.blue - second.blue;
    return red * red + green * green + blue * blue;
}

/// The first of those that are nearest.
std::size_t nearest(Color color, std::size_t first, std::size_t end) noexcept
{
    std::size_t best = first;
    int least = std::numeric_limits<int>::max();
    for (auto index = first; index < end; ++index)
        if (const int away = distance(color, paletteColor(index)); away < least) {
            least = away;
            best = index;
        }
    return best;
}

} // namespace

std::string ansiColor(Color color, ANSIColors colors, bool isBackground)
{
    const std::size_t shift = isBackground ? 10 : 0;
    switch (colors) {
    case ANSIColors::None:
        return "";
    case ANSIColors::Basic: {
        const auto index = nearest(color, 0, basicCount);
        return std::to_string((index < 8 ? 30 + index : 90 + index - 8) + shift);
    }
    case ANSIColors::Palette: // the first 16 are not what they seem
        return std::to_string(38 + shift) + ";5;" + std::to_string(nearest(color, basicCount, paletteCount));
    case ANSIColors::Full:
        break;
    }
    return std::to_string(38 + shift) + ";2;" + std::to_string(color.red) + ";" + std::to_string(color.green)
        + ";" + std::to_string(color.blue);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
