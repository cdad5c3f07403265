#include "Examples/Fieldbook/Application/EventLoop.hpp"

#include "Examples/Fieldbook/Terminal/Descriptor.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace fieldbook;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

struct Pipe {
    Pipe()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe(ends.data()), 0);
        reader = Descriptor(ends[0]);
        writer = Descriptor(ends[1]);
    }

    void put() const { EXPECT_EQ(::write(writer.number(), "x", 1), 1); }

    void take() const
    {
        char byte = 0;
        EXPECT_EQ(::read(reader.number(), &byte, 1), 1);
    }

    Descriptor reader;
    Descriptor writer;
};

TEST(EventLoop, EndsAtOnceWithoutWatches)
{
    auto loop = EventLoop();
    int calls = 0;
    orrenby::DispatchQueue::main().async([&] { ++calls; });

    loop.run();
    EXPECT_EQ(calls, 0);

    loop.drain();
    EXPECT_EQ(calls, 1);
}

TEST(EventLoop, CallsATimerOnceAndThenHasNothingToWaitFor)
{
    //! [Waiting for a moment]
    auto loop = EventLoop();
    int calls = 0;
    const auto watch = loop.after(0ms, [&] { ++calls; });

    loop.run();

    EXPECT_EQ(calls, 1);
    //! [Waiting for a moment]
}

TEST(EventLoop, DoesNotCallWhatNobodyHolds)
{
    auto loop = EventLoop();
    int calls = 0;
    auto watch = loop.after(0ms, [&] { ++calls; });
    watch = {};

    loop.run();

    EXPECT_EQ(calls, 0);
}

TEST(EventLoop, CallsInTheOrderOfRegistrationWithinATurn)
{
    auto loop = EventLoop();
    auto first = Pipe();
    auto second = Pipe();
    std::vector<std::string> calls;
    const auto one = loop.watch(first.reader.number(), [&] { calls.emplace_back("first"); });
    const auto two = loop.watch(second.reader.number(), [&] {
        calls.emplace_back("second");
        loop.stop();
    });
    second.put();
    first.put();

    loop.run();

    EXPECT_THAT(calls, ElementsAre("first", "second"));
}

TEST(EventLoop, CallsAgainAsLongAsThereIsSomethingToRead)
{
    auto loop = EventLoop();
    auto pipe = Pipe();
    int calls = 0;
    auto watch = EventLoop::Watch();
    watch = loop.watch(pipe.reader.number(), [&] {
        pipe.take();
        if (++calls == 3)
            watch = {}; // inside its own callback
    });
    pipe.put();
    pipe.put();
    pipe.put();

    loop.run();

    EXPECT_EQ(calls, 3);
}

TEST(EventLoop, ACallbackMayDropAnotherWatchOfTheSameTurn)
{
    auto loop = EventLoop();
    auto pipe = Pipe();
    int calls = 0;
    auto victim = EventLoop::Watch();
    auto killer = loop.watch(pipe.reader.number(), [&] {
        victim = {};
        loop.stop();
    });
    victim = loop.watch(pipe.reader.number(), [&] { ++calls; });
    pipe.put();

    loop.run();

    EXPECT_EQ(calls, 0);
}

TEST(EventLoop, DrainsWhatWasHandedToTheMainQueueAndThenReturns)
{
    auto loop = EventLoop();
    auto pipe = Pipe(); // never readable
    int calls = 0;
    const auto other = loop.watch(pipe.reader.number(), [&] { ++calls; });
    orrenby::DispatchQueue::main().async([&] { ++calls; });

    loop.drain();
    loop.drain();

    EXPECT_EQ(calls, 1);
}

TEST(EventLoop, CallsNothingMoreOnceItIsStopped)
{
    auto loop = EventLoop();
    auto pipe = Pipe();
    std::vector<std::string> calls;
    const auto one = loop.watch(pipe.reader.number(), [&] {
        calls.emplace_back("first");
        loop.stop();
    });
    const auto two = loop.watch(pipe.reader.number(), [&] { calls.emplace_back("second"); });
    pipe.put();

    loop.run();
    EXPECT_THAT(calls, ElementsAre("first"));

    loop.run();
    EXPECT_THAT(calls, ElementsAre("first", "first"));
}

} // namespace
