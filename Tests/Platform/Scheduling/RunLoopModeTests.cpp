#include "Orrenby/Platform/Scheduling/RunLoop.hpp"

#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include <gmock/gmock.h>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::JobOf;
using orrenby::testing::onThreadOfItsOwn;
using orrenby::testing::turn;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(RunLoop, KeepsABlockForItsMode)
{
    onThreadOfItsOwn([] {
        std::vector<std::string> calls;
        RunLoop::current().perform([&] { calls.push_back(*RunLoop::current().currentMode()); }, "own");

        EXPECT_FALSE(turn());
        EXPECT_THAT(calls, IsEmpty());

        EXPECT_TRUE(turn("own"));
        EXPECT_THAT(calls, ElementsAre("own"));
    });
}

TEST(RunLoop, RunsJobsInTheCommonModesOnly)
{
    onThreadOfItsOwn([] {
        std::vector<std::string> calls;
        auto& loop = RunLoop::current();
        auto job = JobOf([&] { calls.push_back(*loop.currentMode()); });

        loop.execute(job);
        EXPECT_FALSE(turn("own"));
        EXPECT_TRUE(turn(UITrackingRunLoopMode));
        loop.execute(job);
        EXPECT_TRUE(turn(NSDefaultRunLoopMode));

        EXPECT_THAT(calls, ElementsAre("UITrackingRunLoopMode", "kCFRunLoopDefaultMode"));
    });
}

TEST(RunLoop, RunsBlocksOfAModeAheadOfJobsThatTheModeDoesNotRun)
{
    onThreadOfItsOwn([] {
        std::vector<int> calls;
        auto& loop = RunLoop::current();
        loop.perform([&] { calls.push_back(1); });
        loop.perform([&] { calls.push_back(2); }, "own");

        turn("own");
        turn();

        EXPECT_THAT(calls, ElementsAre(2, 1));
    });
}

TEST(RunLoop, TakesTheEmptyTextAsAMode)
{
    onThreadOfItsOwn([] {
        int calls = 0;
        RunLoop::current().perform([&] { ++calls; }, "");

        EXPECT_TRUE(turn(""));
        EXPECT_EQ(calls, 1);
    });
}

TEST(RunLoop, IgnoresAnEmptyBlock)
{
    onThreadOfItsOwn([] {
        RunLoop::current().perform(nullptr);
        RunLoop::current().perform(nullptr, "own");

        EXPECT_FALSE(turn());
        EXPECT_FALSE(turn("own"));
    });
}
