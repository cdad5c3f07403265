#include "Orrenby/Foundation/Requests/RequestJSON.hpp"

#include "Orrenby/Foundation/Requests/RequestHeaders.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/NSNull.hpp"
#include "Orrenby/Testing/LogCapture.hpp"
#include "Tests/Foundation/Requests/RequestParts.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <stdexcept>

using namespace orrenby;
using orrenby::testing::LogCapture;
using orrenby::tests::bodyText;
using orrenby::tests::reportRequest;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace requestJSONTests {

struct Report {
    std::string title = {};
    Date date = {};
    double height = 0;
};

struct Broken {
    void encode(const Encoder&) const { throw std::runtime_error("broken"); }
};

} // namespace requestJSONTests

namespace {

using requestJSONTests::Broken;
using requestJSONTests::Report;

const auto asSeconds = JSONEncoder::DateEncodingStrategy::secondsSince1970();

TEST(RequestJSON, IsWrittenFromADictionaryOrAnObject)
{
    //! [Encoding a body]
    const auto loose = URLRequest("/reports"_url) | encoding({{"title", "Wind"}, {"height", 3}});
    const auto typed = URLRequest("/reports"_url)
        | encoding(Report{.title = "Wind", .date = Date(1.5), .height = 0.5},
            JSONEncoder::DateEncodingStrategy::secondsSince1970());

    EXPECT_EQ(loose.httpHeader("Content-Type"), "application/json");
    EXPECT_EQ(loose.httpBody(), dataFromText(R"({"title":"Wind","height":3})"));
    EXPECT_EQ(typed.httpBody(), dataFromText(R"({"title":"Wind","date":1.5,"height":0.5})"));
    //! [Encoding a body]

    EXPECT_EQ(typed.httpHeaders(), (HTTPHeaders{{"Content-Type", "application/json"}}));
}

TEST(RequestJSON, IsWrittenByDirectCallsAsWell)
{
    const auto json = Dictionary{{"a", 1}};

    EXPECT_EQ(bodyText(encoding(reportRequest(), json)), R"({"a":1})");
    EXPECT_EQ(bodyText(encoding(reportRequest(), {{"a", 1}})), R"({"a":1})");
    EXPECT_EQ(bodyText(encoding(reportRequest(), std::vector<int>{1, 2}, asSeconds)), "[1,2]");
}

TEST(RequestJSON, IsAnEmptyObjectForNoMembers)
{
    EXPECT_EQ(bodyText(reportRequest() | encoding(Dictionary())), "{}");
}

TEST(RequestJSON, KeepsNullMarkers)
{
    EXPECT_EQ(bodyText(reportRequest() | encoding({{"a", NSNull()}, {"b", Array{1, NSNull()}}})),
        R"({"a":null,"b":[1,null]})");
}

TEST(RequestJSON, WritesDatesAsTheStrategySays)
{
    const auto asText = JSONEncoder::DateEncodingStrategy::iso8601();

    EXPECT_EQ(
        bodyText(reportRequest() | encoding(std::vector{Date(0)}, asText)), R"(["1970-01-01T00:00:00Z"])");
}

TEST(RequestJSON, ReplacesTheTypeButNeverABody)
{
    const LogCapture log;
    auto request = reportRequest() | addingHeader("content-type", "text/plain");

    EXPECT_EQ(
        (request | encoding({{"a", 1}})).httpHeaders(), (HTTPHeaders{{"content-type", "application/json"}}));

    request.setHTTPBody(dataFromText("body"));
    EXPECT_EQ(request | encoding({{"a", 1}}), request);
    EXPECT_EQ(request | encoding(1, asSeconds), request);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(RequestJSON, LeavesARequestWithAnEmptyBodyAsItIs)
{
    const LogCapture log;
    auto request = reportRequest();
    request.setHTTPBody(Data());

    EXPECT_EQ(request | encoding({{"a", 1}}), request);
    EXPECT_EQ(request | encoding(Broken(), asSeconds), request); // nor is anything encoded
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(RequestJSON, LeavesItsSubjectAlone)
{
    auto request = reportRequest();

    EXPECT_NE(request | encoding({{"a", 1}}), reportRequest());
    EXPECT_NE(encoding(request, 1, asSeconds), reportRequest());

    EXPECT_EQ(request, reportRequest());
}

TEST(RequestJSON, LogsADictionaryThatIsNoJSON)
{
    const LogCapture log;

    EXPECT_EQ(reportRequest() | encoding({{"a", Date()}}), reportRequest());

    ASSERT_EQ(log.count(), 1U);
    EXPECT_EQ(log.entries().front().level, Log::Level::error);
    EXPECT_EQ(log.entries().front().event.description(),
        "E URLRequest+Builder:0 encoding(json:) [MAIN] JSONSerialization Error.");
}

TEST(RequestJSON, LogsNumbersThatJSONHasNot)
{
    const LogCapture log;

    EXPECT_EQ(reportRequest() | encoding({{"a", std::numeric_limits<double>::infinity()}}), reportRequest());
    EXPECT_EQ(reportRequest() | encoding({{"a", Array{std::numeric_limits<double>::quiet_NaN()}}}),
        reportRequest());
    EXPECT_EQ(reportRequest() | encoding({{"a", "\xFF"}}), reportRequest());

    EXPECT_EQ(log.count(Log::Level::error), 3U);
}

TEST(RequestJSON, LogsAnObjectThatCannotBeEncoded)
{
    const LogCapture log;
    const auto infinite = Report{.height = std::numeric_limits<double>::infinity()};

    EXPECT_EQ(reportRequest() | encoding(infinite, asSeconds), reportRequest());

    ASSERT_EQ(log.count(), 1U);
    EXPECT_EQ(log.entries().front().level, Log::Level::error);
    EXPECT_EQ(log.entries().front().event.description(),
        "E URLRequest+Builder:0 encoding(object:dateEncodingStrategy:) [MAIN] JSON encoding Error.");
}

TEST(RequestJSON, ThrowsNothingThatAnObjectThrows)
{
    const LogCapture log;

    EXPECT_EQ(encoding(reportRequest(), Broken(), asSeconds), reportRequest());

    EXPECT_THAT(log.messages(), ElementsAre("JSON encoding Error."));
}

TEST(RequestJSON, LogsNothingWhenItIsWritten)
{
    const LogCapture log;

    std::ignore = reportRequest() | encoding({{"a", 1}});

    EXPECT_THAT(log.lines(), IsEmpty());
}

} // namespace
