#include "Orrenby/Platform/Text/Trimming.hpp"

#include "Orrenby/Platform/Text/PercentEncoding.hpp"
#include <cstdlib>
#include <gmock/gmock.h>

using namespace orrenby;

namespace {

bool trimsAndEscapes()
{
    return trimmingCharacters("\t a\n", CharacterSet::whitespacesAndNewlines()) == "a"
        && addingPercentEncoding(" ", CharacterSet::urlQueryAllowed()) == "%20";
}

/// Works when it goes away.
struct WorksAtTheEnd {
    ~WorksAtTheEnd() { std::_Exit(trimsAndEscapes() ? 7 : 8); }
};

} // namespace

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

TEST(TrimmingDeathTest, WorksWhileTheProcessEnds)
{
    EXPECT_EXIT(
        {
            static WorksAtTheEnd late; // made before the first use, so gone after what that one kept
            std::exit(trimsAndEscapes() ? 0 : 1);
        },
        ::testing::ExitedWithCode(7), "");
}
