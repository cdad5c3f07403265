#include "Orrenby/Standard/Texts.hpp"

#include <cstdint>
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

TEST(Texts, HashesAText)
{
    //! [Hashing a text]
    EXPECT_EQ(djb2Hash("a"), 177670);
    EXPECT_EQ(djb2Hash("feed/42"), djb2Hash("feed/42")); // in every run, on every machine
    //! [Hashing a text]
}

TEST(Texts, HashesEmptyTextTo5381) { EXPECT_EQ(djb2Hash(""), 5381); }

TEST(Texts, HashesScalarValuesAndNotBytes)
{
    EXPECT_EQ(djb2Hash("é"), 5381 * 33 + 0xE9);
    EXPECT_EQ(djb2Hash("😀"), 5381 * 33 + 0x1F600);
    EXPECT_EQ(djb2Hash("ab"), (5381 * 33 + 'a') * 33 + 'b');
}

TEST(Texts, HashesTextsDifferentlyThatOnlyLookAlike) { EXPECT_NE(djb2Hash("é"), djb2Hash("e\u0301")); }

TEST(Texts, WrapsAroundWhenTheHashOverflows)
{
    std::uint64_t expected = 5381;
    for (int count = 0; count < 1'000; ++count)
        expected = expected * 33 + 'z';

    EXPECT_EQ(djb2Hash(std::string(1'000, 'z')), static_cast<std::int64_t>(expected));
}

TEST(Texts, CanHashToANegativeNumber) { EXPECT_EQ(djb2Hash("aaaaaaaaaaaa"), -3595093842338326191); }

TEST(Texts, HashesNULsAndBrokenText)
{
    EXPECT_EQ(djb2Hash(std::string_view("\0", 1)), 5381 * 33);
    EXPECT_EQ(djb2Hash("\xFF"), 5381 * 33 + 0xFFFD);
}

TEST(Texts, GivesNothingForEmptyText) { EXPECT_EQ(nonEmptyString(""), std::nullopt); }

TEST(Texts, TakesABlankForContent)
{
    EXPECT_EQ(nonEmptyString(" "), " ");
    EXPECT_EQ(nonEmptyString("\n"), "\n");
    EXPECT_EQ(nonEmptyString("text"), "text");
    EXPECT_EQ(nonEmptyString(std::string_view("\0", 1)), std::string(1, '\0'));
}

TEST(Texts, HasARangeFromStartToEnd)
{
    EXPECT_EQ(fullRange("word"), (NSRange{.location = 0, .length = 4}));
    EXPECT_EQ(fullRange("é€"), (NSRange{.location = 0, .length = 2}));
    EXPECT_EQ(fullRange(""), NSRange());
}

TEST(Texts, HasARangeOfTwoForACharacterOutsideTheBasicPlane)
{
    EXPECT_EQ(fullRange("😀"), (NSRange{.location = 0, .length = 2}));
}
