#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"

#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include <atomic>
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <thread>

using namespace orrenby;
using orrenby::testing::VirtualWorld;

TEST(BlockOperation, RunsItsBlockOnceOnTheThreadThatStartsIt)
{
    int calls = 0;
    auto thread = std::thread::id();
    const auto operation = make<BlockOperation>([&] {
        ++calls;
        thread = std::this_thread::get_id();
    });

    operation->start();
    operation->start();

    EXPECT_EQ(calls, 1);
    EXPECT_EQ(thread, std::this_thread::get_id());
}

TEST(BlockOperation, WithoutBlockFinishes)
{
    const auto none = make<BlockOperation>();
    const auto empty = make<BlockOperation>(nullptr);

    none->start();
    empty->start();

    EXPECT_TRUE(none->isFinished() && empty->isFinished());
}

TEST(BlockOperation, HasFinishedWhenAllItsBlocksHaveRun)
{
    auto world = VirtualWorld();
    //! [Waiting for several blocks]
    auto pages = std::atomic<int>(0);
    const auto operation = make<BlockOperation>([&] { ++pages; });
    operation->addExecutionBlock([&] { ++pages; });
    operation->addExecutionBlock([&] { ++pages; });

    auto queue = OperationQueue();
    queue.addOperation(operation);
    operation->waitUntilFinished();
    //! [Waiting for several blocks]

    EXPECT_EQ(pages, 3);
}

TEST(BlockOperation, RunsSeveralBlocksAtTheSameTime)
{
    // Each waits for the other: one after the other they would wait for ever.
    auto arrived = std::atomic<int>(0);
    const auto meet = [&] {
        ++arrived;
        while (arrived != 2)
            std::this_thread::yield();
    };
    const auto operation = make<BlockOperation>(meet);
    operation->addExecutionBlock(meet);

    operation->start();

    EXPECT_EQ(arrived, 2);
}

TEST(BlockOperation, RunsAllBlocksOnOneThreadWhereThereIsOnlyOne)
{
    auto world = VirtualWorld();
    std::string ran;
    const auto operation = make<BlockOperation>([&] { ran += '0'; });
    for (const char name : std::string("123456789"))
        operation->addExecutionBlock([&ran, name] { ran += name; });

    operation->start();
    world.runUntilIdle();

    EXPECT_EQ(ran, "0123456789");
}

TEST(BlockOperation, RunsABlockThatIsAddedToOneWithoutBlock)
{
    int calls = 0;
    const auto operation = make<BlockOperation>();
    operation->addExecutionBlock([&] { ++calls; });

    operation->start();

    EXPECT_EQ(calls, 1);
}

TEST(BlockOperation, DestroysItsBlocksWhenTheyHaveRun)
{
    auto world = VirtualWorld();
    const auto token = std::make_shared<int>();
    const auto operation = make<BlockOperation>([token] {});
    operation->addExecutionBlock([token] {});

    operation->start();
    world.runUntilIdle();

    EXPECT_EQ(token.use_count(), 1);
}

TEST(BlockOperation, DestroysItsBlocksWhenItFinishesWithoutThem)
{
    const auto token = std::make_shared<int>();
    const auto operation = make<BlockOperation>([token] {});
    operation->addExecutionBlock([token] {});
    operation->cancel();

    operation->start();

    EXPECT_EQ(token.use_count(), 1);
}

TEST(BlockOperation, ThatItsOwnBlockKeepsIsReleasedAfterItHasRun)
{
    auto operation = make<BlockOperation>();
    operation->addExecutionBlock([operation] { operation->isCancelled(); });
    const auto weak = WeakRef<BlockOperation>(operation);

    operation->start();
    operation.reset();

    EXPECT_TRUE(weak.expired());
}

TEST(BlockOperationDeathTest, AddingABlockAfterTheBeginIsAProgrammingError)
{
    auto operation = Ref<BlockOperation>();
    operation = make<BlockOperation>([&] { operation->addExecutionBlock([] {}); });
    const auto message = "^Fatal error: A block cannot be added to an operation that has begun: "
                         "file Platform/Scheduling/BlockOperation, line 67";

    EXPECT_DEATH(operation->start(), message);
}

TEST(BlockOperationDeathTest, AddingABlockAfterTheEndIsAProgrammingError)
{
    const auto operation = make<BlockOperation>();
    operation->start();

    EXPECT_DEATH(operation->addExecutionBlock([] {}),
        "^Fatal error: A block cannot be added to an operation that has begun");
}
