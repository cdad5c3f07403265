#include "Orrenby/Platform/Scheduling/DescriptorWatch.hpp"

#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/Timer.hpp"
#include "Tests/Platform/Scheduling/RunLoopParts.hpp"
#include "Tests/Support/ManualWorld.hpp"
#include <array>
#include <future>
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace orrenby;
using orrenby::testing::ManualWorld;
using orrenby::testing::onThreadOfItsOwn;
using orrenby::testing::turn;
using ::testing::ElementsAre;

namespace {

class Pipe {
public:
    Pipe() { EXPECT_EQ(::pipe(m_ends.data()), 0); }
    Pipe(const Pipe&) = delete;
    ~Pipe()
    {
        ::close(m_ends[0]);
        closeWriter();
    }

    int reader() const { return m_ends[0]; }
    void put() const { EXPECT_EQ(::write(m_ends[1], "x", 1), 1); }
    void take() const
    {
        char byte = 0;
        EXPECT_EQ(::read(m_ends[0], &byte, 1), 1);
    }
    void closeWriter()
    {
        if (m_ends[1] >= 0)
            ::close(std::exchange(m_ends[1], -1));
    }

private:
    std::array<int, 2> m_ends{};
};

DescriptorWatch watch(const Pipe& pipe, UniqueFunction<void()> callback)
{
    return RunLoop::current().watch(pipe.reader(), NSDefaultRunLoopMode, std::move(callback));
}

} // namespace

TEST(DescriptorWatch, IsCalledWhenThereIsSomethingToRead)
{
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        int calls = 0;
        const auto watching = watch(pipe, [&] { ++calls; });

        EXPECT_TRUE(turn());
        EXPECT_EQ(calls, 0);

        pipe.put();
        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date::distantFuture()));
        EXPECT_EQ(calls, 1);
    });
}

TEST(DescriptorWatch, IsCalledAgainAsLongAsSomethingIsUnread)
{
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        int calls = 0;
        auto watching = DescriptorWatch();
        watching = watch(pipe, [&] {
            pipe.take();
            if (++calls == 3)
                watching = {};
        });
        pipe.put();
        pipe.put();
        pipe.put();

        RunLoop::current().run();

        EXPECT_EQ(calls, 3);
    });
}

TEST(DescriptorWatch, IsCalledWhenTheOtherEndIsClosed)
{
    onThreadOfItsOwn([] {
        auto pipe = Pipe();
        int calls = 0;
        const auto watching = watch(pipe, [&] { ++calls; });
        pipe.closeWriter();

        turn();

        EXPECT_EQ(calls, 1);
    });
}

TEST(DescriptorWatch, IsNotCalledOnceItIsDropped)
{
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        int calls = 0;
        auto watching = watch(pipe, [&] { ++calls; });
        pipe.put();
        watching = {};

        EXPECT_FALSE(turn());
        EXPECT_EQ(calls, 0);
    });
}

TEST(DescriptorWatch, KeepsItsCallbackUntilThatHasReturned)
{
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        auto token = std::make_shared<int>(7);
        const auto weak = std::weak_ptr(token);
        auto watching = DescriptorWatch();
        watching = watch(pipe, [&watching, token = std::move(token)] {
            watching = {};
            EXPECT_EQ(*token, 7);
        });
        pipe.put();

        turn();

        EXPECT_TRUE(weak.expired());
    });
}

TEST(DescriptorWatch, MayOwnItself)
{
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        auto holder = std::make_shared<DescriptorWatch>();
        const auto weak = std::weak_ptr(holder);
        *holder = watch(pipe, [holder] { *holder = {}; });
        holder = nullptr;
        pipe.put();

        turn();

        EXPECT_TRUE(weak.expired());
    });
}

TEST(DescriptorWatch, OfOneTurnMayBeDroppedByAnother)
{
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        int calls = 0;
        auto victim = DescriptorWatch();
        const auto killer = watch(pipe, [&] { victim = {}; });
        victim = watch(pipe, [&] { ++calls; });
        pipe.put();

        turn();

        EXPECT_EQ(calls, 0);
    });
}

TEST(DescriptorWatch, IsCalledInTheOrderOfRegistration)
{
    onThreadOfItsOwn([] {
        const auto first = Pipe();
        const auto second = Pipe();
        std::vector<std::string> calls;
        const auto one = watch(first, [&] { calls.emplace_back("first"); });
        const auto two = watch(second, [&] { calls.emplace_back("second"); });
        second.put();
        first.put();

        turn();

        EXPECT_THAT(calls, ElementsAre("first", "second"));
    });
}

