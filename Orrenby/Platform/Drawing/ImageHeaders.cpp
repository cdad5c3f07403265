#include "Orrenby/Platform/Drawing/ImageHeaders.hpp"

#include <algorithm>
#include <array>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

using Bytes = std::span<const std::byte>;

constexpr std::array<unsigned char, 8> pngSignature{0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
constexpr std::array<unsigned char, 4> firstChunk{'I', 'H', 'D', 'R'};
constexpr std::array<unsigned char, 6> exifSignature{'E', 'x', 'i', 'f', 0, 0};

/// The number of so many bytes, the highest first; the bytes are there.
std::uint32_t bigEndian(Bytes bytes, std::size_t offset, std::size_t count) noexcept
{
    std::uint32_t number = 0;
    for (const auto byte : bytes.subspan(offset, count))
        number = number << 8U | std::to_integer<std::uint32_t>(byte);
    return number;
}

template <std::size_t count>
bool startsWith(Bytes bytes, const std::array<unsigned char, count>& beginning) noexcept
{
    return bytes.size() >= count
        && std::equal(beginning.begin(), beginning.end(), bytes.begin(),
            [](unsigned char wanted, std::byte byte) { return std::byte{wanted} == byte; });
}

std::optional<PixelSize> sizeUnlessZero(PixelSize size) noexcept
{
    return size.width != 0 && size.height != 0 ? std::optional(size) : std::nullopt;
}

/// Every byte of a TIFF file as its own header wants it read.
class TIFF {
public:
    explicit TIFF(Bytes bytes) noexcept
        : m_bytes(bytes)
        , m_isLittleEndian(!bytes.empty() && bytes[0] == std::byte{'I'})
    {}

    std::optional<std::uint32_t> number(std::size_t offset, std::size_t count) const noexcept
    {
        if (offset > m_bytes.size() || count > m_bytes.size() - offset)
            return std::nullopt;
        std::uint32_t number = 0;
        for (std::size_t index = 0; index < count; ++index) {
            const auto place = offset + (m_isLittleEndian ? count - 1 - index : index);
            number = number << 8U | std::to_integer<std::uint32_t>(m_bytes[place]);
        }
        return number;
    }

private:
    Bytes m_bytes;
    bool m_isLittleEndian;
};

/// A marker that stands alone, without a length behind it.
bool isAlone(unsigned marker) noexcept { return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8); }

/// Of a frame, baseline, progressive or any other: C0 to CF but for the three that are tables or reserved.
bool isFrame(unsigned marker) noexcept
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Precision, height, width and number of components, then three bytes for each of these.
std::optional<PixelSize> frameSize(Bytes segment) noexcept
{
    if (segment.size() < 6)
        return std::nullopt;
    const auto components = bigEndian(segment, 5, 1);
    if (components == 0 || segment.size() != 6 + components * 3)
        return std::nullopt;
    return sizeUnlessZero({.width = bigEndian(segment, 3, 2), .height = bigEndian(segment, 1, 2)});
}

} // namespace

std::optional<PixelSize> pngSize(Bytes file) noexcept
{
    constexpr std::size_t lengthOfChunk = 13;
    constexpr std::uint32_t largest = 0x7FFFFFFF;
    if (!startsWith(file, pngSignature) || file.size() < pngSignature.size() + 8 + lengthOfChunk + 4)
        return std::nullopt;
    const auto chunk = file.subspan(pngSignature.size());
    if (bigEndian(chunk, 0, 4) != lengthOfChunk || !startsWith(chunk.subspan(4), firstChunk))
        return std::nullopt;
    const PixelSize size{.width = bigEndian(chunk, 8, 4), .height = bigEndian(chunk, 12, 4)};
    return size.width <= largest && size.height <= largest ? sizeUnlessZero(size) : std::nullopt;
}

bool isTurnedByExif(Bytes tiff) noexcept
{
    constexpr std::uint32_t orientation = 0x0112;
    constexpr std::uint32_t shortNumber = 3;
    constexpr std::size_t lengthOfEntry = 12;
    const TIFF numbers(tiff);
    const auto order = numbers.number(0, 2);
    if (!order || (*order != 0x4949 && *order != 0x4D4D) || numbers.number(2, 2) != 42U)
        return false;
    const auto table = numbers.number(4, 4);
    const auto count = table ? numbers.number(*table, 2) : std::nullopt;
    for (std::size_t index = 0; count && index < *count; ++index) {
        const auto entry = std::size_t{*table} + 2 + index * lengthOfEntry;
        const auto tag = numbers.number(entry, 2);
        if (!tag)
            return false; // the table goes beyond the end
        if (*tag != orientation)
            continue;
        const auto value = numbers.number(entry + 8, 2);
        return numbers.number(entry + 2, 2) == shortNumber && numbers.number(entry + 4, 4) == 1U && value
            && *value >= 5 && *value <= 8;
    }
    return false;
}

std::optional<PixelSize> jpegSize(Bytes file) noexcept
{
    constexpr std::byte markerStart{0xFF};
    if (file.size() < 2 || bigEndian(file, 0, 2) != 0xFFD8)
        return std::nullopt;
    bool isTurned = false;
    auto rest = file.subspan(2);
    while (!rest.empty() && rest[0] == markerStart) {
        const auto behind = std::find_if(rest.begin(), rest.end(), [](std::byte byte) {
            return byte != markerStart; // any number of them may stand in front of a marker
        });
        if (behind == rest.end())
            return std::nullopt;
        const auto marker = std::to_integer<unsigned>(*behind);
        rest = rest.subspan(static_cast<std::size_t>(behind - rest.begin()) + 1);
        if (isAlone(marker))
            continue;
        const bool isPictureReached = marker == 0xDA || marker == 0xD9;
        if (marker == 0x00 || isPictureReached || rest.size() < 2)
            return std::nullopt;
        const std::size_t length = bigEndian(rest, 0, 2); // counts itself
        if (length < 2 || length > rest.size())
            return std::nullopt;
        const auto segment = rest.subspan(2, length - 2);
        if (isFrame(marker)) {
            const auto size = frameSize(segment);
            return size && isTurned ? PixelSize{.width = size->height, .height = size->width} : size;
        }
        if (marker == 0xE1 && startsWith(segment, exifSignature))
            isTurned = isTurnedByExif(segment.subspan(exifSignature.size()));
        rest = rest.subspan(length);
    }
    return std::nullopt;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
