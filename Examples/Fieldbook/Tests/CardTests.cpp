#include "Examples/Fieldbook/Card.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;

std::vector<std::string> cardOf(const Report& report, bool isDetailed = true)
{
    const auto terminal = Terminal(-1, false);
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
