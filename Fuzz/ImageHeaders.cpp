// Image files: whatever the bytes are, there is a size that can be or none; the front of a file says what
// the whole says, or nothing; and the file is kept as it is.

#include "Orrenby/Platform/Drawing/ImageHeaders.hpp"
#include "FuzzedLogEvent.hpp"
#include "Orrenby/Platform/Drawing/Image.hpp"
#include <cmath>
#include <span>

using namespace orrenby;

namespace {

bool isPossible(double length) { return length >= 1 && length <= 2147483647 && std::floor(length) == length; }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    const Data file(bytes.begin(), bytes.end());

    // The caller of this gives it the content of a segment; it takes anything.
    static_cast<void>(detail::isTurnedByExif(bytes));

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
