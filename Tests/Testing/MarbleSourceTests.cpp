#include "Orrenby/Testing/MarbleSource.hpp"

#include "Orrenby/Testing/Recorder.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orrenby;
using orrenby::testing::MarbleError;
using orrenby::testing::MarbleSource;
using orrenby::testing::Recorder;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;

namespace {

TEST(MarbleSource, SendsEachElementInItsFrame)
{
    //! [Testing an operator]
    auto world = VirtualWorld();
    const auto numbers = MarbleSource<int, std::string>("1-2-#-(34)|", {.failures = {{'#', "lost"}}});

    const auto doubled = Recorder(numbers.asPublisher().map([](int number) { return number * 2; }),
        {.values = {{'a', 2}, {'b', 4}, {'c', 6}, {'d', 8}}, .failures = {{'X', "lost"}}});
    world.runAll();

    EXPECT_EQ(doubled.marbles(), "a-b-X-(cd)|");
    //! [Testing an operator]
    EXPECT_EQ(world.elapsed(), 0.07);
}

TEST(MarbleSource, RunsThroughQueuesOfTheVirtualWorld)
{
    //! [Testing a stream through a queue]
    auto world = VirtualWorld();
    const auto queue = DispatchQueue::serial("parsing");
    const auto lines = MarbleSource<char>("a-(bc)---d|");

    const auto parsed = Recorder(lines.asPublisher().receive(queue));
    world.runAll();

    EXPECT_EQ(parsed.marbles(), "a-(bc)---d|"); // later, but in no time of this world
    //! [Testing a stream through a queue]
}

TEST(MarbleSource, TakesTheLengthOfItsFramesFromTheLegend)
{
    auto world = VirtualWorld();
    const auto source = MarbleSource<int>("1-2", {.frame = 60});
    const auto recorder = Recorder(source);

    world.advance(119);
    EXPECT_THAT(recorder.values(), ElementsAre(1));
    world.advance(1);
    EXPECT_THAT(recorder.values(), ElementsAre(1, 2));
}

TEST(MarbleSource, SendsWhatComesAfterASubscription)
{
    auto world = VirtualWorld();
    const auto source = MarbleSource<char>("ab-cd");
    world.advance(0.015);

    const auto late = Recorder(source);
    world.runAll();

    EXPECT_THAT(late.values(), ElementsAre('c', 'd'));
}

TEST(MarbleSource, GoesOnWithoutItsHandle)
{
    auto world = VirtualWorld();
    const auto recorder = Recorder(MarbleSource<char>("ab|"));

    world.runAll();

    EXPECT_EQ(recorder.marbles(), "ab|");
}

TEST(MarbleSource, SendsFailuresThatAreOfTheTypeOfValues)
{
    auto world = VirtualWorld();
    const auto recorder = Recorder(
        MarbleSource<std::string, std::string>("ax", {.failures = {{'x', "a"}}}), {.failures = {{'x', "a"}}});

    world.runAll();

    EXPECT_EQ(recorder.marbles(), "ax");
    EXPECT_THAT(recorder.failures(), ElementsAre("a"));
}

TEST(MarbleSource, KeepsTheOrderOfSourcesThatSendAtTheSameTime)
{
    auto world = VirtualWorld();
    auto seen = std::string();
    const auto first = MarbleSource<char>("a-b");
    const auto second = MarbleSource<char>("c-d");
    const auto append = [&](char character) { seen += character; };
    const auto subscriptions = {second.asPublisher().bind(append), first.asPublisher().bind(append)};

    world.runAll();

    EXPECT_EQ(seen, "acbd");
    EXPECT_EQ(subscriptions.size(), 2U);
}

TEST(MarbleSource, RefusesASymbolThatStandsForNothing)
{
    const auto world = VirtualWorld();

    try {
        (void)MarbleSource<int>("1-a", {.values = {{'b', 1}}});
        FAIL() << "nothing was thrown";
    } catch (const MarbleError& error) {
        EXPECT_STREQ(error.what(), "Marbles \"1-a\", position 2: the legend has nothing for this symbol");
    }
    EXPECT_THROW(MarbleSource<int>("#"), MarbleError);
    EXPECT_THROW(MarbleSource<int>("1)"), MarbleError);
    EXPECT_EQ(world.pendingCount(), 0U);
}

TEST(MarbleSource, MayBePendingWhenTheWorldEnds)
{
    const auto witness = std::make_shared<int>(1);
    {
        const auto world = VirtualWorld();
        const auto source = MarbleSource<Ref<int>>("--a", {.values = {{'a', witness}}});
        EXPECT_GT(witness.use_count(), 1);
    }

    EXPECT_EQ(witness.use_count(), 1);
}

} // namespace
