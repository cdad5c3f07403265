#include "Orrenby/Platform/Net/HTTPHeaders.hpp"

#include "Orrenby/Platform/Objects/Printing.hpp"
#include <gmock/gmock.h>
#include <sstream>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Field = HTTPHeaders::Field;

TEST(HTTPHeaders, KeepTheFirstSpellingAndTheLastValue)
{
    //! [Using header fields]
    HTTPHeaders headers = {{"Accept", "text/plain"}, {"X-Trip", "1"}};

    headers.set("accept", "text/html");

    EXPECT_EQ(headers.value("ACCEPT"), "text/html");
    EXPECT_EQ(headers.valueForExactName("Accept"), "text/html");
    EXPECT_EQ(headers.valueForExactName("accept"), std::nullopt);
    EXPECT_THAT(headers, ElementsAre(Field{"Accept", "text/html"}, Field{"X-Trip", "1"}));
    //! [Using header fields]
}

TEST(HTTPHeaders, AreEmptyAtFirst)
{
    const HTTPHeaders headers;

    EXPECT_THAT(headers, IsEmpty());
    EXPECT_EQ(headers.value("Accept"), std::nullopt);
    EXPECT_FALSE(headers.contains("Accept"));
    EXPECT_EQ(headers.description(), "[:]");
}

TEST(HTTPHeaders, SetRepeatedNamesInTurn)
{
    EXPECT_THAT(
        (HTTPHeaders{{"a", "1"}, {"b", "2"}, {"A", "3"}}), ElementsAre(Field{"a", "3"}, Field{"b", "2"}));
}

TEST(HTTPHeaders, KeepAnEmptyValue)
{
    const HTTPHeaders headers = {{"Accept", ""}};

    EXPECT_EQ(headers.value("Accept"), "");
    EXPECT_NE(headers, HTTPHeaders());
}

TEST(HTTPHeaders, EraseByAnySpelling)
{
    HTTPHeaders headers = {{"A", "1"}, {"B", "2"}, {"C", "3"}};

    EXPECT_TRUE(headers.erase("b"));
    EXPECT_FALSE(headers.erase("b"));
    EXPECT_THAT(headers, ElementsAre(Field{"A", "1"}, Field{"C", "3"}));
}

TEST(HTTPHeaders, TakeTheLastSpellingOnceTheFieldWasErased)
{
    HTTPHeaders headers = {{"Accept", "1"}};

    headers.erase("Accept");
    headers.set("accept", "2");

    EXPECT_THAT(headers, ElementsAre(Field{"accept", "2"}));
}

TEST(HTTPHeaders, FoldTheCaseOfASCIILettersOnly)
{
    const HTTPHeaders headers = {{"Ä", "1"}, {"k", "2"}, {"@", "3"}, {"[", "4"}};

    EXPECT_FALSE(headers.contains("ä"));
    EXPECT_FALSE(headers.contains("\u212A")); // the sign of the kelvin, a "k" elsewhere
    EXPECT_FALSE(headers.contains("`"));
    EXPECT_FALSE(headers.contains("{"));
    EXPECT_EQ(headers.size(), 4U);
}

TEST(HTTPHeaders, AreEqualWithoutRegardToOrderAndSpelling)
{
    const HTTPHeaders headers = {{"Accept", "a"}, {"Host", "b"}};
    const HTTPHeaders same = {{"host", "b"}, {"ACCEPT", "a"}};

    EXPECT_EQ(headers, same);
    EXPECT_EQ(std::hash<HTTPHeaders>()(headers), std::hash<HTTPHeaders>()(same));
    EXPECT_NE(headers, (HTTPHeaders{{"Accept", "A"}, {"Host", "b"}}));
    EXPECT_NE(headers, (HTTPHeaders{{"Accept", "a"}}));
    EXPECT_NE(headers, (HTTPHeaders{{"Accept", "a"}, {"Hosts", "b"}}));
}

TEST(HTTPHeaders, HashNamesAndValuesApart)
{
    EXPECT_NE((HTTPHeaders{{"a", "b"}}.hash()), (HTTPHeaders{{"b", "a"}}.hash()));
    EXPECT_NE((HTTPHeaders{{"a", "x"}, {"b", "y"}}.hash()), (HTTPHeaders{{"a", "y"}, {"b", "x"}}.hash()));
    EXPECT_NE(HTTPHeaders().hash(), (HTTPHeaders{{"", ""}}.hash()));
}

TEST(HTTPHeaders, TakeTheirOwnValuesAndNames)
{
    HTTPHeaders headers = {{"a", "a value that does not fit into the text itself"}};

    headers.set("b", headers.begin()->value);
    headers.set("a", headers.begin()->name);

    EXPECT_EQ(headers, (HTTPHeaders{{"a", "a"}, {"b", "a value that does not fit into the text itself"}}));
}

TEST(HTTPHeaders, PrintAsADictionary)
{
    std::ostringstream text;

    text << HTTPHeaders{{"b", "\"2\""}, {"A", "1"}};

    EXPECT_EQ(text.str(), R"(["A": "1", "b": "\"2\""])");
}

TEST(HTTPHeaders, WriteWhatTheyAreGivenUnchecked)
{
    EXPECT_EQ((HTTPHeaders{{"a", "1\r\nb: 2"}}.value("a")), "1\r\nb: 2");
}

} // namespace
