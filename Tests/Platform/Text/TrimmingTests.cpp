#include "Orrenby/Platform/Text/Trimming.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(Trimming, CutsOffCharacters)
{
    //! [Cutting off characters]
    EXPECT_EQ(trimmingCharacters("--a-b---", CharacterSet("-")), "a-b");
    EXPECT_EQ(trimmingCharacters("«citation»", CharacterSet("«»")), "citation");
    //! [Cutting off characters]
}

TEST(Trimming, LeavesNothingOfNothingAndOfMembersAlone)
{
    EXPECT_EQ(trimmingCharacters("", CharacterSet("-")), "");
    EXPECT_EQ(trimmingCharacters("----", CharacterSet("-")), "");
    EXPECT_EQ(trimmingCharacters("«", CharacterSet("«»")), "");
}

TEST(Trimming, GivesAPieceOfTheText)
{
    constexpr std::string_view text = "  word ";

    EXPECT_EQ(trimmingCharacters(text, CharacterSet(" ")).data(), text.data() + 2);
}

TEST(Trimming, KeepsWhatIsNoUTF8)
{
    const auto everything = CharacterSet().inverted();

    EXPECT_EQ(trimmingCharacters("ab\x80-\xE2\x82", everything), "\x80-\xE2\x82");
    EXPECT_EQ(trimmingCharacters("\xFF", everything), "\xFF");
    EXPECT_EQ(trimmingCharacters("\uFFFD", everything), "");
}

TEST(Trimming, CutsNothingWithAnEmptySet) { EXPECT_EQ(trimmingCharacters(" a ", CharacterSet()), " a "); }
