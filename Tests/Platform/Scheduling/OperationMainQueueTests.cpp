#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Support/OperationParts.hpp"
#include <gmock/gmock.h>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::ManualOperation;
using orrenby::testing::VirtualWorld;
using ::testing::ElementsAre;

TEST(OperationMainQueue, IsThereOnce)
{
    EXPECT_EQ(OperationQueue::main(), OperationQueue::main());
    EXPECT_EQ(OperationQueue::main().maxConcurrentOperationCount(), 1);
    EXPECT_EQ(OperationQueue::main().underlyingQueue(), DispatchQueue::main());
}

TEST(OperationMainQueue, RunsAmongTheOtherWorkOfTheMainThread)
{
    auto world = VirtualWorld();
    std::string ran;
    OperationQueue::main().addOperation([&] { ran += Thread::isMainThread() ? "1" : "elsewhere"; });
    DispatchQueue::main().async([&] { ran += "2"; });
    OperationQueue::main().addOperation([&] { ran += "3"; });
    EXPECT_EQ(ran, "");

    world.runUntilIdle();

    EXPECT_EQ(ran, "123");
}

TEST(OperationMainQueue, RunsOneAtATime)
{
    auto world = VirtualWorld();
    const auto first = make<ManualOperation>();
    const auto second = make<ManualOperation>();
    OperationQueue::main().setMaxConcurrentOperationCount(2);
    OperationQueue::main().addOperations({first, second});

    world.runUntilIdle();
    EXPECT_EQ(second->startCount, 0);
    first->end();
    world.runUntilIdle();
    second->end();

    EXPECT_EQ(second->startCount, 1);
}

TEST(OperationMainQueue, IsCurrentOnTheMainThreadOnly)
{
    std::vector<bool> elsewhere;
    auto other = std::thread([&] {
        elsewhere = {OperationQueue::main().isCurrent(), OperationQueue::current().has_value()};
    });
    other.join();

    EXPECT_THAT(elsewhere, ElementsAre(false, false));
    EXPECT_TRUE(OperationQueue::main().isCurrent());
    EXPECT_EQ(OperationQueue::current(), OperationQueue::main());
}

TEST(OperationMainQueueDeathTest, KeepsItsUnderlyingQueue)
{
    EXPECT_DEATH(OperationQueue::main().setUnderlyingQueue(std::nullopt),
        "^Fatal error: The main queue keeps its underlying queue: "
        "file Platform/Scheduling/OperationQueue, line 255");
}
