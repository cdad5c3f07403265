#include "Orrenby/Foundation/Requests/RequestMultipart.hpp"

#include "Orrenby/Foundation/Requests/HTTPMediaType.hpp"
#include "Orrenby/Foundation/Requests/RequestHeaders.hpp"
#include "Tests/Foundation/Requests/RequestParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using orrenby::tests::bodyText;
using orrenby::tests::counted;
using orrenby::tests::CountedNames;
using orrenby::tests::reportRequest;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

TEST(AddingBodyPart, WritesPartsByteByByte)
{
    const CountedNames names;
    //! [Writing parts]
    const auto photo = dataFromText("JPEG");
    const auto request = URLRequest("/reports"_url)
        | addingBodyPart({.key = "caption", .value = "Wind", .boundary = "B", .contentType = "text/plain"})
        | addingBodyPart({.key = "photo", .value = photo, .boundary = "B", .contentType = "image/jpeg"})
        | closingBody("B") | addingHeader("Content-Type", HTTPMediaType::multipartFormData("B"));
    //! [Writing parts]

    EXPECT_EQ(bodyText(request),
        "--B\r\n"
        "Content-Disposition: form-data; name=\"caption\"\r\n"
        "Content-Type: text/plain\r\n"
        "\r\n"
        "Wind\r\n"
        "--B\r\n"
        "Content-Disposition: form-data; name=\"photo\"; filename=\"00000000-0000-4000-8000-000000000001\"\r\n"
        "Content-Type: image/jpeg\r\n"
        "\r\n"
        "JPEG\r\n"
        "--B--\r\n");
}

TEST(AddingBodyPart, LeavesTheHeaderToTheCaller)
{
    EXPECT_THAT(
        (reportRequest() | addingBodyPart({.key = "a", .value = "b", .boundary = "B"}) | closingBody("B"))
            .httpHeaders(),
        IsEmpty());
}

TEST(AddingBodyPart, WritesNothingWithoutAValue)
{
    const auto withoutText = std::optional<std::string>();
    const auto withoutData = std::optional<Data>();

    EXPECT_EQ(reportRequest() | addingBodyPart({.key = "a", .boundary = "B"}), reportRequest());
    EXPECT_EQ(reportRequest() | addingBodyPart({.key = "a", .value = std::nullopt, .boundary = "B"}),
        reportRequest());
    EXPECT_EQ(reportRequest() | addingBodyPart({.key = "a", .value = withoutText, .boundary = "B"}),
        reportRequest());
    EXPECT_EQ(reportRequest() | addingBodyPart({.key = "a", .value = withoutData, .boundary = "B"}),
        reportRequest());
}

TEST(AddingBodyPart, WritesAnEmptyValue)
{
    const auto expected
        = "--B\r\nContent-Disposition: form-data; name=\"a\"\r\nContent-Type: text/plain\r\n\r\n\r\n";
    const auto part = BodyPart{.key = "a", .value = "", .boundary = "B", .contentType = "text/plain"};
    auto ofBytes = part;
    ofBytes.value = std::span<const std::byte>();

    EXPECT_EQ(bodyText(addingBodyPart(reportRequest(), part)), expected);
    EXPECT_EQ(bodyText(addingBodyPart(reportRequest(), ofBytes)), expected);
}

TEST(AddingBodyPart, WritesTextAndBytesAlike)
{
    const auto text = std::optional<std::string>("Höhe \0 3"); // up to the NUL, as a literal ends
    const auto data = std::optional(dataFromText(*text));

    EXPECT_EQ(reportRequest()
            | addingBodyPart({.key = "a", .value = text, .boundary = "B", .contentType = "text/plain"}),
        reportRequest()
            | addingBodyPart({.key = "a", .value = data, .boundary = "B", .contentType = "text/plain"}));
}

TEST(AddingBodyPart, KeepsNULAndLineEndsOfAValue)
{
    const auto text = std::string("a\0\r\n--B", 8);

    EXPECT_THAT(bodyText(reportRequest() | addingBodyPart({.key = "k", .value = text, .boundary = "B"})),
        HasSubstr("\r\n\r\n" + text + "\r\n"));
}

TEST(AddingBodyPart, NamesAFileForEveryTypeButPlainText)
{
    const CountedNames names;
    const auto fileNameIn = [](std::string_view contentType) {
        const auto text = bodyText(addingBodyPart(
            reportRequest(), {.key = "k", .value = "v", .boundary = "B", .contentType = contentType}));
        const auto begin = text.find("; filename=");
        return begin == std::string::npos ? "none" : text.substr(begin, text.find('\r', begin) - begin);
    };

    EXPECT_EQ(fileNameIn("text/plain"), "none");
    EXPECT_EQ(fileNameIn("text/plain; charset=utf-8"), "; filename=\"" + counted(1) + "\"");
    EXPECT_EQ(fileNameIn("Text/Plain"), "; filename=\"" + counted(2) + "\"");
    EXPECT_EQ(fileNameIn(""), "; filename=\"" + counted(3) + "\"");
}

TEST(AddingBodyPart, TakesNoIdentifierThatItDoesNotWrite)
{
    const CountedNames names;

    std::ignore = reportRequest() | addingBodyPart({.key = "k", .value = "v", .contentType = "text/plain"});
    std::ignore = reportRequest() | addingBodyPart({.key = "k", .contentType = "image/jpeg"});

    EXPECT_THAT(
        bodyText(reportRequest() | addingBodyPart({.key = "k", .value = "v"})), HasSubstr(counted(1)));
}

TEST(AddingBodyPart, AppendsToABodyWhateverItIs)
{
    auto request = reportRequest();
    request.setHTTPBody(dataFromText("before"));

    EXPECT_EQ(bodyText(request
                  | addingBodyPart({.key = "k", .value = "v", .boundary = "B", .contentType = "text/plain"})),
        "before--B\r\nContent-Disposition: form-data; name=\"k\"\r\nContent-Type: text/plain\r\n\r\nv\r\n");
}

TEST(AddingBodyPart, LeavesItsSubjectAlone)
{
    auto request = reportRequest();
    request.setHTTPBody(dataFromText("before"));

    const auto added = request | addingBodyPart({.key = "k", .value = "v", .boundary = "B"});
    const auto closed = closingBody(request, "B");

    EXPECT_NE(added, closed);
    EXPECT_EQ(bodyText(request), "before");
}

TEST(AddingBodyPart, WritesQuotationMarksAndLineBreaksUnescaped)
{
    EXPECT_EQ(bodyText(reportRequest()
                  | addingBodyPart(
                      {.key = "a\"\r\nX: y", .value = "v", .boundary = "B\"", .contentType = "text/plain"})),
        "--B\"\r\nContent-Disposition: form-data; name=\"a\"\r\nX: y\"\r\nContent-Type: text/plain\r\n\r\nv\r\n");
}

TEST(ClosingBody, WritesTheDelimiterWithoutALineEndBeforeIt)
{
    auto request = reportRequest();
    request.setHTTPBody(dataFromText("body"));

    EXPECT_EQ(bodyText(request | closingBody("B")), "body--B--\r\n");
}

TEST(ClosingBody, MakesABodyWhereNoneWas)
{
    EXPECT_EQ(bodyText(reportRequest() | closingBody("B")), "--B--\r\n");
    EXPECT_EQ(bodyText(closingBody(reportRequest(), "")), "----\r\n");
}

TEST(ClosingBody, ClosesAgainWhenAsked)
{
    EXPECT_EQ(bodyText(reportRequest() | closingBody("B") | closingBody("B")), "--B--\r\n--B--\r\n");
}

} // namespace
