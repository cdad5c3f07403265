#include "Orrenby/Testing/MarbleScript.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using orrenby::testing::MarbleError;
using orrenby::testing::MarbleEvent;
using orrenby::testing::MarbleScript;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// What is wrong with a line.
std::string complaint(std::string_view notation)
{
    try {
        (void)MarbleScript(notation);
        return "nothing";
    } catch (const MarbleError& error) {
        return error.what();
    }
}

TEST(MarbleScript, ReadsElementsPausesGroupsAndTheEnd)
{
    //! [Reading marbles]
    const auto script = MarbleScript("a--(bc)#-|");

    // a in frame 0, b and c in frame 3, a failure in frame 4, the end in frame 6
    EXPECT_THAT(script.events(),
        ElementsAre(MarbleEvent{0, 'a'}, MarbleEvent{3, 'b'}, MarbleEvent{3, 'c'}, MarbleEvent{4, '#'},
            MarbleEvent{6, '|'}));
    //! [Reading marbles]
    EXPECT_EQ(script.frameCount(), 7);
    EXPECT_TRUE(script.events().back().isEnd());
    EXPECT_FALSE(script.events().front().isEnd());
}

TEST(MarbleScript, OfNothingHasNoEvents)
{
    EXPECT_THAT(MarbleScript("").events(), IsEmpty());
    EXPECT_EQ(MarbleScript("").frameCount(), 0);
    EXPECT_THAT(MarbleScript("---").events(), IsEmpty());
    EXPECT_EQ(MarbleScript("---").frameCount(), 3);
}

TEST(MarbleScript, ReadsTheEndWithinAGroup)
{
    EXPECT_THAT(MarbleScript("-(a|)").events(), ElementsAre(MarbleEvent{1, 'a'}, MarbleEvent{1, '|'}));
    EXPECT_EQ(MarbleScript("-(a|) ").frameCount(), 2);
}

TEST(MarbleScript, KnowsWhereEachSymbolStands)
{
    const auto script = MarbleScript("- (aZ) 9");

    EXPECT_EQ(script.events()[0].position, 3U);
    EXPECT_EQ(script.events()[1].position, 4U);
    EXPECT_EQ(script.events()[2].position, 7U);
}

TEST(MarbleScript, IsTheSameWithBlanksAndWithoutEmptyFramesAtItsEnd)
{
    EXPECT_EQ(MarbleScript("a - b"), MarbleScript("a-b"));
    EXPECT_EQ(MarbleScript("a-b---"), MarbleScript("a-b"));
    EXPECT_NE(MarbleScript("a--b"), MarbleScript("a-b"));
    EXPECT_NE(MarbleScript("a-(bc)"), MarbleScript("a-(cb)"));
    EXPECT_NE(MarbleScript("a|"), MarbleScript("a"));
}

TEST(MarbleScript, OfEventsIsWrittenInItsShortestForm)
{
    const auto script = MarbleScript({{0, 'a'}, {2, 'b'}, {2, '#'}, {3, '|'}});

    EXPECT_EQ(script.notation(), "a-(b#)|");
    EXPECT_EQ(script, MarbleScript("a-(b#)|"));
    EXPECT_EQ(script.frameCount(), 4);
    EXPECT_EQ(MarbleScript(std::vector<MarbleEvent>()).notation(), "");
}

TEST(MarbleScript, SaysWhatIsWrongAndWhere)
{
    EXPECT_EQ(complaint("a-(b"), "Marbles \"a-(b\", position 2: this group has no end");
    EXPECT_EQ(complaint("a-(b-c)"), "Marbles \"a-(b-c)\", position 4: no time passes within a group");
    EXPECT_EQ(complaint("(a(b))"), "Marbles \"(a(b))\", position 2: a group holds no groups");
    EXPECT_EQ(complaint("a)"), "Marbles \"a)\", position 1: no group begins before this");
    EXPECT_EQ(complaint("-()"), "Marbles \"-()\", position 2: this group is empty");
    EXPECT_EQ(complaint("a( )"), "Marbles \"a( )\", position 3: this group is empty");
    EXPECT_EQ(complaint("a |-"), "Marbles \"a |-\", position 3: nothing can come after the end");
    EXPECT_EQ(complaint("(|a)"), "Marbles \"(|a)\", position 2: nothing can come after the end");
    EXPECT_EQ(complaint("||"), "Marbles \"||\", position 1: nothing can come after the end");
    EXPECT_EQ(complaint("a+"), "Marbles \"a+\", position 1: this character has no meaning");
    EXPECT_EQ(complaint("\u00e9"), "Marbles \"\u00e9\", position 0: this character has no meaning");
    EXPECT_EQ(complaint("(a|)"), "nothing");
}

TEST(MarbleScript, PrintsAsItWasWritten)
{
    std::ostringstream stream;

    stream << MarbleScript("-a (bc)-|");

    EXPECT_EQ(stream.str(), "-a (bc)-|");
    EXPECT_EQ(orrenby::describe(MarbleScript("a|")), "a|");
}

} // namespace
