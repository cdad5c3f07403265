#include "Orrenby/Platform/Drawing/Image.hpp"

#include "Orrenby/Platform/Drawing/ImageHeaders.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

std::string_view description(ImageFormat format) noexcept
{
    switch (format) {
    case ImageFormat::PNG:
        return "PNG";
    case ImageFormat::JPEG:
        return "JPEG";
    case ImageFormat::Unknown:
        break;
    }
    return "Unknown";
}

Image::Image(Size size, Data data)
    : m_size(size)
    , m_data(data.empty() ? nullptr : std::make_shared<const Data>(std::move(data)))
{}

std::optional<Image> Image::make(Data data)
{
    auto format = ImageFormat::PNG;
    auto pixels = detail::pngSize(data);
    if (!pixels) {
        format = ImageFormat::JPEG;
        pixels = detail::jpegSize(data);
    }
    if (!pixels)
        return std::nullopt;
    Image image({static_cast<double>(pixels->width), static_cast<double>(pixels->height)}, std::move(data));
    image.m_format = format;
    return image;
}

const Data& Image::data() const noexcept
{
    static const Data& none = *new Data(); // outlives every static image
    return m_data ? *m_data : none;
}

std::string_view Image::mimeType() const noexcept
{
    switch (m_format) {
    case ImageFormat::PNG:
        return "image/png";
    case ImageFormat::JPEG:
        return "image/jpeg";
    case ImageFormat::Unknown:
        break;
    }
    return "";
}

std::string Image::description() const
{
    return std::string(orrenby::description(m_format)) + " " + m_size.description();
}

std::size_t Image::hash() const noexcept
{
    return std::hash<Size>{}(m_size)*0x9E3779B97F4A7C15U + data().size();
}

bool operator==(const Image& first, const Image& second) noexcept
{
    return first.m_size == second.m_size && first.m_format == second.m_format
        && (first.m_data == second.m_data || first.data() == second.data());
}

} // namespace orrenby
