#include "Orrenby/Foundation/Requests/RequestHeaders.hpp"

#include "Tests/Foundation/Requests/RequestParts.hpp"
#include <gmock/gmock.h>
#include <map>
#include <utility>
#include <vector>

using namespace orrenby;
using orrenby::tests::reportRequest;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Field = HTTPHeaders::Field;

TEST(RequestHeaders, AreBuiltInAChain)
{
    //! [Building a request]
    const auto request = URLRequest("https://example.org/reports"_url) | using_(HTTPMethod::post)
        | addingHeader("Accept", "text/plain") | signed_("t0k3n");

    EXPECT_EQ(request.httpMethod(), "POST");
    EXPECT_THAT(request.httpHeaders(),
        ElementsAre(Field{"Accept", "text/plain"}, Field{"Authorization", "Token token=\"t0k3n\""},
            Field{"X-Auth-Token", "t0k3n"}));
    //! [Building a request]
}

TEST(RequestHeaders, AreBuiltByDirectCallsAsWell)
{
    const auto chained = reportRequest() | using_(HTTPMethod::put) | addingHeader("a", "b") | signed_("t");

    EXPECT_EQ(signed_(addingHeader(using_(reportRequest(), HTTPMethod::put), "a", "b"), "t"), chained);
}

TEST(RequestHeaders, LeaveTheirSubjectAlone)
{
    const auto request = reportRequest();

    const auto changed = request | using_(HTTPMethod::head) | addingHeader("a", "b")
        | addingHeaders({{"c", "d"}}) | signed_("t") | settingAuthToken("u");

    EXPECT_EQ(request, reportRequest());
    EXPECT_NE(changed, request);
}

TEST(RequestHeaders, StayBoundForSeveralRequests)
{
    const auto asPlainText = addingHeader("Accept", std::string("text/plain"));

    const auto first = URLRequest("/a"_url) | asPlainText;
    const auto second = URLRequest("/b"_url) | asPlainText;

    EXPECT_EQ(first.httpHeader("Accept"), "text/plain");
    EXPECT_EQ(second.httpHeader("Accept"), "text/plain");
}

TEST(UsingMethod, WritesItInUpperCase)
{
    std::string methods;
    for (const HTTPMethod method : allCases<HTTPMethod>)
        methods += (reportRequest() | using_(method)).httpMethod() + " ";

    EXPECT_EQ(methods, "GET POST PUT DELETE PATCH HEAD ");
}

TEST(AddingHeader, ReplacesTheEarlierValue)
{
    const auto request = reportRequest() | addingHeader("Accept", "a") | addingHeader("ACCEPT", "b");

    EXPECT_THAT(request.httpHeaders(), ElementsAre(Field{"Accept", "b"}));
}

TEST(AddingHeader, KeepsAnEmptyValue)
{
    EXPECT_THAT(
        (reportRequest() | addingHeader("Accept", "")).httpHeaders(), ElementsAre(Field{"Accept", ""}));
}

TEST(AddingHeader, WritesLineBreaksUnescaped)
{
    const auto request = reportRequest() | addingHeader("Accept", "a\r\nX-Other: b");

    EXPECT_EQ(request.httpHeader("Accept"), "a\r\nX-Other: b");
}

TEST(AddingHeaders, SetsOneAfterTheOther)
{
    //! [Adding several header fields]
    const auto request = URLRequest("/reports"_url) | addingHeader("accept", "text/html")
        | addingHeaders({{"Accept", "text/plain"}, {"Accept-Language", "de"}});

    EXPECT_THAT(
        request.httpHeaders(), ElementsAre(Field{"accept", "text/plain"}, Field{"Accept-Language", "de"}));
    //! [Adding several header fields]
}

