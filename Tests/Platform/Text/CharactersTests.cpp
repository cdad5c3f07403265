#include "Orrenby/Platform/Text/Characters.hpp"

#include <gmock/gmock.h>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;

TEST(Characters, TakesATextApart)
{
    //! [Taking a text apart]
    EXPECT_THAT(characters("Zoe\u0308 👋🏽"), ElementsAre("Z", "o", "e\u0308", " ", "👋🏽"));
    EXPECT_EQ(characterCount("👨‍👩‍👧🇨🇭"), 2U); // a family and a flag
    //! [Taking a text apart]
}

TEST(Characters, FindsNoneInNothing)
{
    EXPECT_THAT(characters(""), ElementsAre());
    EXPECT_EQ(characterCount(""), 0U);
}

TEST(Characters, TakesALineEndOfTwoForOne)
{
    EXPECT_THAT(characters("a\r\nb\n\r"), ElementsAre("a", "\r\n", "b", "\n", "\r"));
    EXPECT_EQ(characterCount("\r\n\r\n"), 2U);
}

TEST(Characters, TakesASCIIApartByteByByte)
{
    EXPECT_THAT(characters(std::string_view("a\0b", 3)), ElementsAre("a", std::string_view("\0", 1), "b"));
}

TEST(Characters, PutsLetterAndAccentsTogether)
{
    EXPECT_THAT(characters("e\u0301\u0323x"), ElementsAre("e\u0301\u0323", "x"));
    EXPECT_EQ(characterCount("\u1112\u1161\u11AB"), 1U); // a syllable of three letters
    EXPECT_EQ(characterCount("\u0301"), 1U);             // an accent without a letter
}

TEST(Characters, AreTheTextWhenPutTogether)
{
    const std::string text = "a\xF0\x9F\x99é\x80\r\n🇨🇭🇨";
    std::string joined;
    for (const auto character : characters(text))
        joined += character;

    EXPECT_EQ(joined, text);
    EXPECT_EQ(characterCount(text), characters(text).size());
}

TEST(Characters, CountsWhatIsNoUTF8) { EXPECT_EQ(characterCount("é\xFF\xFF"), 3U); }

TEST(Characters, WorksInManyThreads)
{
    std::vector<std::size_t> counts(4);
    std::vector<std::thread> threads;
    threads.reserve(counts.size());
    for (auto& count : counts)
        threads.emplace_back([&count] {
            for (int round = 0; round < 50; ++round)
                count = characterCount("Zoe\u0308 👋🏽");
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(counts, ::testing::Each(5U));
}
