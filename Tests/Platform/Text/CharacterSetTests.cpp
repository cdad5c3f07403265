#include "Orrenby/Platform/Text/CharacterSet.hpp"

#include "Orrenby/Platform/Objects/Printing.hpp"
#include <gmock/gmock.h>
#include <sstream>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

std::vector<char32_t> members(const CharacterSet& set)
{
    std::vector<char32_t> result;
    for (char32_t scalar = 0; scalar <= 0x10FFFF; ++scalar)
        if (set.contains(scalar))
            result.push_back(scalar);
    return result;
}

CharacterSet everything() { return CharacterSet().inverted(); }

} // namespace

TEST(CharacterSet, KnowsItsMembers)
{
    //! [Asking for members]
    const CharacterSet vowels("aeiouäö");

    EXPECT_TRUE(vowels.contains(U'ö'));
    EXPECT_FALSE(vowels.contains(U'b'));
    EXPECT_TRUE(vowels.inverted().contains(U'b'));
    EXPECT_TRUE(vowels.union_(CharacterSet("y")).contains(U'y'));
    //! [Asking for members]
}

TEST(CharacterSet, IsEmptyAtFirst)
{
    EXPECT_TRUE(CharacterSet().isEmpty());
    EXPECT_THAT(members(CharacterSet()), ElementsAre());
    EXPECT_EQ(CharacterSet(""), CharacterSet());
}

TEST(CharacterSet, HoldsBothEndsOfARange)
{
    EXPECT_THAT(members(CharacterSet::fromRange(0x7E, 0x81)), ElementsAre(0x7E, 0x7F, 0x80, 0x81));
    EXPECT_THAT(members(CharacterSet::fromRange(0x10FFFE, 0xFFFFFFFF)), ElementsAre(0x10FFFE, 0x10FFFF));
    EXPECT_TRUE(CharacterSet::fromRange(2, 1).isEmpty());
}

TEST(CharacterSet, HoldsNoSurrogates)
{
    EXPECT_THAT(members(CharacterSet::fromRange(0xD7FF, 0xE000)), ElementsAre(0xD7FF, 0xE000));
    EXPECT_TRUE(CharacterSet::fromRange(0xD800, 0xDFFF).isEmpty());
    EXPECT_FALSE(everything().contains(0xDABC));
    EXPECT_FALSE(everything().contains(0x110000));
    EXPECT_EQ(members(everything()).size(), 0x110000U - 0x800U);
}

TEST(CharacterSet, EqualsASetOfTheSameMembersMadeInAnotherWay)
{
    const auto letters = CharacterSet::fromRange('a', 'e');

    EXPECT_EQ(CharacterSet("edcbaabc"), letters);
    EXPECT_EQ(CharacterSet("ab").union_(CharacterSet("cde")), letters);
    EXPECT_EQ(letters.inverted().inverted(), letters);
    EXPECT_NE(CharacterSet("abcd"), letters);
}

TEST(CharacterSet, InvertsNothingIntoEverythingAndBack)
{
    EXPECT_EQ(everything().inverted(), CharacterSet());
    EXPECT_EQ(everything(), CharacterSet::fromRange(0, 0x10FFFF));
}

TEST(CharacterSet, IntersectsMemberByMember)
{
    const auto shared = CharacterSet("aeiou€").intersection(CharacterSet::fromRange('a', 'f'));

    EXPECT_THAT(members(shared), ElementsAre('a', 'e'));
    EXPECT_EQ(shared.intersection(CharacterSet()), CharacterSet());
    EXPECT_EQ(shared.intersection(everything()), shared);
}

TEST(CharacterSet, ListsWhiteSpaceAndLineBreaks)
{
    EXPECT_THAT(members(CharacterSet::whitespacesAndNewlines()),
        ElementsAre(0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x20, 0x85, 0xA0, 0x1680, 0x2000, 0x2001, 0x2002, 0x2003,
            0x2004, 0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x2028, 0x2029, 0x202F, 0x205F, 0x3000));
    EXPECT_EQ(
        CharacterSet::whitespaces().union_(CharacterSet::newlines()), CharacterSet::whitespacesAndNewlines());
}

TEST(CharacterSet, TellsSpacesFromLineBreaks)
{
    EXPECT_TRUE(CharacterSet::whitespaces().contains('\t'));
    EXPECT_FALSE(CharacterSet::whitespaces().contains('\n'));
    EXPECT_FALSE(CharacterSet::newlines().contains(' '));
    EXPECT_TRUE(CharacterSet::newlines().contains(0x2028));
}

TEST(CharacterSet, ListsWhatAQueryAllows)
{
    std::string allowed;
    for (const char32_t scalar : members(CharacterSet::urlQueryAllowed()))
        allowed += static_cast<char>(scalar);

    EXPECT_EQ(allowed, "!$&'()*+,-./0123456789:;=?@ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz~");
}

TEST(CharacterSet, TakesBrokenTextAsReplacements)
{
    EXPECT_THAT(members(CharacterSet("a\xFF")), ElementsAre('a', 0xFFFD));
}

TEST(CharacterSet, PrintsItsStretches)
{
    std::ostringstream stream;
    stream << CharacterSet::newlines();

    EXPECT_EQ(stream.str(), "U+000A to U+000D, U+0085, U+2028 to U+2029");
    EXPECT_EQ(describe(CharacterSet()), "none");
    EXPECT_EQ(describe(CharacterSet("\U0001F600")), "U+1F600");
}

TEST(CharacterSet, HashesByItsMembers)
{
    const std::hash<CharacterSet> hash;

    EXPECT_EQ(hash(CharacterSet("cba")), hash(CharacterSet::fromRange('a', 'c')));
    EXPECT_NE(hash(CharacterSet("ac")), hash(CharacterSet("abc")));
    EXPECT_NE(hash(CharacterSet()), hash(CharacterSet("a")));
}
