#include "Orrenby/Platform/Scheduling/RunLoop.hpp"

#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include "Orrenby/Platform/Scheduling/Timer.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include "Tests/Support/ManualWorld.hpp"
#include <atomic>
#include <future>
#include <gmock/gmock.h>
#include <limits>
#include <optional>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::ManualWorld;
using orrenby::testing::onThreadOfItsOwn;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr auto infinity = std::numeric_limits<double>::infinity();

/// Does what it was made with.
template <class F> class JobOf final : public Job {
public:
    explicit JobOf(F work)
        : m_work(std::move(work))
    {}
    void run() noexcept override { m_work(); }

private:
    F m_work;
};

/// The thread of a loop that runs until it is told to stop.
class LoopThread {
public:
    LoopThread()
        : m_thread([this] {
            auto& loop = RunLoop::current();
            const auto life = Timer::scheduledTimerWithTimeInterval(infinity, false, [](Timer&) {});
            m_loop.set_value(&loop);
            loop.run();
        })
    {}
    ~LoopThread()
    {
        loop().perform([this] { loop().stop(); });
        m_thread.join();
    }

    RunLoop& loop() { return *m_shared.get(); }

private:
    std::promise<RunLoop*> m_loop;
    std::shared_future<RunLoop*> m_shared = m_loop.get_future().share();
    std::thread m_thread;
};

Ref<Timer> timerAt(double seconds, UniqueFunction<void(Timer&)> block)
{
    return Timer::scheduledTimerWithTimeInterval(seconds, false, std::move(block));
}

/// One turn without waiting.
bool turn(std::string_view mode = NSDefaultRunLoopMode)
{
    return RunLoop::current().run(mode, Date::distantPast());
}

} // namespace

TEST(RunLoop, IsTheSameForEveryCallOfAThread)
{
    onThreadOfItsOwn([] { EXPECT_EQ(&RunLoop::current(), &RunLoop::current()); });
}

TEST(RunLoop, IsTheMainOneOnTheMainThread) { EXPECT_EQ(&RunLoop::current(), &RunLoop::main()); }

TEST(RunLoop, IsAnotherOneOnAnotherThread)
{
    onThreadOfItsOwn([] {
        EXPECT_NE(&RunLoop::current(), &RunLoop::main());
        EXPECT_TRUE(RunLoop::current().isCurrent());
        EXPECT_FALSE(RunLoop::main().isCurrent());
    });
}

TEST(RunLoop, HasNoModeWhileItDoesNotRun) { EXPECT_EQ(RunLoop::current().currentMode(), std::nullopt); }

TEST(RunLoop, KnowsTheModesThatEverybodyKnows)
{
    EXPECT_EQ(NSDefaultRunLoopMode, "kCFRunLoopDefaultMode");
    EXPECT_EQ(UITrackingRunLoopMode, "UITrackingRunLoopMode");
    EXPECT_EQ(NSRunLoopCommonModes, "kCFRunLoopCommonModes");
}

TEST(RunLoop, RunsUntilItIsStopped)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        //! [Running a loop]
        auto& loop = RunLoop::current();
        std::vector<std::string> calls;

        const auto tick = Timer::scheduledTimerWithTimeInterval(
            10, true, [&](Timer&) { calls.emplace_back("tick"); });
        timerAt(25, [&](Timer&) { loop.stop(); });
        loop.perform([&] { calls.emplace_back("performed"); }); // from any thread

        loop.run();
        //! [Running a loop]

        EXPECT_THAT(calls, ElementsAre("performed", "tick", "tick"));
        EXPECT_EQ(loop.currentMode(), std::nullopt);
    });
    EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 25);
}

// MARK: what there is to wait for

TEST(RunLoop, DoesNotRunWithoutAnythingToWaitFor)
{
    onThreadOfItsOwn([] {
        EXPECT_FALSE(RunLoop::current().run(NSDefaultRunLoopMode, Date::distantFuture()));
        EXPECT_FALSE(RunLoop::current().run("own", Date::distantFuture()));
        RunLoop::current().run();
        RunLoop::current().runUntil(Date::distantFuture());
    });
}

TEST(RunLoop, DoesNotRunForATimerOfAnotherMode)
{
    onThreadOfItsOwn([] {
        const auto timer = Timer::timerWithTimeInterval(1, false, [](Timer&) {});
        RunLoop::current().addTimer(timer, "own");

        EXPECT_FALSE(RunLoop::current().run(NSDefaultRunLoopMode, Date::distantFuture()));
    });
}

