#pragma once

/// @file
/// Images as they are kept in files.

#include "Orrenby/Platform/Drawing/Size.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// How the bytes of an image are written.
enum class ImageFormat : std::uint8_t { Unknown, PNG, JPEG };

/// `PNG`
ORRENBY_EXPORT std::string_view description(ImageFormat format) noexcept;

/// An image: how large it is, and its bytes as they came.
///
/// Nothing is decoded: the size is read from the header of PNG and JPEG files, and whether what follows is a
/// picture nobody looks.
///
/// @snippet Tests/Platform/Drawing/ImageTests.cpp Reading an image's size
///
/// A value; copies share the bytes, which never change. Not synchronised, but copies may live in several
/// threads.
class ORRENBY_EXPORT Image {
public:
    /// Without size and bytes.
    Image() = default;

    /// An image of that size whose bytes, if it has any, are in a format of its own.
    explicit Image(Size size, Data data = {});

    /// Reads the size of a PNG or JPEG file, in pixels, as it is meant to be seen: where an EXIF orientation
    /// says that the picture lies on its side, width and height change places.
    ///
    /// Nothing for any other file, for a header that is cut off or says what cannot be, and for a size of 0.
    /// Linear in the header at most; of a JPEG file this is all in front of the picture's own data.
    static std::optional<Image> make(Data data);

    /// In pixels, unless the image was made with another size.
    Size size() const noexcept { return m_size; }

    /// The bytes that it was made from.
    const Data& data() const noexcept;

    /// What they are, as far as their beginning shows.
    ImageFormat format() const noexcept { return m_format; }
    /// `image/png`, `image/jpeg`; empty for what is neither.
    std::string_view mimeType() const noexcept;

    /// `PNG (24.0, 24.0)`
    std::string description() const;
    std::string debugDescription() const { return "Image(" + description() + ")"; }

    /// By size and number of bytes. Constant time.
    std::size_t hash() const noexcept;

    /// Of one size, format and content. Copies are equal in constant time, others in linear.
    ORRENBY_EXPORT friend bool operator==(const Image& first, const Image& second) noexcept;

private:
    Size m_size{};
    ImageFormat m_format = ImageFormat::Unknown;
    std::shared_ptr<const Data> m_data; ///< None when there are no bytes.
};

} // namespace orrenby

template <> struct std::hash<orrenby::Image> {
    std::size_t operator()(const orrenby::Image& image) const noexcept { return image.hash(); }
};
