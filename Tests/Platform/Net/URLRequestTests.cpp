#include "Orrenby/Platform/Net/URLRequest.hpp"

#include "Orrenby/Platform/Objects/Printing.hpp"
#include <gmock/gmock.h>
#include <sstream>

using namespace orrenby;
using ::testing::IsEmpty;

namespace {

URLRequest reportsRequest()
{
    auto request = URLRequest("https://example.org/reports"_url);
    request.setHTTPMethod("POST");
    request.setHTTPHeader("Content-Type", "text/plain");
    request.setHTTPHeader("X-Auth-Token", "secret");
    request.setHTTPBody(dataFromText("A windy morning"));
    return request;
}

TEST(URLRequest, SaysWhatIsAsked)
{
    //! [Describing what is asked]
    auto request = URLRequest("https://example.org/reports"_url);
    request.setHTTPMethod("POST");
    request.setHTTPHeader("Content-Type", "text/plain");
    request.setHTTPBody(dataFromText("A windy morning"));

    EXPECT_EQ(request.httpHeader("content-type"), "text/plain");
    EXPECT_EQ(request.description(), "POST https://example.org/reports, 1 header field, body of 15 bytes");
    //! [Describing what is asked]
}

TEST(URLRequest, IsABareGETAtFirst)
{
    const auto request = URLRequest("https://example.org/"_url);

    EXPECT_EQ(request.url(), "https://example.org/"_url);
    EXPECT_EQ(request.httpMethod(), "GET");
    EXPECT_THAT(request.httpHeaders(), IsEmpty());
    EXPECT_EQ(request.httpBody(), std::nullopt);
    EXPECT_EQ(request.timeoutInterval(), 60.0);
    EXPECT_EQ(request.description(), "GET https://example.org/");
}

TEST(URLRequest, TakesAllThatItIsGiven)
{
    auto request = URLRequest("https://example.org/"_url, 5);
    request.setURL("relative"_url);
    request.setHTTPHeaders({{"a", "1"}});
    request.setTimeoutInterval(0.5);

    EXPECT_EQ(request.url(), "relative"_url);
    EXPECT_EQ(request.httpHeaders(), (HTTPHeaders{{"a", "1"}}));
    EXPECT_EQ(request.timeoutInterval(), 0.5);
}

TEST(URLRequest, LosesAHeaderFieldWithoutAValue)
{
    auto request = reportsRequest();

    request.setHTTPHeader("CONTENT-TYPE", std::nullopt);

    EXPECT_EQ(request.httpHeaders(), (HTTPHeaders{{"X-Auth-Token", "secret"}}));
}

TEST(URLRequest, TellsAnEmptyBodyFromNone)
{
    const auto without = URLRequest("https://example.org/"_url);
    auto with = without;
    with.setHTTPBody(Data());

    EXPECT_NE(with, without);
    EXPECT_NE(with.hash(), without.hash());
    EXPECT_EQ(with.description(), "GET https://example.org/, body of 0 bytes");
}

TEST(URLRequest, GivesItsBodyAway)
{
    auto request = reportsRequest();
    const auto* bytes = request.httpBody()->data();

    const auto body = request.takeHTTPBody();

    EXPECT_EQ(body, dataFromText("A windy morning"));
    EXPECT_EQ(body->data(), bytes);
    EXPECT_EQ(request.httpBody(), std::nullopt);
    EXPECT_EQ(request.takeHTTPBody(), std::nullopt);
}

TEST(URLRequest, KeepsItsBytesInPlaceWhenItIsMoved)
{
    auto request = reportsRequest();
    const auto* bytes = request.httpBody()->data();

    const auto moved = std::move(request);

    EXPECT_EQ(moved.httpBody()->data(), bytes);
}

TEST(URLRequest, IsCopiedWithItsBody)
{
    const auto request = reportsRequest();

    auto copy = request;
    copy.setHTTPBody(std::nullopt);
    copy.setHTTPMethod("GET");

    EXPECT_EQ(request, reportsRequest());
    EXPECT_NE(copy, request);
}

TEST(URLRequest, ComparesEveryPart)
{
    const auto request = reportsRequest();
    auto others = std::vector<URLRequest>(5, request);
    others[0].setURL("https://example.org/reports/"_url);
    others[1].setHTTPMethod("post");
    others[2].setHTTPHeader("Accept", "");
    others[3].setHTTPBody(dataFromText("A windy Morning"));
    others[4].setTimeoutInterval(61);

    EXPECT_EQ(request, reportsRequest());
    EXPECT_EQ(std::hash<URLRequest>()(request), std::hash<URLRequest>()(reportsRequest()));
    for (const auto& other : others) {
        EXPECT_NE(other, request);
        EXPECT_NE(other.hash(), request.hash());
    }
}

TEST(URLRequest, KeepsSecretsOutOfItsPrintedForms)
{
    std::ostringstream text;

    text << reportsRequest();

    EXPECT_EQ(text.str(), "POST https://example.org/reports, 2 header fields, body of 15 bytes");
    EXPECT_EQ(debugDescribe(reportsRequest()),
        "URLRequest(POST https://example.org/reports, 2 header fields, body of 15 bytes)");
}

} // namespace
