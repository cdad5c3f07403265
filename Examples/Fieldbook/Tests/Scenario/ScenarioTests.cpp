#include "Examples/Fieldbook/Scenario/Scenario.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;

TEST(Scenario, HasScenesWithStepsAndKnowsTheirLines)
{
    const auto scenes = scenesIn("# A text.\n\nscene links: a link: goes along\n  start  --rx \ntype a  b\n"
                                 "scene end: everything ends\n\tend");

    EXPECT_EQ(scenes.unwrap(),
        (std::vector<Scene>{{"links", "a link: goes along", {{4, "start", "--rx"}, {5, "type", "a  b"}}},
            {"end", "everything ends", {{7, "end", ""}}}}));
}

TEST(Scenario, HasStepsThatReadAsTheyWereWritten)
{
    EXPECT_EQ((ScenarioStep{1, "type", "a  b"}.text()), "type a  b");
    EXPECT_EQ((ScenarioStep{1, "end", ""}.text()), "end");
}

TEST(Scenario, MayBeEmpty) { EXPECT_EQ(scenesIn("").unwrap(), std::vector<Scene>()); }

TEST(Scenario, IsRefusedWithTheNumberOfTheLine)
{
    EXPECT_EQ(scenesIn("\nstart").error(), "line 2: a step before the first scene");
    EXPECT_EQ(scenesIn("scene a: b\nscene a: c").error(), "line 2: two scenes are called a");
    for (const auto* const line : {"scene", "scene a", "scene a:", "scene : b", "scene a b: c"})
        EXPECT_EQ(scenesIn(line).error(), "line 1: a scene begins with \"scene NAME: TITLE\"") << line;
}

} // namespace
