#include "Orrenby/Testing/VirtualWorld.hpp"

#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/Timer.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/RandomSource.hpp"
#include "Orrenby/Platform/World/Signal.hpp"
#include "Orrenby/Platform/World/UUIDSource.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "Orrenby/Utilities/Retry.hpp"
#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Notes what happened, and when.
class Protocol {
public:
    explicit Protocol(const VirtualWorld& world)
        : m_world(world)
    {}

    auto entry(std::string name)
    {
        return [this, name = std::move(name)] {
            entries.push_back(name + "@" + std::to_string(milliseconds()));
        };
    }

    std::vector<std::string> entries;

private:
    int milliseconds() const { return static_cast<int>(m_world.elapsed() * 1000 + 0.5); }

    const VirtualWorld& m_world;
};

//! [An hour of back-off]
/// Tries again on its queue until the schedule has nothing more to give.
class Upload {
public:
    Upload(DispatchQueue queue, Retry& retry)
        : m_queue(std::move(queue))
        , m_retry(retry)
    {}

    void attempt()
    {
        ++attempts; // the service is down
        if (const auto delay = m_retry.nextInterval())
            m_queue.asyncAfter(*delay, [this] { attempt(); });
    }

    int attempts = 0;

private:
    DispatchQueue m_queue;
    Retry& m_retry;
};

TEST(VirtualWorld, LetsAnHourOfBackOffPassAtOnce)
{
    auto world = VirtualWorld();
    auto retry = Retry(15, 8, Retry::Exponential{2});
    auto upload = Upload(DispatchQueue::serial("com.example.upload"), retry);

    upload.attempt();
    world.runAll();

    EXPECT_EQ(upload.attempts, 9);
    EXPECT_EQ(world.elapsed(), 15 * (1 + 2 + 4 + 8 + 16 + 32 + 64 + 128)); // 63 minutes and 45 seconds
}
//! [An hour of back-off]

} // namespace

TEST(VirtualWorld, BeginsOnAFixedDateWithoutHavingLasted)
{
    const auto world = VirtualWorld();

    EXPECT_EQ(world.now(), Date(1893456000));
    EXPECT_EQ(world.elapsed(), 0);
    EXPECT_EQ(Date::now(), world.now());
}

TEST(VirtualWorld, BeginsOnTheChosenDate)
{
    const auto world = VirtualWorld({.start = Date(60)});

    EXPECT_EQ(Date::now(), Date(60));
}

TEST(VirtualWorld, RunsNothingByItself)
{
    const auto world = VirtualWorld();
    auto protocol = Protocol(world);

    DispatchQueue::serial("queue").async(protocol.entry("work"));

    EXPECT_THAT(protocol.entries, IsEmpty());
    EXPECT_EQ(world.pendingCount(), 1U);
}

TEST(VirtualWorld, RunsWhatIsReadyWithoutMovingTheClock)
{
    auto world = VirtualWorld();
    auto protocol = Protocol(world);
    const auto queue = DispatchQueue::serial("queue");
    queue.async([&] {
        protocol.entry("outer")();
        queue.async(protocol.entry("inner"));
    });
    queue.asyncAfter(0.001, protocol.entry("later"));

    world.runUntilIdle();

    EXPECT_THAT(protocol.entries, ElementsAre("outer@0", "inner@0"));
    EXPECT_EQ(world.pendingCount(), 1U);
}

TEST(VirtualWorld, ShowsEachMomentWhileItRuns)
{
    auto world = VirtualWorld();
    auto protocol = Protocol(world);
    const auto queue = DispatchQueue::serial("queue");
    queue.asyncAfter(2, protocol.entry("second"));
    queue.asyncAfter(1, protocol.entry("first"));
    queue.asyncAfter(5, protocol.entry("beyond"));

    world.advance(3);

    EXPECT_THAT(protocol.entries, ElementsAre("first@1000", "second@2000"));
    EXPECT_EQ(world.elapsed(), 3);
}

TEST(VirtualWorld, RunsWhatIsDueAtTheEndOfAnAdvance)
{
    auto world = VirtualWorld();
    auto protocol = Protocol(world);
    DispatchQueue::serial("queue").asyncAfter(1, protocol.entry("work"));

    for (int count = 0; count < 10; ++count)
        world.advance(0.1);

    EXPECT_EQ(world.elapsed(), 1);
    EXPECT_THAT(protocol.entries, ElementsAre("work@1000"));
}

