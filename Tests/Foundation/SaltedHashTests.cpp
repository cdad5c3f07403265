#include "Orrenby/Foundation/SaltedHash.hpp"

#include "Orrenby/Foundation/Hashes.hpp"
#include <gmock/gmock.h>

using namespace orrenby;

TEST(SaltedHash, TakesPiecesOfOnesOwn)
{
    //! [Hashing with pieces of one's own]
    SaltedHash::setPieces({.first = "q1w", .second = "e2r", .third = "t3y4"});

    EXPECT_EQ(saltedHash("correct horse"), sha1Hash("horseq1wcoe2rct t3y4horscorrect horse"));
    //! [Hashing with pieces of one's own]
    SaltedHash::setPieces({});
}

TEST(SaltedHash, HasPiecesAtFirst)
{
    EXPECT_EQ(SaltedHash::pieces(), (SaltedHashPieces{.first = "k3x", .second = "p9q", .third = "z2w7"}));
    EXPECT_EQ(saltedHash("abcdefghijklm"), "d0d6901ac56746dc7d0d8ed7293a26f78c5e4039");
}

TEST(SaltedHash, KeepsThePiecesThatAreSet)
{
    SaltedHash::setPieces({.first = "a", .second = "", .third = "c"});

    EXPECT_EQ(SaltedHash::pieces(), (SaltedHashPieces{.first = "a", .second = "", .third = "c"}));
    EXPECT_NE(saltedHash("abcdefghijklm"), "d0d6901ac56746dc7d0d8ed7293a26f78c5e4039");
    SaltedHash::setPieces({});
}

TEST(SaltedHash, GivesNothingForSevenCharacters)
{
    EXPECT_EQ(saltedHash("abcdefg"), std::nullopt);
    EXPECT_EQ(saltedHash(""), std::nullopt);
}

TEST(SaltedHash, TakesEightCharacters)
{
    EXPECT_EQ(saltedHash("abcdefgh"), sha1Hash("defghk3xabp9qabcz2w7defgabcdefgh"));
}

TEST(SaltedHash, CountsCharactersThatPeopleSee)
{
    EXPECT_EQ(saltedHash("Zoe\u0308 👨‍👩‍👧s"), std::nullopt); // six, of many bytes
    EXPECT_EQ(saltedHash("éöabcd🇨🇭ñ"), sha1Hash("bcd🇨🇭ñk3xéöp9qéöaz2w7bcd🇨🇭éöabcd🇨🇭ñ"));
}

TEST(SaltedHash, GivesNothingForTextThatIsNoUTF8) { EXPECT_EQ(saltedHash("abcdefgh\xFF"), std::nullopt); }
