#include "Orrenby/Platform/Drawing/Image.hpp"

#include <gmock/gmock.h>
#include <initializer_list>
#include <string>

using namespace orrenby;

namespace {

using Segments = std::initializer_list<Data>;

Data bytes(std::initializer_list<int> numbers)
{
    Data data;
    for (const int number : numbers)
        data.push_back(static_cast<std::byte>(number));
    return data;
}

void append(Data& data, const Data& more) { data.insert(data.end(), more.begin(), more.end()); }

Data bigEndian(std::uint32_t number)
{
    Data data;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        data.push_back(static_cast<std::byte>(number >> shift));
    return data;
}

/// The front of a PNG file up to the checksum of its first chunk, which nobody checks.
Data png(std::uint32_t width, std::uint32_t height)
{
    auto file = bytes({0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D', 'R'});
    append(file, bigEndian(width));
    append(file, bigEndian(height));
    append(file, bytes({8, 6, 0, 0, 0, 1, 2, 3, 4}));
    return file;
}

Data segment(int marker, const Data& content)
{
    const auto length = content.size() + 2;
    auto result = bytes({0xFF, marker, static_cast<int>(length >> 8U), static_cast<int>(length & 0xFFU)});
    append(result, content);
    return result;
}

/// A frame header of one component.
Data frame(int marker, int width, int height)
{
    return segment(marker, bytes({8, height >> 8, height & 0xFF, width >> 8, width & 0xFF, 1, 1, 0x11, 0}));
}

Data jpeg(Segments segments)
{
    auto file = bytes({0xFF, 0xD8});
    for (const auto& part : segments)
        append(file, part);
    append(file, segment(0xDA, bytes({1, 1, 0, 0, 63, 0})));
    append(file, bytes({1, 2, 3, 0xFF, 0, 4, 0xFF, 0xD9}));
    return file;
}

/// A segment of EXIF data whose only entry is an orientation.
Data exif(int orientation, bool isLittleEndian = false)
{
    auto content = bytes({'E', 'x', 'i', 'f', 0, 0});
    append(content,
        isLittleEndian
            ? bytes({'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0, 0x12, 1, 3, 0, 1, 0, 0, 0, orientation, 0, 0, 0})
            : bytes({'M', 'M', 0, 42, 0, 0, 0, 8, 0, 1, 1, 0x12, 0, 3, 0, 0, 0, 1, 0, orientation, 0, 0}));
    return segment(0xE1, content);
}

std::optional<Size> sizeOf(const Data& file)
{
    const auto image = Image::make(file);
    return image ? std::optional(image->size()) : std::nullopt;
}

std::optional<Size> size(double width, double height) { return Size{width, height}; }

Data front(const Data& file, std::size_t length)
{
    return {file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)};
}

const Data baseline = frame(0xC0, 640, 480);

} // namespace

TEST(Image, ReadsTheSizeOfAPNGFile)
{
    //! [Reading an image's size]
    const auto image = Image::make(png(320, 200));

    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size{.width = 320, .height = 200}));
    EXPECT_EQ(image->mimeType(), "image/png");
    EXPECT_EQ(Image::make(dataFromText("<svg/>")), std::nullopt);
    //! [Reading an image's size]
    EXPECT_EQ(image->data(), png(320, 200));
    EXPECT_EQ(image->format(), ImageFormat::PNG);
}

TEST(Image, ReadsTheSizeOfAJPEGFile)
{
    const auto image = Image::make(jpeg({segment(0xE0, bytes({'J', 'F', 'I', 'F', 0})), baseline}));

    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size{.width = 640, .height = 480}));
    EXPECT_EQ(image->mimeType(), "image/jpeg");
    EXPECT_EQ(image->format(), ImageFormat::JPEG);
}

TEST(Image, ReadsProgressiveAndOtherFrames)
{
    for (const int marker : {0xC1, 0xC2, 0xC3, 0xC5, 0xC6, 0xC7, 0xC9, 0xCA, 0xCB, 0xCD, 0xCE, 0xCF})
        EXPECT_EQ(sizeOf(jpeg({frame(marker, 3, 2)})), size(3, 2)) << marker;
}

TEST(Image, PassesOverTablesThatAreNoFrames)
{
    for (const int marker : {0xC4, 0xC8, 0xCC, 0xDB, 0xDD, 0xFE, 0xE2})
        EXPECT_EQ(sizeOf(jpeg({frame(marker, 9, 9), baseline})), size(640, 480)) << marker;
}

TEST(Image, PassesOverThumbnailsInTheSegmentsInFront)
{
    auto content = bytes({'E', 'x', 'i', 'f', 0, 0});
    append(content, jpeg({frame(0xC0, 16, 12)}));

    EXPECT_EQ(sizeOf(jpeg({segment(0xE1, content), baseline})), size(640, 480));
}

TEST(Image, PassesOverFillBytesAndMarkersThatStandAlone)
{
    EXPECT_EQ(sizeOf(jpeg({bytes({0xFF, 0xFF, 0xFF}), baseline})), size(640, 480));
    EXPECT_EQ(sizeOf(jpeg({bytes({0xFF, 0x01, 0xFF, 0xD0}), baseline})), size(640, 480));
}

TEST(Image, TurnsASizeThatLiesOnItsSide)
{
    for (const int orientation : {5, 6, 7, 8}) {
        EXPECT_EQ(sizeOf(jpeg({exif(orientation), baseline})), size(480, 640)) << orientation;
        EXPECT_EQ(sizeOf(jpeg({exif(orientation, true), baseline})), size(480, 640)) << orientation;
    }
}