TEST(VirtualWorld, DoesNotGoBack)
{
    auto world = VirtualWorld();
    world.advance(2);

    world.advance(-1);
    world.advanceTo(Date::distantPast());
    world.advance(std::numeric_limits<double>::quiet_NaN());

    EXPECT_EQ(world.elapsed(), 2);
}

TEST(VirtualWorld, AdvancesToADate)
{
    auto world = VirtualWorld({.start = Date(1000)});

    world.advanceTo(Date(1090.5));

    EXPECT_EQ(world.now(), Date(1090.5));
    EXPECT_EQ(world.elapsed(), 90.5);
}

TEST(VirtualWorld, FiresTimersOfTheRunLoopAtTheirMoment)
{
    auto world = VirtualWorld();
    auto protocol = Protocol(world);
    Timer::scheduledTimerWithTimeInterval(
        1.5, true, [note = protocol.entry("timer")](Timer&) mutable { note(); });
    DispatchQueue::serial("queue").asyncAfter(2, protocol.entry("work"));

    world.advance(3.5);

    EXPECT_THAT(protocol.entries, ElementsAre("timer@1500", "work@2000", "timer@3000"));
}

TEST(VirtualWorld, RunsQueuesBeforeTheRunLoopAtOneMoment)
{
    auto world = VirtualWorld();
    auto protocol = Protocol(world);
    Timer::scheduledTimerWithTimeInterval(
        1, false, [note = protocol.entry("timer")](Timer&) mutable { note(); });
    DispatchQueue::main().asyncAfter(1, protocol.entry("main"));
    DispatchQueue::serial("queue").asyncAfter(1, protocol.entry("work"));

    world.advance(1);

    EXPECT_THAT(protocol.entries, ElementsAre("work@1000", "main@1000", "timer@1000"));
}

TEST(VirtualWorld, TurnsTheMainLoopForWorkThatWaitsForIt)
{
    auto world = VirtualWorld();
    auto protocol = Protocol(world);
    DispatchQueue::serial("queue").async([&] {
        protocol.entry("before")();
        DispatchQueue::main().sync(protocol.entry("main"));
        protocol.entry("after")();
    });

    world.runUntilIdle();

    EXPECT_THAT(protocol.entries, ElementsAre("before@0", "main@0", "after@0"));
}

TEST(VirtualWorld, MovesTheClockForCodeThatBlocks)
{
    auto world = VirtualWorld();
    auto signal = detail::Signal();
    DispatchQueue::global().asyncAfter(90, [&] { signal.set(); });

    signal.wait();

    EXPECT_EQ(world.elapsed(), 90);
}

TEST(VirtualWorld, LetsTimersFireForWorkThatBlocks)
{
    auto world = VirtualWorld();
    auto signal = detail::Signal();
    Timer::scheduledTimerWithTimeInterval(4, false, [&](Timer&) { signal.set(); });
    DispatchQueue::serial("queue").async([&] { signal.wait(); });

    world.runUntilIdle();

    EXPECT_EQ(world.elapsed(), 4);
}

