#include "Orrenby/Foundation/Requests/RequestMultipart.hpp"

#include "Orrenby/Foundation/Requests/RequestHeaders.hpp"
#include "Orrenby/Platform/World/UUIDSource.hpp"
#include "Tests/Foundation/Requests/RequestParts.hpp"
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;
using orrenby::tests::bodyText;
using orrenby::tests::counted;
using orrenby::tests::CountedNames;
using orrenby::tests::reportRequest;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

using PhotoIDs = std::vector<std::string>;

HTTPBodyFormDataPart media(std::string_view mimetype = "image/jpeg")
{
    return {.data = dataFromText("JPEG"), .mimetype = std::string(mimetype)};
}

/// Gives identifiers with letters among their digits.
class LetteredUUIDs final : public UUIDSource {
public:
    UUID next() override { return UUID::make("abcdef12-3456-4abc-8def-abcdef123456").value(); }
};

/// The kind, and the last part of the file's header line, of an upload of this type.
std::string kindOf(std::string_view mimetype)
{
    const CountedNames names;
    const auto text = bodyText(attaching(reportRequest(), dataFromText("x"), mimetype));
    const auto type = text.find("name=\"type\"\r\n\r\n") + 15;
    const auto file = text.find("filename=");
    return text.substr(type, text.find('\r', type) - type) + " "
        + text.substr(file, text.find('\r', file) - file);
}

TEST(Attaching, UploadsAPhoto)
{
    const CountedNames names;
    //! [Uploading a photo]
    const auto photo = HTTPBodyFormDataPart{.data = dataFromText("JPEG"), .mimetype = "image/jpeg"};

    const auto request = URLRequest("/photos"_url) | using_(HTTPMethod::post) | attaching(photo, 2);
    //! [Uploading a photo]

    EXPECT_EQ(request.httpHeaders(),
        (HTTPHeaders{{"Content-Type", "multipart/form-data; boundary=Boundary-" + counted(1)}}));
    EXPECT_EQ(bodyText(request),
        "--Boundary-00000000-0000-4000-8000-000000000001\r\n"
        "Content-Disposition: form-data; name=\"type\"\r\n"
        "\r\n"
        "photo\r\n"
        "--Boundary-00000000-0000-4000-8000-000000000001\r\n"
        "Content-Disposition: form-data; name=\"num_pending_media\"\r\n"
        "\r\n"
        "2\r\n"
        "--Boundary-00000000-0000-4000-8000-000000000001\r\n"
        "Content-Disposition: form-data; name=\"photo\"; filename=\"00000000-0000-4000-8000-000000000002.jpg\"\r\n"
        "Content-Type: image/jpeg\r\n"
        "\r\n"
        "JPEG\r\n"
        "--Boundary-00000000-0000-4000-8000-000000000001--\r\n");
}

TEST(Attaching, CallsWhateverBeginsWithVideoAVideo)
{
    EXPECT_EQ(kindOf("video/mp4"), "video filename=\"" + counted(2) + ".mp4\"");
    EXPECT_EQ(kindOf("video/quicktime"), "video filename=\"" + counted(2) + ".mp4\"");
    EXPECT_EQ(kindOf("video"), "video filename=\"" + counted(2) + ".mp4\"");
    EXPECT_EQ(kindOf("videogame/x"), "video filename=\"" + counted(2) + ".mp4\"");
}

TEST(Attaching, CallsEverythingElseAPhoto)
{
    for (const auto* mimetype : {"image/png", "Video/mp4", " video/mp4", "vide", "application/video", ""})
        EXPECT_EQ(kindOf(mimetype), "photo filename=\"" + counted(2) + ".jpg\"") << mimetype;
}

TEST(Attaching, NamesTheFileFieldAfterTheKind)
{
    EXPECT_THAT(bodyText(reportRequest() | attaching(media("video/mp4"), 0)),
        HasSubstr("; name=\"video\"; filename="));
    EXPECT_THAT(bodyText(reportRequest() | attaching(media(), 0)), HasSubstr("; name=\"photo\"; filename="));
}

TEST(Attaching, PutsThePendingCountBeforeTheFileAndTheIdentifiersAfterIt)
{
    const auto withCount = bodyText(reportRequest() | attaching(media(), 2));
    const auto withIDs = bodyText(reportRequest() | attaching(media(), PhotoIDs{"a", "b"}));

    EXPECT_LT(withCount.find("num_pending_media"), withCount.find("JPEG"));
    EXPECT_GT(withIDs.find("photo_ids"), withIDs.find("JPEG"));
    EXPECT_THAT(withIDs, HasSubstr("name=\"photo_ids\"\r\n\r\n[\"a\", \"b\"]\r\n--"));
    EXPECT_THAT(withCount, Not(HasSubstr("photo_ids")));
    EXPECT_THAT(withIDs, Not(HasSubstr("num_pending_media")));
}