TEST(DescriptorWatch, IsNotCalledOnceItsLoopIsStopped)
{
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        std::string calls;
        const auto one = watch(pipe, [&] {
            calls += "a";
            RunLoop::current().stop();
        });
        const auto two = watch(pipe, [&] { calls += "b"; });
        pipe.put();

        RunLoop::current().run();

        EXPECT_EQ(calls, "a");
    });
}

TEST(DescriptorWatch, IsNotCalledInsideItsOwnCallback)
{
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        int calls = 0;
        auto hasRun = true;
        const auto watching = watch(pipe, [&] {
            ++calls;
            hasRun = turn();
        });
        pipe.put();

        turn();

        EXPECT_EQ(calls, 1);
        EXPECT_FALSE(hasRun);
    });
}

TEST(DescriptorWatch, IsCalledInItsModesOnly)
{
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        std::vector<std::string> modes;
        auto& loop = RunLoop::current();
        const auto note = [&] { modes.push_back(*loop.currentMode()); };
        const auto own = loop.watch(pipe.reader(), "own", note);
        const auto common = loop.watch(pipe.reader(), NSRunLoopCommonModes, note);
        pipe.put();

        turn("own");
        turn(UITrackingRunLoopMode);
        turn(NSDefaultRunLoopMode);

        EXPECT_THAT(modes, ElementsAre("own", "UITrackingRunLoopMode", "kCFRunLoopDefaultMode"));
    });
}

TEST(DescriptorWatch, IsMovedToAnotherHolder)
{
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        int calls = 0;
        auto first = watch(pipe, [&] { ++calls; });
        auto second = std::move(first);
        EXPECT_FALSE(first.isActive());
        EXPECT_TRUE(second.isActive());
        first = {};
        pipe.put();

        turn();

        EXPECT_EQ(calls, 1);
    });
}

TEST(DescriptorWatch, WatchesNothingByItself) { EXPECT_FALSE(DescriptorWatch().isActive()); }

TEST(DescriptorWatch, OutlivesItsLoop)
{
    const auto token = std::make_shared<int>();
    auto watching = DescriptorWatch();
    onThreadOfItsOwn([&] { watching = RunLoop::current().watch(0, NSDefaultRunLoopMode, [token] {}); });

    EXPECT_FALSE(watching.isActive());
    EXPECT_EQ(token.use_count(), 1);
}

TEST(DescriptorWatch, EndsAWaitInATestsWorld)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        const auto pipe = Pipe();
        std::vector<std::string> calls;
        auto watching = watch(pipe, [&] {
            pipe.take();
            calls.emplace_back("watch");
        });
        Timer::scheduledTimerWithTimeInterval(2, false, [&](Timer&) {
            calls.emplace_back("timer");
            pipe.put();
        });

        RunLoop::current().runFor(3);

        EXPECT_THAT(calls, ElementsAre("timer", "watch"));
    });
    EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 3);
}

TEST(DescriptorWatch, WakesALoopThatWaits)
{
    auto pipe = Pipe();
    auto waiting = std::promise<void>();
    int calls = 0;
    auto thread = std::thread([&] {
        auto watching = watch(pipe, [&] {
            pipe.take();
            ++calls;
            RunLoop::current().stop();
        });
        RunLoop::current().perform([&] { waiting.set_value(); });
        RunLoop::current().run();
    });
    waiting.get_future().get();

    pipe.put();

    thread.join();
    EXPECT_EQ(calls, 1);
}

TEST(DescriptorWatch, IsAddedAndDroppedOnAnotherThread)
{
    auto pipe = Pipe();
    auto loop = std::promise<RunLoop*>();
    auto thread = std::thread([&] {
        const auto life = RunLoop::current().watch(-1, NSDefaultRunLoopMode, nullptr);
        RunLoop::current().perform([&] { loop.set_value(&RunLoop::current()); });
        RunLoop::current().run();
    });
    auto& other = *loop.get_future().get();
    auto called = std::promise<void>();
    auto watching = other.watch(pipe.reader(), NSDefaultRunLoopMode, [&] {
        pipe.take();
        called.set_value();
    });
    pipe.put();
    called.get_future().get();

    watching = {};
    other.perform([&] { other.stop(); });

    thread.join();
    EXPECT_FALSE(watching.isActive());
}