TEST(RunLoop, CannotRunInTheNameOfAllCommonModes)
{
    onThreadOfItsOwn([] {
        RunLoop::current().perform([] {});

        EXPECT_FALSE(turn(NSRunLoopCommonModes));
        EXPECT_TRUE(turn());
    });
}

TEST(RunLoop, OfTheMainThreadAlwaysHasSomethingToWaitForInTheCommonModes)
{
    auto world = ManualWorld();

    EXPECT_TRUE(RunLoop::main().run(NSDefaultRunLoopMode, Date::now() + 1));
    EXPECT_TRUE(RunLoop::main().run(UITrackingRunLoopMode, Date::now() + 1));
    EXPECT_FALSE(RunLoop::main().run("own", Date::now() + 1));
    EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 2);
}

TEST(RunLoop, EndsWhenItsLastTimerHasFired)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        timerAt(3, [](Timer&) {});

        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date::distantFuture()));
    });
    EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 3);
}

// MARK: one run

TEST(RunLoop, ReturnsAfterABlock)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        timerAt(5, [](Timer&) {});
        RunLoop::current().perform([] {});

        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date::now() + 9));
    });
    EXPECT_EQ(world.clock().monotonicSeconds(), 1024);
}

TEST(RunLoop, FiresTimersWithoutReturning)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        int calls = 0;
        const auto timer = Timer::scheduledTimerWithTimeInterval(2, true, [&](Timer&) { ++calls; });

        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date::now() + 7));

        EXPECT_EQ(calls, 3);
    });
    EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 7);
}

TEST(RunLoop, FiresATimerThatIsDueAtItsEnd)
{
    const auto world = ManualWorld();
    onThreadOfItsOwn([] {
        int calls = 0;
        timerAt(4, [&](Timer&) { ++calls; });

        RunLoop::current().runFor(4);

        EXPECT_EQ(calls, 1);
    });
}

TEST(RunLoop, MakesOneTurnWithoutWaitingForAMomentThatHasPassed)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        int calls = 0;
        timerAt(1, [&](Timer&) { ++calls; });
        timerAt(2, [&](Timer&) { ++calls; });
        world.clock().pass(1);

        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date::now() - 1));

        EXPECT_EQ(calls, 1);
    });
    EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 1);
}

TEST(RunLoop, MakesOneTurnForAMomentThatIsNone)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        timerAt(1, [](Timer&) {});
        const auto none = std::numeric_limits<double>::quiet_NaN();

        EXPECT_TRUE(RunLoop::current().run(NSDefaultRunLoopMode, Date(none)));
        RunLoop::current().runFor(none);
        RunLoop::current().runFor(-infinity);
    });
    EXPECT_EQ(world.clock().monotonicSeconds(), 1024);
}

TEST(RunLoop, RunsOnAfterABlockWhenItRunsForATime)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        int calls = 0;
        timerAt(9, [](Timer&) {});
        RunLoop::current().perform([&] { ++calls; });

        RunLoop::current().runUntil(Date::now() + 8);

        EXPECT_EQ(calls, 1);
    });
    EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 8);
}

// MARK: stopping

TEST(RunLoop, CallsNothingMoreOnceItIsStopped)
{
    const auto world = ManualWorld();
    onThreadOfItsOwn([] {
        std::vector<int> calls;
        auto& loop = RunLoop::current();
        timerAt(1, [&](Timer&) {
            calls.push_back(1);
            loop.stop();
        });
        timerAt(1, [&](Timer&) { calls.push_back(2); });

        loop.run();
        EXPECT_THAT(calls, ElementsAre(1));

        loop.run();
        EXPECT_THAT(calls, ElementsAre(1, 2));
    });
}

TEST(RunLoop, StopsBetweenBlocks)
{
    onThreadOfItsOwn([] {
        std::vector<int> calls;
        auto& loop = RunLoop::current();
        loop.perform([&] {
            calls.push_back(1);
            loop.stop();
        });
        loop.perform([&] { calls.push_back(2); });

        loop.run();
        EXPECT_THAT(calls, ElementsAre(1));

        loop.run();
        EXPECT_THAT(calls, ElementsAre(1, 2));
    });
}