TEST(VirtualWorld, TakesWorkFromOtherThreads)
{
    auto world = VirtualWorld();
    auto signal = detail::Signal();
    auto worker = std::thread();
    const auto queue = DispatchQueue::serial("queue");
    auto ranOn = std::thread::id();

    worker = std::thread([&] {
        queue.async([&] {
            ranOn = std::this_thread::get_id();
            signal.set();
        });
    });
    signal.wait();
    worker.join();

    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST(VirtualWorld, LetsAnotherThreadWaitForItsWork)
{
    auto world = VirtualWorld();
    const auto queue = DispatchQueue::serial("queue");
    auto isDone = std::atomic(false);
    queue.async([] {});
    auto worker = std::thread([&] {
        queue.sync([] {});
        isDone = true;
    });

    while (!isDone)
        world.runUntilIdle();
    worker.join();

    EXPECT_EQ(world.elapsed(), 0);
}

TEST(VirtualWorld, RunsAllThatIsPending)
{
    auto world = VirtualWorld();
    auto protocol = Protocol(world);
    const auto queue = DispatchQueue::concurrent("queue");
    queue.asyncAfter(3600, [&] { queue.asyncAfter(3600, protocol.entry("work")); });

    world.runAll();

    EXPECT_THAT(protocol.entries, ElementsAre("work@7200000"));
    EXPECT_EQ(world.pendingCount(), 0U);
}

TEST(VirtualWorld, ReportsWhatIsPendingForEver)
{
    auto world = VirtualWorld();
    const auto timer = Timer::scheduledTimerWithTimeInterval(1, true, [](Timer&) {});

    EXPECT_THROW(world.runAll(100), std::runtime_error);
    EXPECT_EQ(world.elapsed(), 100);
}

TEST(VirtualWorld, DrawsTheSameNumbersForTheSameSeed)
{
    const auto draw = [](std::uint64_t seed) {
        const auto world = VirtualWorld({.seed = seed});
        auto& random = World::current().random();
        return std::vector{random.below(1000), random.below(1000), random.below(1000), random.below(1000)};
    };

    EXPECT_EQ(draw(7), draw(7));
    EXPECT_NE(draw(7), draw(8));
}

TEST(VirtualWorld, CountsItsUUIDs)
{
    const auto world = VirtualWorld();

    const auto first = World::current().uuids().next();
    const auto second = World::current().uuids().next();

    EXPECT_EQ(first.uuidString(), "00000000-0000-4000-8000-000000000001");
    EXPECT_EQ(second.uuidString(), "00000000-0000-4000-8000-000000000002");
}

TEST(VirtualWorld, TellsObserversOfItsClock)
{
    struct Counter final : Clock::Observer {
        void clockDidChange() override { ++count; }
        int count = 0;
    };
    auto world = VirtualWorld();
    const auto counter = std::make_shared<Counter>();
    World::current().clock().addObserver(counter);
    DispatchQueue::global().asyncAfter(1, [] {});

    world.advance(3);

    EXPECT_EQ(counter->count, 2);
}

TEST(VirtualWorld, DropsWhatIsPendingAtItsEnd)
{
    const auto witness = std::make_shared<int>();
    auto hasRun = false;
    const auto serial = DispatchQueue::serial("serial");
    const auto concurrent = DispatchQueue::concurrent("concurrent");
    {
        const auto world = VirtualWorld();
        const auto work = [witness, &hasRun] { hasRun = true; };
        for (const auto& queue : {serial, concurrent, DispatchQueue::main(), DispatchQueue::global()}) {
            queue.async(work);
            queue.async(work);
            queue.asyncAfter(1, work);
            queue.asyncAfter(2, work);
            queue.barrierAsync(work);
        }
        RunLoop::current().perform(work);
        RunLoop::current().perform(work, "mode");
        Timer::scheduledTimerWithTimeInterval(1, false, [work](Timer&) { work(); });
    }

    EXPECT_FALSE(hasRun);
    EXPECT_EQ(witness.use_count(), 1);
}

TEST(VirtualWorld, LeavesQueuesUsableAfterItsEnd)
{
    const auto serial = DispatchQueue::serial("serial");
    const auto concurrent = DispatchQueue::concurrent("concurrent");
    auto count = 0;
    {
        const auto world = VirtualWorld();
        serial.async([] {});
        concurrent.async([] {});
        DispatchQueue::main().async([] {});
    }
    auto world = VirtualWorld();

    serial.async([&] { ++count; });
    concurrent.barrierAsync([&] { ++count; });
    DispatchQueue::main().async([&] { ++count; });
    world.runUntilIdle();

    EXPECT_EQ(count, 3);
}

TEST(VirtualWorld, DropsWhatDroppedWorkHandsOver)
{
    struct Last {
        explicit Last(DispatchQueue own)
            : queue(std::move(own))
        {}
        ~Last()
        {
            queue.async([] { FAIL(); });
        }
        DispatchQueue queue;
    };
    const auto queue = DispatchQueue::serial("queue");
    {
        const auto world = VirtualWorld();
        queue.async([last = std::make_unique<Last>(queue)] {});
        queue.asyncAfter(1, [last = std::make_unique<Last>(DispatchQueue::concurrent("other"))] {});
    }
    auto world = VirtualWorld();

    world.runUntilIdle();

    EXPECT_EQ(world.pendingCount(), 0U);
}

TEST(VirtualWorldDeathTest, ReportsAWaitThatNothingCanEnd)
{
    EXPECT_DEATH(
        {
            const auto world = VirtualWorld({.patience = 0.01});
            detail::Signal().wait();
        },
        "Waiting for what nothing that is pending can bring: file Testing/VirtualWorld");
}

TEST(VirtualWorldDeathTest, DoesNotTurnTheLoopThatIsBlocked)
{
    EXPECT_DEATH(
        {
            const auto world = VirtualWorld({.patience = 0.01});
            auto signal = detail::Signal();
            DispatchQueue::global().async([&] { DispatchQueue::main().sync([&] { signal.set(); }); });
            signal.wait();
        },
        "Waiting for what nothing that is pending can bring");
}
