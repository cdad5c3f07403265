#include "Orrenby/Platform/Engines/Ground/CleanUps.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orrenby;
using detail::CleanUps;
using ::testing::ElementsAre;

namespace {

TEST(CleanUps, RunInTheOrderOfTheirComingAndOnce)
{
    const auto cleanUps = std::make_shared<CleanUps>();
    auto ran = std::vector<int>();
    for (auto i = 0; i < 3; ++i)
        CleanUps::add(cleanUps, [&ran, i] { ran.push_back(i); });

    cleanUps->run();
    cleanUps->run();

    EXPECT_THAT(ran, ElementsAre(0, 1, 2));
}

TEST(CleanUps, OneThatComesDuringARunWaitsForTheNext)
{
    const auto cleanUps = std::make_shared<CleanUps>();
    auto ran = std::vector<int>();
    CleanUps::add(cleanUps, [&] {
        ran.push_back(1);
        CleanUps::add(cleanUps, [&] { ran.push_back(2); });
    });

    cleanUps->run();
    EXPECT_THAT(ran, ElementsAre(1));
    cleanUps->run();

    EXPECT_THAT(ran, ElementsAre(1, 2));
}

TEST(CleanUps, OneThatComesAfterTheReleaseIsDroppedWithoutBeingRun)
{
    auto cleanUps = std::make_shared<CleanUps>();
    const auto registration = std::weak_ptr(cleanUps);
    auto ran = 0;
    const auto content = std::make_shared<int>(1);

    cleanUps.reset();
    CleanUps::add(registration, [&ran, content] { ++ran; });

    EXPECT_EQ(ran, 0);
    EXPECT_EQ(content.use_count(), 1);
}

TEST(CleanUps, AnEmptyOneIsIgnored)
{
    const auto cleanUps = std::make_shared<CleanUps>();

    CleanUps::add(cleanUps, nullptr);

    cleanUps->run();
}

TEST(CleanUps, WhatWasNeverRunGoesAwayUnrun)
{
    auto ran = 0;
    {
        const auto cleanUps = std::make_shared<CleanUps>();
        CleanUps::add(cleanUps, [&] { ++ran; });
    }

    EXPECT_EQ(ran, 0);
}

} // namespace
