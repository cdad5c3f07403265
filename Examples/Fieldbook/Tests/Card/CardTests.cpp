#include "Examples/Fieldbook/Card/Card.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;

std::vector<std::string> cardOf(const Report& report, bool isDetailed = true, bool isColoured = false)
{
    const auto terminal = Terminal(-1, isColoured);
    const auto card = Cards({&terminal, isDetailed}).create(report);
    return card ? (*card)->lines({7, report}) : std::vector<std::string>();
}

TEST(Cards, ShowTitlePlaceObserverAndText)
{
    EXPECT_THAT(cardOf({"Wasps", "Gate", "Jo", Severity::low, "A nest.\nNot aggressive.\n"}),
        ElementsAre("| #7 low     Wasps", "| Gate, by Jo", "| A nest.", "| Not aggressive."));
}

TEST(Cards, LeaveTheTextOutWhenTheyAreShort)
{
    EXPECT_THAT(cardOf({"Wasps", "Gate", "Jo", Severity::low, "A nest.\n"}, false),
        ElementsAre("| #7 low     Wasps", "| Gate, by Jo"));
}

TEST(Cards, UnderlineWhatCanBeFollowedInTitlePlaceAndText)
{
    EXPECT_THAT(cardOf({"News at hut.example.org", "www.hut.example.org", "Jo", Severity::low,
                           "Ask ada@hut.example."},
                    true, true),
        ElementsAre("| #7 \x1B[32mlow     \x1B[0m\x1B[1mNews at \x1B[0m\x1B[4mhut.example.org\x1B[0m",
            "| \x1B[4mwww.hut.example.org\x1B[0m, by Jo", "| Ask \x1B[4mada@hut.example\x1B[0m."));
}

TEST(Cards, WarnOfWhatIsGrave)
{
    EXPECT_THAT(cardOf({"Rock 3 loose", "Bend", "Jo", Severity::high, {}}),
        ElementsAre("| #7 high    Rock 3 loose", "| Bend, by Jo", "| keep people away until it is cleared"));
}

TEST(Cards, PutACountForward)
{
    EXPECT_THAT(cardOf({"Orchids, 214 stems", "Gate", "Jo", Severity::low, {}}),
        ElementsAre("| #7 low     Orchids, 214 stems", "| Gate, by Jo", "| counted: 214"));
}

} // namespace
