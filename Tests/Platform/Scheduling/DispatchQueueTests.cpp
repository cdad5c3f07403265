#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"

#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include "Orrenby/Platform/World/Signal.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Orrenby/Utilities/ReferenceType.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::detail::Signal;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;

TEST(DispatchQueue, HandsWorkFromOneQueueToAnother)
{
    auto world = VirtualWorld();
    auto titles = std::vector<std::string>();
    const auto load = [] { return std::string("Notes"); };

    //! [Handing work to a queue]
    const auto loading = DispatchQueue::serial("com.example.loading");
    loading.async([&] {
        auto title = load();
        DispatchQueue::main().async([&, title = std::move(title)] { titles.push_back(title); });
    });
    //! [Handing work to a queue]
    world.runUntilIdle();

    EXPECT_THAT(titles, ElementsAre("Notes"));
}

TEST(DispatchQueue, KnowsItsKindAndLabel)
{
    EXPECT_EQ(DispatchQueue::serial("a").kind(), DispatchQueue::Kind::Serial);
    EXPECT_EQ(DispatchQueue::serial("a").label(), "a");
    EXPECT_EQ(DispatchQueue::concurrent("b").kind(), DispatchQueue::Kind::Concurrent);
    EXPECT_EQ(DispatchQueue::concurrent("").label(), "");
    EXPECT_EQ(DispatchQueue::main().kind(), DispatchQueue::Kind::Main);
    EXPECT_EQ(DispatchQueue::global().kind(), DispatchQueue::Kind::Concurrent);
}

TEST(DispatchQueue, HasOneMainAndOneGlobalQueue)
{
    EXPECT_EQ(DispatchQueue::main(), DispatchQueue::main());
    EXPECT_EQ(DispatchQueue::global(), DispatchQueue::global());
    EXPECT_NE(DispatchQueue::serial("a"), DispatchQueue::serial("a"));
}

TEST(DispatchQueue, IsAReference) { EXPECT_TRUE(ReferenceType<DispatchQueue>); }

TEST(DispatchQueue, RunsConcurrentWorkSideBySide)
{
    const auto queue = DispatchQueue::concurrent("queue");
    auto first = Signal();
    auto second = Signal();

    queue.async([&] {
        first.set();
        second.wait();
    });
    queue.async([&] {
        first.wait();
        second.set();
    });
    queue.barrierSync([] {});

    EXPECT_TRUE(second.isSignalled());
}

TEST(DispatchQueue, RunsManyThatWaitForTheLast)
{
    const auto queue = DispatchQueue::concurrent("queue");
    auto last = Signal();

    for (int count = 0; count < 30; ++count)
        queue.async([&] { last.wait(); });
    queue.async([&] { last.set(); });
    queue.barrierSync([] {});

    EXPECT_TRUE(last.isSignalled());
}

TEST(DispatchQueue, NeverRunsWhatIsDelayedForEver)
{
    auto world = VirtualWorld();
    auto hasRun = false;

    DispatchQueue::global().asyncAfter(std::numeric_limits<double>::infinity(), [&] { hasRun = true; });
    world.runAll();

    EXPECT_FALSE(hasRun);
    EXPECT_EQ(world.elapsed(), 0);
}

TEST(DispatchQueue, IsTheMainQueueWhereverTheMainThreadIs)
{
    const auto main = DispatchQueue::main();
    auto inWork = false;
    auto elsewhere = true;
    const auto world = VirtualWorld();
    main.async([&] { inWork = main.isCurrent(); });

    auto worker = std::thread([&] { elsewhere = main.isCurrent(); });
    worker.join();
    RunLoop::main().runFor(0);

    EXPECT_TRUE(main.isCurrent());
    EXPECT_TRUE(inWork);
    EXPECT_FALSE(elsewhere);
    EXPECT_TRUE(DispatchQueue::serial("queue").sync([&] { return main.isCurrent(); }));
}

TEST(DispatchQueue, IsNotTheMainQueueInWorkThatATestRunsOnTheMainThread)
{
    auto world = VirtualWorld();
    auto isMain = true;
    DispatchQueue::global().async([&] { isMain = DispatchQueue::main().isCurrent(); });

    world.runUntilIdle();

    EXPECT_FALSE(isMain);
}

