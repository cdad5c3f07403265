#include "Orrenby/Foundation/URL.hpp"

#include "Orrenby/Testing/LogCapture.hpp"
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using orrenby::testing::LogCapture;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(MakeURL, MakesAURLOfATextThatMayBeMissing)
{
    //! [Making a URL of a text that may be missing]
    std::optional<std::string> text;
    EXPECT_EQ(makeURL(text), std::nullopt);

    text = "https://example.com";
    EXPECT_EQ(makeURL(text), "https://example.com"_url);
    //! [Making a URL of a text that may be missing]
}

TEST(MakeURL, GivesNothingForATextThatIsNone)
{
    EXPECT_EQ(makeURL("http://a b"), std::nullopt);
    EXPECT_EQ(makeURL("é"), std::nullopt);
}

TEST(QueryParams, LookUpWhatTheQuerySays)
{
    //! [Looking up what the query says]
    const auto params = "https://example.com/?page=2&name=grey%20heron"_url | queryParams;

    EXPECT_EQ(params, (Dictionary{{"page", "2"}, {"name", "grey heron"}}));
    //! [Looking up what the query says]
}

TEST(QueryParams, AreNothingWithoutAQuery)
{
    EXPECT_EQ(queryParams("http://a"_url), std::nullopt);
    EXPECT_EQ(queryParams("http://a#?b=c"_url), std::nullopt);
}

TEST(QueryParams, AreNothingForAnEmptyQuery) { EXPECT_EQ(queryParams("http://a?"_url), std::nullopt); }

TEST(QueryParams, SkipItemsWithoutAValue)
{
    EXPECT_EQ(queryParams("?a&b=1&&c"_url), (Dictionary{{"b", "1"}}));
    EXPECT_EQ(queryParams("?a"_url), Dictionary());
}

TEST(QueryParams, KeepEmptyNamesAndValues)
{
    EXPECT_EQ(queryParams("?a=&=b"_url), (Dictionary{{"a", ""}, {"", "b"}}));
}

TEST(QueryParams, KeepTheLastValueOfARepeatedName)
{
    EXPECT_EQ(queryParams("?a=1&b=2&a=3&a"_url), (Dictionary{{"a", "3"}, {"b", "2"}}));
}

TEST(QueryParams, LeaveAPlusAsItIs) { EXPECT_EQ(queryParams("?a=b+c"_url), (Dictionary{{"a", "b+c"}})); }

TEST(QueryParams, SkipWhatIsNoUTF8)
{
    EXPECT_EQ(queryParams("?a=%FF&%FF=b&c=d"_url), (Dictionary{{"c", "d"}}));
}

TEST(Prepending, ResolvesAgainstTheBase)
{
    const auto log = LogCapture();

    //! [Calling a service at a base]
    const auto base = "https://api.example.com/v2/"_url;

    EXPECT_EQ("herons?page=2"_url | prepending(base), "https://api.example.com/v2/herons?page=2"_url);
    EXPECT_EQ("/herons"_url | prepending(base), "https://api.example.com/herons"_url);
    //! [Calling a service at a base]

    EXPECT_EQ(prepending("../v1/owls"_url, base), "https://api.example.com/v1/owls"_url);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(Prepending, LeavesAnAbsoluteURLAsItIs)
{
    const auto log = LogCapture();

    EXPECT_EQ(prepending("http://a/b/../c"_url, "http://d"_url), "http://a/b/../c"_url);
    EXPECT_EQ(prepending("http://a"_url, "relative"_url), "http://a"_url);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(Prepending, ReportsABaseWithoutSchemeAndLeavesTheURLAsItIs)
{
    const auto log = LogCapture();

    EXPECT_EQ(prepending("a/b"_url, "/c"_url), "a/b"_url);

    ASSERT_EQ(log.count(), 1u);
    const auto event = log.entries().front().event;
    EXPECT_EQ(event,
        Log::Event("C", "URLRequest+Builder", 178, "prepending(baseURL:)", event.queue(),
            "URLComponents failed to concatenate baseURL"));
    EXPECT_EQ(log.criticalErrors().size(), 1u);
}

TEST(AddingQueryItems, AddsToTheQuery)
{
    //! [Adding to a query]
    const auto url = "https://example.com/herons?page=2#top"_url;
    const auto items = QueryItems{{"q", "a&b"}, {"sorted"}};

    EXPECT_EQ(url | addingQueryItems(items), "https://example.com/herons?page=2&q=a%26b&sorted#top"_url);
    EXPECT_EQ(url | settingQueryItems(items), "https://example.com/herons?q=a%26b&sorted#top"_url);
    //! [Adding to a query]
}

TEST(AddingQueryItems, MakesAQueryWhereThereIsNone)
{
    EXPECT_EQ(addingQueryItems("/a"_url, QueryItems{{"b", "1"}}), "/a?b=1"_url);
    EXPECT_EQ(addingQueryItems("/a?"_url, QueryItems{{"b", "1"}}), "/a?b=1"_url);
    EXPECT_EQ(addingQueryItems(""_url, QueryItems{{"b", "1 +"}}, QueryEncoding::Form), "?b=1+%2B"_url);
}

TEST(AddingQueryItems, LeavesTheURLAsItIsWithoutItems)
{
    EXPECT_EQ(addingQueryItems("/a?"_url, QueryItems()), "/a?"_url);
    EXPECT_EQ(addingQueryItems("/a?%7e&&b#"_url, QueryItems()), "/a?%7e&&b#"_url);
}

TEST(SettingQueryItems, RemovesTheQueryWithoutItems)
{
    EXPECT_EQ(settingQueryItems("/a?b#c"_url, QueryItems()), "/a#c"_url);
    EXPECT_EQ(settingQueryItems("/a?#c"_url, QueryItems()), "/a#c"_url);
}
