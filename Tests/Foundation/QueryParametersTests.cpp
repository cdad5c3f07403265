#include "Orrenby/Foundation/QueryParameters.hpp"

#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Testing/LogCapture.hpp"
#include <cstdint>
#include <gmock/gmock.h>
#include <limits>
#include <string>

using namespace orrenby;
using orrenby::testing::LogCapture;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// The one entry that was made must be this.
void expectEntry(const LogCapture& log, int line, const char* message)
{
    ASSERT_EQ(log.count(), 1u);
    const auto event = log.entries().front().event;
    EXPECT_EQ(event,
        Log::Event("C", "NSDictionary+Halvet", line, "urlEncodeQueryParameters()", event.queue(), message));
    EXPECT_EQ(log.criticalErrors().size(), 1u);
}

} // namespace

TEST(QueryParameters, AreThoseOfAText)
{
    //! [Parameters of a text]
    EXPECT_EQ(queryParameters("herons?page=2&name=grey heron"),
        (Dictionary{{"page", "2"}, {"name", "grey%20heron"}}));
    EXPECT_EQ("page=2" | queryParameters, (Dictionary{{"page", "2"}}));
    //! [Parameters of a text]
}

TEST(QueryParameters, AreNoneInATextWithoutAny)
{
    EXPECT_EQ(queryParameters(""), Dictionary());
    EXPECT_EQ(queryParameters("?"), Dictionary());
    EXPECT_EQ(queryParameters("a=b?"), Dictionary());
    EXPECT_EQ(queryParameters("herons"), Dictionary());
}

TEST(QueryParameters, EncodeAgainWhatIsEncodedAlready)
{
    EXPECT_EQ(queryParameters("a=%20&%20=é"), (Dictionary{{"a", "%2520"}, {"%2520", "%C3%A9"}}));
}

TEST(QueryParameters, LeaveWhatMayStandInAQuery)
{
    EXPECT_EQ(queryParameters("a/:=b+;,@!"), (Dictionary{{"a/:", "b+;,@!"}}));
}

TEST(QueryParameters, SkipPiecesWithoutEqualsSign)
{
    EXPECT_EQ(queryParameters("a&b=1&&c"), (Dictionary{{"b", "1"}}));
}

TEST(QueryParameters, KeepEmptyNamesAndValues)
{
    EXPECT_EQ(queryParameters("a=&=b"), (Dictionary{{"a", ""}, {"", "b"}}));
    EXPECT_EQ(queryParameters("="), (Dictionary{{"", ""}}));
}

TEST(QueryParameters, EndAValueAtTheNextEqualsSign)
{
    EXPECT_EQ(queryParameters("a=b=c"), (Dictionary{{"a", "b"}}));
}

TEST(QueryParameters, EndTheQueryAtASecondQuestionMark)
{
    EXPECT_EQ(queryParameters("x=0?a=1?b=2"), (Dictionary{{"a", "1"}}));
}

TEST(QueryParameters, TakeAFragmentForPartOfTheQuery)
{
    EXPECT_EQ(queryParameters("/?a=1#b"), (Dictionary{{"a", "1%23b"}}));
}

TEST(QueryParameters, KeepTheLastValueOfARepeatedName)
{
    EXPECT_EQ(queryParameters("a=1&b=2&a=3"), (Dictionary{{"a", "3"}, {"b", "2"}}));
}

TEST(QueryParameters, SkipWhatIsNoUTF8)
{
    EXPECT_EQ(queryParameters("a=\xFF&\xFF=b&c=d"), (Dictionary{{"c", "d"}}));
}

TEST(URLEncodeQueryParameters, WritesTheEntriesInOrder)
{
    //! [A query of a dictionary]
    const auto parameters = Dictionary{{"name", "grey heron"}, {"page", 2}, {"a&b", "="}};

    EXPECT_EQ(urlEncodeQueryParameters(parameters), "name=grey%20heron&page=2&a%26b=%3D");
    EXPECT_EQ(parameters | urlEncodeQueryParameters, "name=grey%20heron&page=2&a%26b=%3D");
    //! [A query of a dictionary]
}

TEST(URLEncodeQueryParameters, GivesTheEmptyTextForAnEmptyDictionary)
{
    EXPECT_EQ(urlEncodeQueryParameters(Dictionary()), "");
    EXPECT_EQ(urlEncodeQueryParameters(AnyEntries()), "");
}

