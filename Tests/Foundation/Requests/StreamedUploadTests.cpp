#include "Orrenby/Foundation/Requests/StreamedUpload.hpp"

#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Tests/Foundation/Requests/RequestParts.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <algorithm>
#include <gmock/gmock.h>
#include <random>

using namespace orrenby;
using orrenby::tests::bodyText;
using orrenby::tests::counted;
using orrenby::tests::CountedNames;
using orrenby::tests::reportRequest;
using orrenby::tests::TemporaryFolder;

namespace {

std::string readAll(BodyStream& body, std::size_t pieceSize = 16)
{
    std::string text;
    std::vector<char> buffer(pieceSize);
    while (const auto count = body.read(std::as_writable_bytes(std::span(buffer))))
        text.append(buffer.data(), count);
    return text;
}

std::string randomText(std::mt19937& random, std::size_t size)
{
    std::string text(size, '\0');
    std::generate(text.begin(), text.end(), [&] { return static_cast<char>(random()); });
    return text;
}

struct RandomPart {
    std::string key = {};
    std::string value = {};
    std::string contentType = {};
    bool isFile = false;
};

URLRequest requestOf(const std::vector<RandomPart>& parts)
{
    const CountedNames names;
    auto request = reportRequest();
    for (const auto& part : parts)
        request = addingBodyPart(std::move(request),
            {.key = part.key, .value = part.value, .boundary = "B", .contentType = part.contentType});
    return closingBody(std::move(request), "B");
}

BodyStream streamOf(const std::vector<RandomPart>& parts, const TemporaryFolder& folder)
{
    const CountedNames names;
    BodyStream body;
    for (const auto& part : parts) {
        if (part.isFile) {
            const auto path = folder.file(std::to_string(&part - parts.data()), part.value);
            appendBodyPart(
                body, {.key = part.key, .path = path, .boundary = "B", .contentType = part.contentType});
        } else
            appendBodyPart(body,
                {.key = part.key, .value = part.value, .boundary = "B", .contentType = part.contentType});
    }
    appendClosingDelimiter(body, "B");
    return body;
}

TEST(StreamedUpload, IsReadFromAFile)
{
    const CountedNames names;
    const TemporaryFolder folder;
    const auto path = folder.file("IMG_1.jpg", "JPEG");
    //! [Uploading a file piece by piece]
    auto upload = makeStreamedUpload({.path = path, .mimetype = "image/jpeg"}, {.pendingMediaCount = 2});
    const auto request = URLRequest("/photos"_url) | using_(HTTPMethod::post)
        | addingHeader("Content-Type", upload.contentType);

    std::string sent;
    std::array<std::byte, 64> buffer;
    while (const auto count = upload.body.read(buffer))
        sent.append(reinterpret_cast<const char*>(buffer.data()), count);
    EXPECT_EQ(sent.size(), upload.body.length());
    //! [Uploading a file piece by piece]

    const CountedNames sameNames;
    const auto inMemory = URLRequest("/photos"_url) | using_(HTTPMethod::post)
        | attaching(HTTPBodyFormDataPart{dataFromText("JPEG"), "image/jpeg"}, 2);
    EXPECT_EQ(sent, bodyText(inMemory));
    EXPECT_EQ(request.httpHeaders(), inMemory.httpHeaders());
}

TEST(StreamedUpload, HasTheBytesOfEachFormInMemory)
{
    const TemporaryFolder folder;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        std::mt19937 random(seed);
        const auto content = randomText(random, random() % 2000);
        const auto* const mimetype = random() % 2 == 0 ? "video/mp4" : "image/png";
        const auto path = folder.file(std::to_string(seed), content);
        const auto media = HTTPBodyFormDataPart{dataFromText(content), mimetype};
        StreamedUploadOptions options;
        auto request = reportRequest();
        {
            const CountedNames names;
            switch (seed % 3) {
            case 0:
                request = attaching(request, media.data, media.mimetype);
                break;
            case 1:
                options.pendingMediaCount = static_cast<std::int64_t>(random() % 100);
                request = attaching(request, media, *options.pendingMediaCount);
                break;
            default:
                options.photoIDs.assign(random() % 3, "id");
                request = attaching(request, media, options.photoIDs);
            }
        }

        const CountedNames names;
        auto upload = makeStreamedUpload({.path = path, .mimetype = mimetype}, options);

        EXPECT_EQ(upload.body.length(), request.httpBody()->size()) << seed;
        EXPECT_EQ(readAll(upload.body, 1 + random() % 700), bodyText(request)) << seed;
        EXPECT_EQ(upload.contentType, request.httpHeader("Content-Type")) << seed;
    }
}