TEST(Image, DoesNotTurnASizeOtherwise)
{
    for (const int orientation : {0, 1, 2, 3, 4, 9})
        EXPECT_EQ(sizeOf(jpeg({exif(orientation), baseline})), size(640, 480)) << orientation;
}

TEST(Image, DoesNotMindEXIFDataThatCannotBeRead)
{
    const auto whole = exif(6);

    for (std::size_t length = 4; length < whole.size() - 2; ++length) {
        const auto cut = segment(
            0xE1, Data(whole.begin() + 4, whole.begin() + static_cast<std::ptrdiff_t>(length)));
        EXPECT_EQ(sizeOf(jpeg({cut, baseline})), size(640, 480)) << length;
    }
}

TEST(Image, IsNothingWhenTheHeaderIsCutOff)
{
    const auto whole = png(320, 200);
    const auto photo = jpeg({exif(6), baseline});
    const auto header = photo.size() - jpeg({}).size() + 2;

    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(sizeOf(front(whole, length)), std::nullopt) << length;
    for (std::size_t length = 0; length < header; ++length)
        EXPECT_EQ(sizeOf(front(photo, length)), std::nullopt) << length;
    EXPECT_EQ(sizeOf(front(photo, header)), size(480, 640)) << "the picture's own data is not looked at";
}

TEST(Image, IsNothingWithASideOfZero)
{
    EXPECT_EQ(sizeOf(png(0, 5)), std::nullopt);
    EXPECT_EQ(sizeOf(png(5, 0)), std::nullopt);
    EXPECT_EQ(sizeOf(jpeg({frame(0xC0, 0, 5)})), std::nullopt);
    EXPECT_EQ(sizeOf(jpeg({frame(0xC0, 5, 0)})), std::nullopt);
}

TEST(Image, ReadsTheLargestSizes)
{
    EXPECT_EQ(sizeOf(png(0x7FFFFFFF, 1)), size(2147483647, 1));
    EXPECT_EQ(sizeOf(png(0x80000000, 1)), std::nullopt);
    EXPECT_EQ(sizeOf(jpeg({frame(0xC0, 65535, 1)})), size(65535, 1));
}

TEST(Image, IsNothingWhenTheFirstChunkIsAnother)
{
    auto otherName = png(1, 1);
    otherName[12] = std::byte{'i'};
    auto otherLength = png(1, 1);
    otherLength[11] = std::byte{14};

    EXPECT_EQ(sizeOf(otherName), std::nullopt);
    EXPECT_EQ(sizeOf(otherLength), std::nullopt);
}

TEST(Image, IsNothingWhenAJPEGFileIsMalformed)
{
    EXPECT_EQ(sizeOf(jpeg({})), std::nullopt) << "the picture begins without a frame header";
    EXPECT_EQ(sizeOf(jpeg({bytes({0xFF, 0xE0, 0, 1}), baseline})), std::nullopt) << "a length below its own";
    EXPECT_EQ(sizeOf(jpeg({bytes({0xFF, 0xE0, 0xFF, 0xFF}), baseline})), std::nullopt)
        << "a length beyond the end";
    EXPECT_EQ(sizeOf(jpeg({bytes({0}), baseline})), std::nullopt) << "no marker";
    EXPECT_EQ(sizeOf(jpeg({bytes({0xFF, 0, 0, 2}), baseline})), std::nullopt)
        << "a stuffed byte for a marker";
    EXPECT_EQ(sizeOf(jpeg({segment(0xC0, bytes({8, 0, 1, 0, 1, 2, 1, 0x11, 0}))})), std::nullopt)
        << "two components said, one there";
    EXPECT_EQ(sizeOf(jpeg({segment(0xC0, bytes({8, 0, 1, 0, 1, 0}))})), std::nullopt) << "no components";
}

TEST(Image, HasTheSizeItIsGiven)
{
    const Image drawn({.width = 1.5, .height = 2});

    EXPECT_EQ(drawn.size(), (Size{1.5, 2}));
    EXPECT_THAT(drawn.data(), testing::IsEmpty());
    EXPECT_EQ(drawn.format(), ImageFormat::Unknown);
    EXPECT_EQ(drawn.mimeType(), "");
    EXPECT_EQ(Image(), Image({0, 0}));
}

TEST(Image, ComparesContent)
{
    const auto image = Image::make(png(3, 2));

    EXPECT_EQ(image, Image::make(png(3, 2)));
    EXPECT_NE(image, Image::make(png(3, 3)));
    EXPECT_NE(image, Image({3, 2}, png(3, 2))) << "of another format";
    EXPECT_NE(Image({3, 2}, bytes({1})), Image({3, 2}, bytes({2})));
    EXPECT_NE(Image({3, 2}, bytes({1})), Image({3, 2}));
}

TEST(Image, HashesAlikeWhenEqual)
{
    EXPECT_EQ(std::hash<Image>{}(*Image::make(png(3, 2))), std::hash<Image>{}(*Image::make(png(3, 2))));
    EXPECT_NE(std::hash<Image>{}(Image({3, 2})), std::hash<Image>{}(Image({2, 3})));
}

TEST(Image, Prints)
{
    EXPECT_EQ(describe(*Image::make(png(3, 2))), "PNG (3.0, 2.0)");
    EXPECT_EQ(debugDescribe(*Image::make(jpeg({baseline}))), "Image(JPEG (640.0, 480.0))");
    EXPECT_EQ(describe(Image()), "Unknown (0.0, 0.0)");
}
