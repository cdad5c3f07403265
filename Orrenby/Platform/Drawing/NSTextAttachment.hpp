#pragma once

/// @file
/// Images that stand in a text.

#include "Orrenby/Platform/Drawing/Image.hpp"
#include "Orrenby/Platform/Drawing/Rect.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// An image in place of a character.
///
/// @snippet Tests/Platform/Drawing/NSTextAttachmentTests.cpp Placing an image
///
/// A plain value. Not synchronised.
struct ORRENBY_EXPORT NSTextAttachment {
    /// How the attachment stands in the text: a character that has no meaning of its own.
    static constexpr char32_t character = 0xFFFC;

    Image image{}; ///< What stands in the place of the character.
    /// Where it is drawn: y is the lower side, counted upwards from the line on which the letters stand. With
    /// empty bounds it stands on the line in its own size.
    Rect bounds{};

    /// The bounds, or what holds in their place when they are empty.
    Rect shownBounds() const noexcept { return bounds.isEmpty() ? Rect{{}, image.size()} : bounds; }

    std::string description() const { return image.description() + " in " + bounds.description(); }
    std::string debugDescription() const { return "NSTextAttachment(" + description() + ")"; }

    friend bool operator==(const NSTextAttachment&, const NSTextAttachment&) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::NSTextAttachment> {
    std::size_t operator()(const orrenby::NSTextAttachment& attachment) const noexcept
    {
        return attachment.image.hash() * 0x9E3779B97F4A7C15U + std::hash<orrenby::Rect>{}(attachment.bounds);
    }
};
