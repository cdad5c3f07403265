#include "Orrenby/Utilities/Streams/More/WakeUps.hpp"

#include "Orrenby/Testing/VirtualWorld.hpp"
#include <gtest/gtest.h>

using namespace orrenby;
using orrenby::detail::WakeUps;
using orrenby::testing::VirtualWorld;

namespace {

TEST(WakeUps, APostedWorkThatComesAtItsMomentIsDueOnce)
{
    auto world = VirtualWorld();
    auto wakeUps = WakeUps();

    const auto wait = wakeUps.ask(2);
    ASSERT_TRUE(wait);
    EXPECT_EQ(wait->seconds, 2);
    world.advance(2);

    EXPECT_FALSE(wakeUps.come(wait->number));
    EXPECT_TRUE(wakeUps.takeDue());
    EXPECT_FALSE(wakeUps.takeDue());
}

TEST(WakeUps, ALaterMomentPostsNothingUntilTheEarlierWorkComes)
{
    auto world = VirtualWorld();
    auto wakeUps = WakeUps();
    const auto first = wakeUps.ask(2);
    world.advance(1);

    EXPECT_FALSE(wakeUps.ask(2));
    world.advance(1);
    const auto rest = wakeUps.come(first->number);

    ASSERT_TRUE(rest);
    EXPECT_EQ(rest->seconds, 1);
    EXPECT_FALSE(wakeUps.takeDue());
    world.advance(1);
    EXPECT_FALSE(wakeUps.come(rest->number));
    EXPECT_TRUE(wakeUps.takeDue());
}

TEST(WakeUps, AnEarlierMomentMakesTheWorkForTheLaterOneStale)
{
    auto world = VirtualWorld();
    auto wakeUps = WakeUps();
    const auto late = wakeUps.ask(5);

    const auto soon = wakeUps.ask(1);

    ASSERT_TRUE(soon);
    EXPECT_EQ(soon->seconds, 1);
    world.advance(5);
    EXPECT_FALSE(wakeUps.come(late->number));
    EXPECT_FALSE(wakeUps.takeDue());
    EXPECT_FALSE(wakeUps.come(soon->number));
    EXPECT_TRUE(wakeUps.takeDue());
}

TEST(WakeUps, WhatIsPutOffIsNotDueAndMayBeAskedForAgain)
{
    auto world = VirtualWorld();
    auto wakeUps = WakeUps();
    const auto first = wakeUps.ask(1);
    wakeUps.putOff();
    world.advance(1);

    EXPECT_FALSE(wakeUps.come(first->number));
    EXPECT_FALSE(wakeUps.takeDue());
    EXPECT_TRUE(wakeUps.ask(1));
}

TEST(WakeUps, AMomentThatIsOverIsDueAtOnce)
{
    auto world = VirtualWorld();
    auto wakeUps = WakeUps();

    const auto wait = wakeUps.ask(-1);

    EXPECT_FALSE(wakeUps.come(wait->number));
    EXPECT_TRUE(wakeUps.takeDue());
}

} // namespace