TEST(AddingHeaders, TakesAnyDictionary)
{
    const auto expected = HTTPHeaders{{"a", "1"}, {"b", "2"}};
    const auto pairs = std::vector<std::pair<std::string_view, const char*>>{{"b", "2"}, {"a", "1"}};

    EXPECT_EQ((reportRequest() | addingHeaders(expected)).httpHeaders(), expected);
    EXPECT_EQ((reportRequest() | addingHeaders(std::map<std::string, std::string>{{"a", "1"}, {"b", "2"}}))
                  .httpHeaders(),
        expected);
    EXPECT_EQ(addingHeaders(reportRequest(), pairs).httpHeaders(), expected);
    EXPECT_EQ(addingHeaders(reportRequest(), {{"a", "1"}, {"b", "2"}}).httpHeaders(), expected);
}

TEST(AddingHeaders, TakesTheLastOfSpellingsInTheOrderOfIteration)
{
    const auto spellings = std::map<std::string, std::string>{{"ACCEPT", "1"}, {"accept", "2"}};

    EXPECT_THAT(
        (reportRequest() | addingHeaders(spellings)).httpHeaders(), ElementsAre(Field{"ACCEPT", "2"}));
}

TEST(AddingHeaders, AddsNothingOfNothing)
{
    EXPECT_EQ(reportRequest() | addingHeaders(HTTPHeaders()), reportRequest());
}

TEST(Signed, LeavesTheRequestAsItIsWithoutAToken)
{
    EXPECT_THAT((reportRequest() | signed_(std::nullopt)).httpHeaders(), IsEmpty());
    EXPECT_THAT((reportRequest() | signed_(std::optional<std::string>())).httpHeaders(), IsEmpty());
}

TEST(Signed, LeavesTheRequestAsItIsForAnEmptyToken)
{
    const auto request = reportRequest() | signed_("t");

    EXPECT_EQ(request | signed_(""), request);
}

TEST(Signed, WritesTheTokenTwice)
{
    const auto request = reportRequest() | signed_(std::optional<std::string>("t"));

    EXPECT_EQ(
        request.httpHeaders(), (HTTPHeaders{{"Authorization", R"(Token token="t")"}, {"X-Auth-Token", "t"}}));
}

TEST(Signed, ReplacesAnEarlierSignature)
{
    EXPECT_EQ(reportRequest() | signed_("a") | signed_("b"), reportRequest() | signed_("b"));
}

TEST(Signed, WritesQuotationMarksUnescaped)
{
    EXPECT_EQ((reportRequest() | signed_("a\"b")).httpHeader("Authorization"), "Token token=\"a\"b\"");
}

TEST(AuthToken, IsReadAndSet)
{
    //! [Reading the token]
    const auto request = URLRequest("/reports"_url) | settingAuthToken("t0k3n");

    EXPECT_EQ(authToken(request), "t0k3n");
    EXPECT_EQ(request | settingAuthToken(std::nullopt) | authToken, std::nullopt);
    EXPECT_EQ(request.httpHeader("Authorization"), std::nullopt);
    //! [Reading the token]
}

TEST(AuthToken, IsAbsentWithoutHeaders) { EXPECT_EQ(authToken(reportRequest()), std::nullopt); }

TEST(AuthToken, IsAbsentWhenItsNameIsSpelledDifferently)
{
    const auto request = reportRequest() | addingHeader("x-auth-token", "t");

    EXPECT_EQ(authToken(request), std::nullopt);
    EXPECT_EQ(authToken(request | settingAuthToken("u")), std::nullopt); // the first spelling stays
    EXPECT_EQ((request | settingAuthToken("u")).httpHeader("X-Auth-Token"), "u");
}

TEST(AuthToken, IsRemovedWhateverItsSpelling)
{
    EXPECT_EQ(reportRequest() | addingHeader("x-auth-token", "t") | settingAuthToken(std::nullopt),
        reportRequest());
}

TEST(AuthToken, MayBeEmpty) { EXPECT_EQ(reportRequest() | settingAuthToken("") | authToken, ""); }

} // namespace