TEST(URLEncodeQueryParameters, WritesNumbersAsTheirText)
{
    const auto log = LogCapture();

    EXPECT_EQ(urlEncodeQueryParameters(Dictionary{{"a", -7}, {"b", std::uint64_t(18446744073709551615u)},
                  {"c", 1.0}, {"d", 1.5f}, {"e", -0.25}, {"f", true}, {"g", false}, {"h", 1e20}}),
        "a=-7&b=18446744073709551615&c=1&d=1.5&e=-0.25&f=1&g=0&h=1e%2B20");
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(URLEncodeQueryParameters, WritesNumbersThatWereReadFromJSON)
{
    const auto log = LogCapture();
    const auto read = NSJSONSerialization::JSONObjectWithData(dataFromText(
        R"({"a": 1, "b": 2.0, "c": 0.5, "d": -0.0, "e": 18446744073709551615, "f": 1e20, "g": true})"));

    EXPECT_EQ(urlEncodeQueryParameters(*read.get<Dictionary>()),
        "a=1&b=2&c=0.5&d=-0&e=18446744073709551615&f=1e%2B20&g=1");
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(URLEncodeQueryParameters, KeepsTextBeyondASCII)
{
    EXPECT_EQ(urlEncodeQueryParameters(Dictionary{{"é", "\"<>"}}), "é=\"<>");
}

TEST(URLEncodeQueryParameters, ReportsAKeyThatIsNoTextAndSkipsTheEntry)
{
    const auto log = LogCapture();

    EXPECT_EQ(urlEncodeQueryParameters(AnyEntries{{"a", 1}, {2, "b"}, {"c", "d"}}), "a=1&c=d");

    expectEntry(log, 66, "key is not a NSString");
}

TEST(URLEncodeQueryParameters, ReportsAValueThatIsNeitherTextNorNumberAndSkipsTheEntry)
{
    const auto log = LogCapture();

    EXPECT_EQ(urlEncodeQueryParameters(Dictionary{{"a", Array{1}}, {"b", 2}}), "b=2");

    expectEntry(log, 67, "value is not an NSString");
}

TEST(URLEncodeQueryParameters, ReportsNullAndDates)
{
    const auto log = LogCapture();

    EXPECT_EQ(urlEncodeQueryParameters(Dictionary{{"a", NSNull()}, {"b", Date()}, {"c", Dictionary()}}), "");

    EXPECT_THAT(log.lines(),
        ElementsAre("Critical: value is not an NSString", "Critical: value is not an NSString",
            "Critical: value is not an NSString"));
}

TEST(URLEncodeQueryParameters, ReportsOnlyTheKeyWhenBothAreWrong)
{
    const auto log = LogCapture();

    EXPECT_EQ(urlEncodeQueryParameters(AnyEntries{{1, NSNull()}}), "");

    expectEntry(log, 66, "key is not a NSString");
}

TEST(URLEncodeQueryParameters, WritesNullForATextThatIsNoUTF8)
{
    EXPECT_EQ(urlEncodeQueryParameters(Dictionary{{"a", "\xFF"}, {"\xFF", "b"}}), "a=(null)&(null)=b");
}

TEST(PathByAppendingQueryParameters, AppendsParameters)
{
    //! [A path with parameters]
    EXPECT_EQ("/herons" | pathByAppendingQueryParameters(Dictionary{{"page", 2}}), "/herons?page=2");
    //! [A path with parameters]
}

TEST(PathByAppendingQueryParameters, AlwaysAddsAQuestionMark)
{
    EXPECT_EQ(pathByAppendingQueryParameters("/a?b=1", Dictionary{{"c", "2"}}), "/a?b=1?c=2");
    EXPECT_EQ(pathByAppendingQueryParameters("/a", Dictionary()), "/a?");
    EXPECT_EQ(pathByAppendingQueryParameters("", Dictionary()), "?");
}

TEST(PathByAppendingQueryParameters, TakesEntriesWithKeysOfAnyKind)
{
    const auto log = LogCapture();

    EXPECT_EQ(pathByAppendingQueryParameters("/a", AnyEntries{{"b", 1}, {2, 3}}), "/a?b=1");
    EXPECT_THAT(log.lines(), ElementsAre("Critical: key is not a NSString"));
}