TEST(StreamedUpload, HasTheBytesOfPartsInMemory)
{
    const CountedNames names;
    const TemporaryFolder folder;
    //! [Streaming several files]
    const auto notes = folder.file("notes.txt", "a windy morning");
    const auto track = folder.file("track.gpx", "<gpx/>");

    BodyStream body;
    appendBodyPart(body, {.key = "caption", .value = "Wind", .boundary = "B", .contentType = "text/plain"});
    appendBodyPart(body, {.key = "notes", .path = notes, .boundary = "B", .contentType = "text/plain"});
    appendBodyPart(body, {.key = "track", .path = track, .boundary = "B", .contentType = "application/gpx"});
    appendClosingDelimiter(body, "B");
    //! [Streaming several files]

    const CountedNames sameNames;
    const auto expected = reportRequest()
        | addingBodyPart({.key = "caption", .value = "Wind", .boundary = "B", .contentType = "text/plain"})
        | addingBodyPart(
            {.key = "notes", .value = "a windy morning", .boundary = "B", .contentType = "text/plain"})
        | addingBodyPart(
            {.key = "track", .value = "<gpx/>", .boundary = "B", .contentType = "application/gpx"})
        | closingBody("B");
    EXPECT_EQ(body.length(), expected.httpBody()->size());
    EXPECT_EQ(readAll(body), bodyText(expected));
}

TEST(StreamedUpload, HasTheBytesOfAnyPartsInMemory)
{
    const TemporaryFolder folder;
    for (unsigned seed = 1; seed <= 50; ++seed) {
        std::mt19937 random(seed);
        std::vector<RandomPart> parts(random() % 6);
        for (auto& part : parts)
            part = {.key = randomText(random, random() % 9),
                .value = randomText(random, random() % 500),
                .contentType = random() % 2 == 0 ? "text/plain" : "a/b",
                .isFile = random() % 2 == 0};

        auto body = streamOf(parts, folder);

        const auto expected = bodyText(requestOf(parts));
        EXPECT_EQ(body.length(), expected.size()) << seed;
        EXPECT_EQ(readAll(body, 1 + random() % 100), expected) << seed;
    }
}

TEST(StreamedUpload, SaysBothThingsThatAnUploadMaySay)
{
    const CountedNames names;
    const TemporaryFolder folder;
    auto upload = makeStreamedUpload({.path = folder.file("a", "JPEG"), .mimetype = "image/jpeg"},
        {.pendingMediaCount = 1, .photoIDs = {"a"}});

    const auto text = readAll(upload.body);

    EXPECT_LT(text.find("num_pending_media"), text.find("JPEG"));
    EXPECT_LT(text.find("JPEG"), text.find("photo_ids"));
    EXPECT_EQ(upload.contentType, "multipart/form-data; boundary=Boundary-" + counted(1));
}

TEST(HTTPBodyFile, IsAValueOfAPathAndAType)
{
    const auto file = HTTPBodyFile{.path = "photo.jpg", .mimetype = "image/jpeg"};

    EXPECT_EQ(file, (HTTPBodyFile{"photo.jpg", "image/jpeg"}));
    EXPECT_EQ(std::hash<HTTPBodyFile>()(file), std::hash<HTTPBodyFile>()({"photo.jpg", "image/jpeg"}));
    EXPECT_NE(file, (HTTPBodyFile{"photo.png", "image/jpeg"}));
    EXPECT_NE(file, (HTTPBodyFile{"photo.jpg", "image/png"}));
    EXPECT_EQ(describe(file), "image/jpeg, \"photo.jpg\"");
}

TEST(StreamedUpload, AddsNothingWithoutAValue)
{
    BodyStream body;

    appendBodyPart(body, BodyPart{.key = "a", .value = std::nullopt, .boundary = "B"});

    EXPECT_EQ(body.length(), 0U);
}

TEST(StreamedUpload, LeavesTheBodyAsItWasWithoutItsFile)
{
    const TemporaryFolder folder;
    const auto missing = folder.file("missing");
    BodyStream body;
    body.append("a");

    EXPECT_THROW(appendBodyPart(body, BodyFilePart{.key = "k", .path = missing}), BodyStreamError);

    EXPECT_EQ(readAll(body), "a");
}

TEST(StreamedUpload, SaysThatItsFileIsMissing)
{
    const TemporaryFolder folder;
    const auto file = HTTPBodyFile{.path = folder.file("missing"), .mimetype = "image/jpeg"};

    const auto outcome = tryMakeStreamedUpload(file);

    EXPECT_THROW((void)makeStreamedUpload(file), BodyStreamError);
    ASSERT_TRUE(outcome.isFailure());
    EXPECT_EQ(outcome.error(), BodyStreamError(BodyStreamError::Kind::CannotOpen, file.path, ENOENT));
}

TEST(StreamedUpload, IsMovedOutOfItsOutcome)
{
    const TemporaryFolder folder;

    auto upload = tryMakeStreamedUpload({.path = folder.file("a", "x"), .mimetype = "image/jpeg"}).unwrap();

    EXPECT_EQ(readAll(upload.body).size(), upload.body.length());
}

} // namespace