TEST(RunLoop, ForgetsAStopThatNothingRanFor)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([] {
        timerAt(3, [](Timer&) {});
        RunLoop::current().stop();
        RunLoop::current().run();
    });
    EXPECT_EQ(world.clock().monotonicSeconds(), 1024 + 3);
}

TEST(RunLoop, StopsTheInnermostRunOnly)
{
    const auto world = ManualWorld();
    onThreadOfItsOwn([] {
        std::vector<std::string> calls;
        auto& loop = RunLoop::current();
        timerAt(1, [&](Timer&) {
            timerAt(1, [&](Timer&) { loop.stop(); });
            loop.run();
            calls.emplace_back("inner run is over");
        });
        timerAt(5, [&](Timer&) { calls.emplace_back("outer run goes on"); });

        loop.run();

        EXPECT_THAT(calls, ElementsAre("inner run is over", "outer run goes on"));
    });
}

TEST(RunLoop, IsStoppedFromAnotherThreadWhileItWaits)
{
    auto ready = std::promise<RunLoop*>();
    auto thread = std::thread([&] {
        auto& loop = RunLoop::current();
        timerAt(infinity, [](Timer&) {});
        loop.perform([&] { ready.set_value(&loop); });
        loop.run();
    });

    ready.get_future().get()->stop();

    thread.join();
}

// MARK: order

TEST(RunLoop, CallsBlocksThenTimersThenWatches)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        std::vector<std::string> calls;
        const auto watch = RunLoop::current().watch(
            -1, NSDefaultRunLoopMode, [&] { calls.emplace_back("a negative descriptor is never readable"); });
        const auto closed = RunLoop::current().watch(
            std::numeric_limits<int>::max(), NSDefaultRunLoopMode, [&] { calls.emplace_back("watch"); });
        timerAt(1, [&](Timer&) { calls.emplace_back("timer"); });
        world.clock().pass(1);
        RunLoop::current().perform([&] { calls.emplace_back("block"); });

        turn();

        EXPECT_THAT(calls, ElementsAre("block", "timer", "watch"));
    });
}

TEST(RunLoop, CallsJobsAndBlocksInTheOrderInWhichTheyCame)
{
    onThreadOfItsOwn([] {
        std::vector<int> calls;
        auto& loop = RunLoop::current();
        auto job = JobOf([&] { calls.push_back(3); });
        auto other = JobOf([&] { calls.push_back(5); });
        loop.perform([&] { calls.push_back(1); }, NSDefaultRunLoopMode);
        loop.perform([&] { calls.push_back(2); });
        loop.execute(job);
        loop.perform([&] { calls.push_back(4); }, NSDefaultRunLoopMode);
        loop.execute(other);
        loop.perform([&] { calls.push_back(6); }, NSDefaultRunLoopMode);

        turn();

        EXPECT_THAT(calls, ElementsAre(1, 2, 3, 4, 5, 6));
    });
}

TEST(RunLoop, LeavesToTheNextTurnWhatATurnHandsOver)
{
    onThreadOfItsOwn([] {
        std::vector<int> calls;
        auto& loop = RunLoop::current();
        loop.perform([&] {
            loop.perform([&] { calls.push_back(2); }, NSDefaultRunLoopMode);
            loop.perform([&] { calls.push_back(3); });
            calls.push_back(1);
        });

        turn();
        EXPECT_THAT(calls, ElementsAre(1));

        turn();
        EXPECT_THAT(calls, ElementsAre(1, 2, 3));
    });
}

TEST(RunLoop, RunsAJobThatHandsItselfOverAgainOnceATurn)
{
    onThreadOfItsOwn([] {
        int calls = 0;
        auto& loop = RunLoop::current();
        Job* self = nullptr;
        auto job = JobOf([&] {
            if (++calls < 3)
                loop.execute(*self);
        });
        self = &job;
        loop.execute(job);

        turn();
        EXPECT_EQ(calls, 1);

        loop.run();
        EXPECT_EQ(calls, 3);
    });
}

// MARK: modes

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

// MARK: nesting

