#pragma once

/// @file
/// What stands at the front of image files. Not in the umbrella header: part of Image's own workings.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Width and height of a picture in pixels, neither of them 0.
struct PixelSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// Of a PNG file: what the first chunk says.
std::optional<PixelSize> pngSize(std::span<const std::byte> file) noexcept;

/// Of a JPEG file: what the frame header says, turned as the EXIF data in front of it wants.
std::optional<PixelSize> jpegSize(std::span<const std::byte> file) noexcept;

/// Whether EXIF data, which is a small TIFF file, wants the picture's width and height to change places. Data
/// that cannot be read wants nothing.
bool isTurnedByExif(std::span<const std::byte> tiff) noexcept;

} // namespace orrenby::inline ORRENBY_ABI::detail
