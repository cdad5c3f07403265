#include "Orrenby/Platform/Scheduling/Chrono.hpp"

#include "Orrenby/Testing/VirtualWorld.hpp"
#include <chrono>
#include <gmock/gmock.h>
#include <vector>

using namespace orrenby;
using namespace std::chrono_literals;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;

TEST(Chrono, CountsInSeconds)
{
    EXPECT_EQ(inSeconds(250ms), 0.25);
    EXPECT_EQ(inSeconds(2h), 7200);
    EXPECT_EQ(inSeconds(-1s), -1);
    EXPECT_EQ(inSeconds(std::chrono::duration<float, std::ratio<60>>(0.5F)), 30);
}

TEST(Chrono, DelaysWorkByADuration)
{
    auto world = VirtualWorld();
    auto moments = std::vector<double>();
    const auto queue = DispatchQueue::serial("com.example.refresh");

    //! [Delaying by a duration]
    asyncAfter(queue, 250ms, [&] { moments.push_back(world.elapsed()); });
    queue.asyncAfter(inSeconds(2min), [&] { moments.push_back(world.elapsed()); });
    //! [Delaying by a duration]
    world.runAll();

    EXPECT_THAT(moments, ElementsAre(0.25, 120));
}

TEST(Chrono, RunsALoopForADuration)
{
    auto world = VirtualWorld();
    auto& loop = RunLoop::current();
    const auto keepsGoing = timerWithTimeInterval(24h, false, [](Timer&) {});
    loop.addTimer(keepsGoing, NSDefaultRunLoopMode);

    runFor(loop, 90s);

    EXPECT_EQ(world.elapsed(), 90);
}

TEST(Chrono, MakesTimersWithADuration)
{
    auto world = VirtualWorld();
    auto moments = std::vector<double>();

    scheduledTimerWithTimeInterval(1500ms, true, [&](Timer&) { moments.push_back(world.elapsed()); });
    world.advance(3);

    EXPECT_THAT(moments, ElementsAre(1.5, 3));
}