TEST(RunLoop, FiresOnlyTheTimersOfTheNestedMode)
{
    const auto world = ManualWorld();
    onThreadOfItsOwn([] {
        std::vector<std::string> calls;
        auto& loop = RunLoop::current();
        timerAt(1, [&](Timer&) {
            loop.run("own", Date::now() + 10);
            calls.emplace_back("nested run is over");
        });
        timerAt(2, [&](Timer&) { calls.emplace_back("default"); });
        const auto own = Timer::timerWithTimeInterval(3, false, [&](Timer&) { calls.emplace_back("own"); });
        loop.addTimer(own, "own");

        loop.run();

        EXPECT_THAT(calls, ElementsAre("own", "nested run is over", "default"));
    });
}

TEST(RunLoop, RunsTheRestOfATurnInANestedRun)
{
    onThreadOfItsOwn([] {
        std::vector<std::string> calls;
        auto& loop = RunLoop::current();
        loop.perform([&] {
            EXPECT_TRUE(turn(UITrackingRunLoopMode));
            calls.emplace_back("outer");
        });
        loop.perform([&] { calls.emplace_back(*loop.currentMode()); });

        turn();

        EXPECT_THAT(calls, ElementsAre("UITrackingRunLoopMode", "outer"));
    });
}

TEST(RunLoop, FiresATimerOfTheOuterTurnOnceOnly)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        int calls = 0;
        timerAt(1, [&](Timer&) { turn(); });
        timerAt(1, [&](Timer&) { ++calls; });
        world.clock().pass(1);

        turn();

        EXPECT_EQ(calls, 1);
    });
}

TEST(RunLoop, LooksAgainAtItsTimersAfterARunInsideItsWait)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        std::vector<std::string> calls;
        auto& loop = RunLoop::current();
        timerAt(10, [&](Timer&) { calls.emplace_back("late"); });
        auto job = JobOf([&] {
            timerAt(1, [&](Timer&) { calls.emplace_back("early"); });
            turn();
        });
        world.executor().executeAt(1024 + 2, job);

        loop.runFor(5);

        EXPECT_THAT(calls, ElementsAre("early"));
    });
}

// MARK: the world

TEST(RunLoop, LetsOtherJobsRunWhileItWaits)
{
    auto world = ManualWorld();
    onThreadOfItsOwn([&] {
        std::vector<std::string> calls;
        auto job = JobOf([&] { calls.emplace_back("job"); });
        world.executor().executeAt(1024 + 2, job);
        timerAt(1, [&](Timer&) { calls.emplace_back("timer at 1"); });
        timerAt(3, [&](Timer&) { calls.emplace_back("timer at 3"); });

        RunLoop::current().run();

        EXPECT_THAT(calls, ElementsAre("timer at 1", "job", "timer at 3"));
    });
}

TEST(RunLoop, TellsWhenTheNextTimerIsDue)
{
    const auto world = ManualWorld();
    onThreadOfItsOwn([] {
        auto& loop = RunLoop::current();
        EXPECT_EQ(loop.nextFireDate(NSDefaultRunLoopMode), std::nullopt);

        timerAt(8, [](Timer&) {});
        timerAt(2, [](Timer&) {});
        const auto own = Timer::timerWithTimeInterval(1, false, [](Timer&) {});
        loop.addTimer(own, "own");

        EXPECT_EQ(loop.nextFireDate(NSDefaultRunLoopMode), Date::now() + 2);
        EXPECT_EQ(loop.nextFireDate("own"), Date::now() + 1);
        EXPECT_EQ(loop.nextFireDate("other"), std::nullopt);
    });
}

// MARK: the real world

TEST(RunLoop, IsWokenByABlockFromAnotherThread)
{
    auto thread = LoopThread();
    auto answer = std::promise<bool>();

    thread.loop().perform([&] { answer.set_value(thread.loop().isCurrent()); });

    EXPECT_TRUE(answer.get_future().get());
}

TEST(RunLoop, IsWokenByAJobFromAnotherThread)
{
    auto thread = LoopThread();
    auto answer = std::promise<std::string>();
    auto job = JobOf([&] { answer.set_value(*thread.loop().currentMode()); });

    thread.loop().execute(job);

    EXPECT_EQ(answer.get_future().get(), "kCFRunLoopDefaultMode");
}

TEST(RunLoop, IsWokenByATimerFromAnotherThread)
{
    auto thread = LoopThread();
    auto answer = std::promise<bool>();
    const auto timer = Timer::timerWithTimeInterval(
        0, false, [&](Timer&) { answer.set_value(thread.loop().isCurrent()); });

    thread.loop().addTimer(timer, NSDefaultRunLoopMode);

    EXPECT_TRUE(answer.get_future().get());
}