TEST(DispatchQueue, RunsMainWorkInCommonModesOnly)
{
    auto& loop = RunLoop::main();
    auto world = VirtualWorld();
    auto count = 0;
    DispatchQueue::main().async([&] { ++count; });
    loop.perform([] {}, "com.example.private");

    loop.run("com.example.private", Date::now());
    const auto countInPrivateMode = count;
    loop.run(UITrackingRunLoopMode, Date::now());

    EXPECT_EQ(countInPrivateMode, 0);
    EXPECT_EQ(count, 1);
}

TEST(DispatchQueue, DoesNotBeginMainWorkInsideMainWork)
{
    auto order = std::vector<int>();
    auto world = VirtualWorld();
    const auto main = DispatchQueue::main();
    main.async([&] {
        main.async([&] { order.push_back(2); });
        RunLoop::main().runFor(1);
        order.push_back(1);
    });

    world.runUntilIdle();

    EXPECT_THAT(order, ElementsAre(1, 2));
}

TEST(MainQueueSync, RunsOnTheMainThreadAndReturns)
{
    auto done = Signal();
    auto thread = std::thread::id();
    auto number = 0;
    auto text = std::string();
    auto worker = std::thread([&] {
        const auto main = DispatchQueue::main();
        thread = main.sync([] { return std::this_thread::get_id(); });
        main.sync([&] { ++number; });
        ++main.sync([&]() -> int& { return number; });
        try {
            main.barrierSync([] { throw std::runtime_error("refused"); });
        } catch (const std::runtime_error& error) {
            text = error.what();
        }
        done.set();
    });

    while (!done.isSignalled())
        RunLoop::main().run(NSDefaultRunLoopMode, Date::now() + 0.001);
    worker.join();

    EXPECT_EQ(thread, std::this_thread::get_id());
    EXPECT_EQ(number, 2);
    EXPECT_EQ(text, "refused");
}

TEST(DispatchQueueDeathTest, SyncOnItsOwnSerialQueueIsAnError)
{
    EXPECT_DEATH(
        {
            const auto queue = DispatchQueue::serial("com.example.queue");
            queue.sync([&] { queue.sync([] {}); });
        },
        "Fatal error: sync would wait for itself: the caller is on the queue \"com.example.queue\" already: "
        "file Platform/Scheduling/DispatchQueue");
}

TEST(DispatchQueueDeathTest, SyncOnItsOwnSerialQueueThroughAnotherIsAnError)
{
    EXPECT_DEATH(
        {
            auto world = VirtualWorld();
            const auto queue = DispatchQueue::serial("first");
            const auto other = DispatchQueue::concurrent("second");
            queue.async([&] { other.sync([&] { queue.sync([] {}); }); });
            world.runUntilIdle();
        },
        "the caller is on the queue \"first\" already");
}

TEST(DispatchQueueDeathTest, BarrierSyncOnItsOwnConcurrentQueueIsAnError)
{
    EXPECT_DEATH(
        {
            const auto queue = DispatchQueue::concurrent("com.example.queue");
            queue.sync([&] { queue.barrierSync([] {}); });
        },
        "the caller is on the queue \"com.example.queue\" already");
}

TEST(DispatchQueueDeathTest, SyncOnTheMainQueueFromTheMainThreadIsAnError)
{
    EXPECT_DEATH(DispatchQueue::main().sync([] {}),
        "the caller is on the queue \"main\" already: file "
        "Platform/Scheduling/DispatchQueue");
}

TEST(DispatchQueueDeathTest, WorkThatThrowsEndsTheProcess)
{
    EXPECT_DEATH(
        {
            auto world = VirtualWorld();
            DispatchQueue::serial("queue").async([] { throw std::runtime_error("not caught by anybody"); });
            world.runUntilIdle();
        },
        "not caught by anybody");
}

TEST(DispatchQueueDeathTest, EmptyWorkIsAnError)
{
    EXPECT_DEATH(
        {
            auto world = VirtualWorld();
            DispatchQueue::serial("queue").async({});
            world.runUntilIdle();
        },
        "Call of an empty UniqueFunction");
}
