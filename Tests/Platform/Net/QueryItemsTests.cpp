#include "Orrenby/Platform/Net/QueryItems.hpp"

#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include <gmock/gmock.h>
#include <random>
#include <string>
#include <unordered_set>

using namespace orrenby;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

QueryItems form(std::string_view query) { return QueryItems::make(query, QueryEncoding::Form).value(); }

} // namespace

TEST(QueryItems, ReadAndWriteAQuery)
{
    //! [Reading and writing a query]
    auto items = QueryItems::make("https://example.com/?tag=heron&tag=grey%20heron&sorted"_url).value();

    EXPECT_THAT(items.all("tag"), ElementsAre("heron", "grey heron"));
    EXPECT_TRUE(items.contains("sorted"));

    items.append({"q", "1 + 1 = 2"});
    EXPECT_EQ(items.encoded(), "tag=heron&tag=grey%20heron&sorted&q=1%20%2B%201%20%3D%202");
    EXPECT_EQ(items.encoded(QueryEncoding::Form), "tag=heron&tag=grey+heron&sorted&q=1+%2B+1+%3D+2");
    //! [Reading and writing a query]
}

TEST(QueryItems, AreNoneInAnEmptyQueryAndWithoutOne)
{
    EXPECT_EQ(QueryItems::make(""), QueryItems());
    EXPECT_EQ(QueryItems::make("/a?"_url), QueryItems());
    EXPECT_EQ(QueryItems::make("/a"_url), QueryItems());
    EXPECT_EQ(QueryItems().encoded(), "");
}

TEST(QueryItems, KeepRepeatedNamesInOrder)
{
    const auto items = QueryItems::make("b=1&a=2&b=1&b=3").value();

    EXPECT_EQ(items, (QueryItems{{"b", "1"}, {"a", "2"}, {"b", "1"}, {"b", "3"}}));
    EXPECT_THAT(items.all("b"), ElementsAre("1", "1", "3"));
    EXPECT_EQ(items.first("b"), "1");
}

TEST(QueryItems, TellNoValueFromAnEmptyOne)
{
    const auto items = QueryItems::make("a&b=").value();

    EXPECT_EQ(items, (QueryItems{{"a", std::nullopt}, {"b", ""}}));
    EXPECT_EQ(items.encoded(), "a&b=");
    EXPECT_EQ(items.first("a"), "");
    EXPECT_EQ(items.first("b"), "");
    EXPECT_EQ(items.first("c"), std::nullopt);
    EXPECT_THAT(items.all("a"), ElementsAre(""));
    EXPECT_THAT(items.all("c"), IsEmpty());
}

TEST(QueryItems, PassOverPiecesWithoutNameAndValue)
{
    EXPECT_EQ(QueryItems::make("&a&&b&"), (QueryItems{{"a"}, {"b"}}));
    EXPECT_EQ(QueryItems::make("="), (QueryItems{{"", ""}}));
    EXPECT_EQ((QueryItems{{}, {"a"}}), (QueryItems{{"a"}}));

    QueryItems items;
    items.append({});
    EXPECT_TRUE(items.empty());
}

TEST(QueryItems, TakeAPlusForABlankInFormsOnly)
{
    EXPECT_EQ(QueryItems::make("a+b=c+%2B%20d"), (QueryItems{{"a+b", "c++ d"}}));
    EXPECT_EQ(form("a+b=c+%2B%20d"), (QueryItems{{"a b", "c + d"}}));
}

TEST(QueryItems, EndANameAtTheFirstEqualsSign)
{
    EXPECT_EQ(QueryItems::make("a=b=c&d%3De=f"), (QueryItems{{"a", "b=c"}, {"d=e", "f"}}));
}

TEST(QueryItems, EscapeAllThatIsNoLetterDigitOrMark)
{
    std::string text;
    for (char character = ' '; character < 127; ++character)
        text += character;

    EXPECT_EQ((QueryItems{{text}}).encoded(),
        "%20%21%22%23%24%25%26%27%28%29%2A%2B%2C-.%2F0123456789%3A%3B%3C%3D%3E%3F%40ABCDEFGHIJKLMNOPQRSTUVWXYZ"
        "%5B%5C%5D%5E_%60abcdefghijklmnopqrstuvwxyz%7B%7C%7D~");
    EXPECT_EQ((QueryItems{{text}}).encoded(QueryEncoding::Form),
        "+%21%22%23%24%25%26%27%28%29*%2B%2C-.%2F0123456789%3A%3B%3C%3D%3E%3F%40ABCDEFGHIJKLMNOPQRSTUVWXYZ"
        "%5B%5C%5D%5E_%60abcdefghijklmnopqrstuvwxyz%7B%7C%7D%7E");
}