TEST(Attaching, WritesNoFieldForNoIdentifiers)
{
    const auto withNone = [&] {
        const CountedNames names;
        return reportRequest() | attaching(media(), PhotoIDs());
    }();
    const auto plain = [&] {
        const CountedNames names;
        return reportRequest() | attaching(dataFromText("JPEG"), "image/jpeg");
    }();

    EXPECT_EQ(withNone, plain);
    EXPECT_THAT(bodyText(withNone), Not(HasSubstr("photo_ids")));
}

TEST(Attaching, WritesAnyCount)
{
    EXPECT_THAT(bodyText(reportRequest() | attaching(media(), 0)), HasSubstr("\r\n\r\n0\r\n"));
    EXPECT_THAT(bodyText(reportRequest() | attaching(media(), -1)), HasSubstr("\r\n\r\n-1\r\n"));
    EXPECT_THAT(bodyText(reportRequest() | attaching(media(), std::numeric_limits<std::int64_t>::min())),
        HasSubstr("\r\n\r\n-9223372036854775808\r\n"));
}

TEST(Attaching, PrintsIdentifiersAsAListOfTexts)
{
    EXPECT_THAT(bodyText(reportRequest() | attaching(media(), PhotoIDs{"a"})), HasSubstr("\r\n[\"a\"]\r\n"));
    EXPECT_THAT(bodyText(reportRequest() | attaching(media(), PhotoIDs{""})), HasSubstr("\r\n[\"\"]\r\n"));
    EXPECT_THAT(
        bodyText(reportRequest() | attaching(media(), PhotoIDs{"a\"b"})), HasSubstr("\r\n[\"a\\\"b\"]\r\n"));
}

TEST(Attaching, UploadsNoBytesAtAll)
{
    EXPECT_THAT(bodyText(attaching(reportRequest(), Data(), "image/jpeg")),
        HasSubstr("Content-Type: image/jpeg\r\n\r\n\r\n--Boundary-"));
}

TEST(Attaching, TakesFreshIdentifiersForEachRequest)
{
    const auto first = reportRequest() | attaching(media(), 1);
    const auto second = reportRequest() | attaching(media(), 1);

    EXPECT_NE(first.httpHeaders(), second.httpHeaders());
    EXPECT_NE(first.httpBody(), second.httpBody());
}

TEST(Attaching, WritesIdentifiersInUpperCase)
{
    auto world = World::current();
    world.setUUIDs(std::make_shared<LetteredUUIDs>());
    const World::Override letters(world);

    const auto upload = reportRequest() | attaching(media(), 1);
    const auto part = reportRequest() | addingBodyPart({.key = "k", .value = "v", .boundary = "B"});

    EXPECT_EQ(upload.httpHeader("Content-Type"),
        "multipart/form-data; boundary=Boundary-ABCDEF12-3456-4ABC-8DEF-ABCDEF123456");
    EXPECT_THAT(bodyText(upload), HasSubstr("filename=\"ABCDEF12-3456-4ABC-8DEF-ABCDEF123456.jpg\"\r\n"));
    EXPECT_THAT(bodyText(part), HasSubstr("filename=\"ABCDEF12-3456-4ABC-8DEF-ABCDEF123456\"\r\n"));
}

TEST(Attaching, LeavesItsSubjectAlone)
{
    auto request = reportRequest();

    EXPECT_NE(request | attaching(dataFromText("x"), "image/jpeg"), reportRequest());
    EXPECT_NE(attaching(request, media(), 1), reportRequest());
    EXPECT_NE(attaching(request, media(), PhotoIDs{"a"}), reportRequest());

    EXPECT_EQ(request, reportRequest());
}

TEST(Attaching, LeavesARequestWithABodyAsItIs)
{
    const CountedNames names;
    auto request = reportRequest() | addingHeader("Content-Type", "text/plain");
    for (const auto& body : {dataFromText("body"), Data()}) {
        request.setHTTPBody(body);

        EXPECT_EQ(request | attaching(dataFromText("x"), "image/jpeg"), request);
        EXPECT_EQ(request | attaching(media(), 1), request);
        EXPECT_EQ(request | attaching(media(), PhotoIDs{"a"}), request);
    }
    EXPECT_THAT(
        (reportRequest() | attaching(media(), 1)).httpHeader("Content-Type").value(), HasSubstr(counted(1)));
}

TEST(Attaching, ReplacesTheTypeInTheHeader)
{
    const CountedNames names;

    EXPECT_EQ(
        (reportRequest() | addingHeader("content-type", "text/plain") | attaching(media(), 1)).httpHeaders(),
        (HTTPHeaders{{"content-type", "multipart/form-data; boundary=Boundary-" + counted(1)}}));
}

} // namespace
