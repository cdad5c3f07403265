// Image files: whatever the bytes are, there is a size that can be or none; the front of a file says what
// the whole says, or nothing; and the file is kept as it is.

#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Platform/Drawing/Image.hpp"
#include <algorithm>
#include <cmath>
#include <span>

using namespace orrenby;

namespace {

bool isPossible(double length) { return length >= 1 && length <= 2147483647 && std::floor(length) == length; }

/// A JPEG file of 3 by 2 pixels whose orientation stands in these bytes.
Data jpegFile(std::span<const std::byte> orientation)
{
    const auto length = orientation.size() + 8; // of itself, of the signature, and of what follows
    const unsigned char front[] = {0xFF, 0xD8, 0xFF, 0xE1, static_cast<unsigned char>(length >> 8),
        static_cast<unsigned char>(length & 0xFF), 'E', 'x', 'i', 'f', 0, 0};
    const unsigned char frame[] = {0xFF, 0xC0, 0, 11, 8, 0, 2, 0, 3, 1, 1, 0x11, 0};
    const auto bytesOf = [](const auto& array) { return std::as_bytes(std::span(array)); };
    Data file(bytesOf(front).begin(), bytesOf(front).end());
    file.insert(file.end(), orientation.begin(), orientation.end());
    file.insert(file.end(), bytesOf(frame).begin(), bytesOf(frame).end());
    return file;
}

/// The orientation may be anything: then the picture stands upright.
void requireTurnedOrNot(std::span<const std::byte> orientation)
{
    const auto image = Image::make(
        jpegFile(orientation.first(std::min<std::size_t>(orientation.size(), 65527))));
    requireThat(image && (image->size() == Size{3, 2} || image->size() == Size{2, 3}));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    const Data file(bytes.begin(), bytes.end());

    requireTurnedOrNot(bytes);

    const auto image = Image::make(file);
    if (image) {
        requireThat(isPossible(image->size().width) && isPossible(image->size().height));
        requireThat(image->format() != ImageFormat::Unknown && !image->mimeType().empty());
        requireThat(image->data() == file && *image == *Image::make(file));
    }
    for (std::size_t length = size / 16; length < size; length += size / 16 + 1) {
        const auto front = Image::make(
            Data(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)));
        requireThat(!front || (image && front->size() == image->size()));
    }
    return 0;
}