TEST(RunLoop, OfTheMainThreadIsReachedFromAnotherThread)
{
    auto isMain = false;
    auto thread = std::thread([&] {
        RunLoop::main().perform([&] {
            isMain = Thread::isMainThread();
            RunLoop::main().stop();
        });
    });

    RunLoop::main().run();

    thread.join();
    EXPECT_TRUE(isMain);
}

TEST(RunLoop, CallsWhatFourThreadsHandOverInTheOrderOfEach)
{
    constexpr int threads = 4;
    constexpr int each = 2000;
    std::vector<std::vector<int>> received(threads);
    {
        auto thread = LoopThread();
        std::vector<std::thread> senders;
        for (int sender = 0; sender < threads; ++sender)
            senders.emplace_back([&, sender] {
                for (int number = 0; number < each; ++number)
                    thread.loop().perform(
                        [&, sender, number] { received[static_cast<std::size_t>(sender)].push_back(number); },
                        sender % 2 == 0 ? NSRunLoopCommonModes : NSDefaultRunLoopMode);
            });
        for (auto& sender : senders)
            sender.join();
        auto done = std::promise<void>();
        thread.loop().perform([&] { done.set_value(); });
        done.get_future().get();
    }

    std::vector<int> expected(each);
    for (int number = 0; number < each; ++number)
        expected[static_cast<std::size_t>(number)] = number;
    for (const auto& numbers : received)
        EXPECT_EQ(numbers, expected);
}

// MARK: the end of the thread

TEST(RunLoop, InvalidatesItsTimersAtTheEndOfItsThread)
{
    auto timer = Ref<Timer>();
    auto own = Ref<Timer>();
    onThreadOfItsOwn([&] {
        timer = timerAt(1, [](Timer&) {});
        own = Timer::timerWithTimeInterval(1, true, [](Timer&) {});
        RunLoop::current().addTimer(own, "own");
    });

    EXPECT_FALSE(timer->isValid());
    EXPECT_FALSE(own->isValid());
}

TEST(RunLoop, DropsBlocksAndRunsJobsAtTheEndOfItsThread)
{
    auto token = std::make_shared<int>();
    int calls = 0;
    auto job = JobOf([&] { ++calls; });
    onThreadOfItsOwn([&] {
        RunLoop::current().perform([token, &calls] { calls += 10; });
        RunLoop::current().perform([token, &calls] { calls += 10; }, "own");
        RunLoop::current().execute(job);
    });

    EXPECT_EQ(calls, 1);
    EXPECT_EQ(token.use_count(), 1);
}

TEST(RunLoop, TakesNothingMoreWhileItEnds)
{
    auto timer = Ref<Timer>();
    auto token = std::make_shared<int>();
    auto job = JobOf([&] {
        RunLoop::current().perform([token] {});
        RunLoop::current().perform([token] {}, "own");
        timer = timerAt(1, [token](Timer&) {});
    });
    onThreadOfItsOwn([&] { RunLoop::current().execute(job); });

    EXPECT_TRUE(timer->isValid());
    timer = nullptr;
    EXPECT_EQ(token.use_count(), 1);
}

TEST(RunLoopDeathTest, EndsTheProcessWhenItIsRunOnAnotherThread)
{
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto runTheMainOne = [] { std::thread([] { RunLoop::main().run(); }).join(); };

    EXPECT_DEATH(runTheMainOne(),
        "Fatal error: A run loop runs on its own thread only: file Platform/Scheduling/RunLoop, line 112");
}

TEST(RunLoopDeathTest, EndsTheProcessWhenItIsAskedForAfterTheEndOfItsThread)
{
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    struct Late {
        ~Late() { RunLoop::current(); }
    };
    const auto askTooLate = [] {
        std::thread([] {
            [[maybe_unused]] thread_local Late late; // made first, so destroyed after the loop
            static_cast<void>(&late);
            RunLoop::current();
        }).join();
    };

    EXPECT_DEATH(askTooLate(),
        "Fatal error: Use of a run loop after the end of its thread: file Platform/Scheduling/RunLoop, line 57");
}

TEST(RunLoopDeathTest, EndsTheProcessWhenABlockThrows)
{
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto throwOne = [] {
        RunLoop::current().perform([] { throw 1; }, "own");
        turn("own");
    };

    EXPECT_DEATH(throwOne(), "terminate");
}