TEST(QueryItems, EscapeTextBeyondASCIIAndControlCharacters)
{
    EXPECT_EQ((QueryItems{{"é", std::string("\0\r\n", 3)}}).encoded(), "%C3%A9=%00%0D%0A");
}

TEST(QueryItems, RefuseBrokenEscapes)
{
    for (const auto* query : {"%", "a=%", "a=%4", "%4G=a", "a=b&c=%zz"})
        EXPECT_EQ(QueryItems::make(query), std::nullopt) << query;
}

TEST(QueryItems, RefuseEscapesThatAreNoUTF8)
{
    EXPECT_EQ(QueryItems::make("a=%FF"), std::nullopt);
    EXPECT_EQ(QueryItems::make("%C3=a"), std::nullopt);
    EXPECT_EQ(QueryItems::make("/?a=%ED%A0%80"_url), std::nullopt);
}

TEST(QueryItems, TakeUnescapedTextForItself)
{
    EXPECT_EQ(QueryItems::make("a=é b#c?d"), (QueryItems{{"a", "é b#c?d"}}));
}

TEST(QueryItems, SetTheFirstAndRemoveTheOthers)
{
    auto items = QueryItems{{"a", "1"}, {"b", "2"}, {"a", "3"}};

    items.set("a", "4");
    EXPECT_EQ(items, (QueryItems{{"a", "4"}, {"b", "2"}}));

    items.set("c", "");
    items.set("b", std::nullopt);
    EXPECT_EQ(items, (QueryItems{{"a", "4"}, {"b", std::nullopt}, {"c", ""}}));
}

TEST(QueryItems, TakeTextsOfTheirOwn)
{
    auto items = QueryItems{{"a", "1"}, {"b", "2"}, {"a", "3"}};

    items.set(items.items()[2].name, *items.items()[2].value);
    EXPECT_EQ(items, (QueryItems{{"a", "3"}, {"b", "2"}}));

    EXPECT_EQ(items.erase(items.items()[0].name), 1u);
    EXPECT_EQ(items, (QueryItems{{"b", "2"}}));
}

TEST(QueryItems, SettingNothingUnderNoNameRemoves)
{
    auto items = QueryItems{{"", "1"}, {"a"}, {"", "2"}};

    items.set("", std::nullopt);
    EXPECT_EQ(items, (QueryItems{{"a"}}));
    items.set("", std::nullopt);
    EXPECT_EQ(items, (QueryItems{{"a"}}));
}

TEST(QueryItems, EraseAllOfAName)
{
    auto items = QueryItems{{"a", "1"}, {"b", "2"}, {"a", "3"}};

    EXPECT_EQ(items.erase("a"), 2u);
    EXPECT_EQ(items.erase("a"), 0u);
    EXPECT_EQ(items, (QueryItems{{"b", "2"}}));
}

TEST(QueryItems, CompareInOrderHashAndDescribe)
{
    const auto items = QueryItems{{"a", "1"}, {"b", "2"}};
    const auto set = std::unordered_set<QueryItems>{items, QueryItems{{"b", "2"}, {"a", "1"}}, items};

    EXPECT_EQ(set.size(), 2u);
    EXPECT_EQ(describe(items), "a=1&b=2");
}

TEST(QueryItems, ReadBackWhatTheyWrite)
{
    const auto seed = std::random_device()();
    std::mt19937 random(seed);
    const auto randomText = [&] {
        constexpr std::string_view pieces[] = {
            "a", "+", " ", "%", "%20", "&", "=", "é", "𝄞", "\n", "#", "?", "~", "*", "\x7F"};
        std::string text;
        for (auto count = random() % 5; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        return text;
    };

    for (int round = 0; round < 20'000; ++round) {
        QueryItems items;
        for (auto count = random() % 5; count > 0; --count)
            items.append({randomText(), random() % 3 == 0 ? std::nullopt : std::optional(randomText())});

        const auto percent = items.encoded();
        ASSERT_EQ(QueryItems::make(percent), items) << "seed " << seed;
        ASSERT_EQ(form(percent), items) << "seed " << seed; // whoever reads it
        ASSERT_EQ(form(items.encoded(QueryEncoding::Form)), items) << "seed " << seed;
        ASSERT_TRUE(URL::make("?" + percent)) << "seed " << seed;
    }
}
