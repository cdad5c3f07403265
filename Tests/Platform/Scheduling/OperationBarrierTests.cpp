#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Support/OperationParts.hpp"
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using orrenby::testing::ManualOperation;
using orrenby::testing::VirtualWorld;

namespace {

class OperationBarrierTest : public ::testing::Test {
protected:
    auto writing(char name)
    {
        return [this, name] { m_ran += name; };
    }

    VirtualWorld m_world;
    OperationQueue m_queue;
    std::string m_ran;
};

} // namespace

TEST_F(OperationBarrierTest, InAnEmptyQueueRuns)
{
    m_queue.addBarrierBlock(writing('b'));

    m_queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(m_ran, "b");
}

TEST_F(OperationBarrierTest, RunsWhenEverythingBeforeItHasFinished)
{
    const auto before = make<ManualOperation>();
    m_queue.addOperation(before);
    m_queue.addOperation(writing('1'));
    m_queue.addBarrierBlock(writing('b'));
    m_world.runUntilIdle();
    EXPECT_EQ(m_ran, "1");

    before->end();
    m_world.runUntilIdle();

    EXPECT_EQ(m_ran, "1b");
}

TEST_F(OperationBarrierTest, KeepsBackEverythingAddedAfterIt)
{
    const auto before = make<ManualOperation>();
    const auto urgent = make<BlockOperation>(writing('2'));
    urgent->setQueuePriority(Operation::QueuePriority::VeryHigh);
    m_queue.addOperation(before);
    m_queue.addBarrierBlock(writing('b'));
    m_queue.addOperation(writing('3'));
    m_queue.addOperation(urgent);
    m_world.runUntilIdle();
    EXPECT_EQ(m_ran, "");

    before->end();
    m_world.runUntilIdle();

    EXPECT_EQ(m_ran, "b23");
}

TEST_F(OperationBarrierTest, FollowsOtherBarriersInOrder)
{
    m_queue.addBarrierBlock(writing('1'));
    m_queue.addBarrierBlock(writing('2'));
    m_queue.addOperation(writing('3'));
    m_queue.addBarrierBlock(writing('4'));
    m_queue.addOperation(writing('5'));

    m_queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(m_ran, "12345");
}

TEST_F(OperationBarrierTest, WhatWaitsForMoreThanTheBarrierIsWaitedForBeyondIt)
{
    const auto other = make<ManualOperation>();
    const auto waiting = make<BlockOperation>(writing('w'));
    waiting->addDependency(other);
    m_queue.addBarrierBlock(writing('b'));
    m_queue.addOperation(waiting);
    m_world.runUntilIdle();
    EXPECT_EQ(m_ran, "b");

    other->end();
    m_world.runUntilIdle();

    EXPECT_EQ(m_ran, "bw");
}

TEST_F(OperationBarrierTest, WhatBecomesReadyBehindABarrierWaitsForTheBarrier)
{
    const auto before = make<ManualOperation>();
    const auto other = make<ManualOperation>();
    const auto waiting = make<BlockOperation>(writing('w'));
    waiting->addDependency(other);
    m_queue.addOperation(before);
    m_queue.addBarrierBlock(writing('b'));
    m_queue.addOperation(waiting);

    other->end();
    m_world.runUntilIdle();
    EXPECT_EQ(m_ran, "");
    before->end();
    m_world.runUntilIdle();

    EXPECT_EQ(m_ran, "bw");
}

TEST_F(OperationBarrierTest, ThatIsCancelledDoesNotRunButKeepsItsPlace)
{
    const auto before = make<ManualOperation>();
    m_queue.addOperation(before);
    m_queue.addBarrierBlock(writing('b'));
    m_queue.addOperation(writing('3'));
    m_queue.operations()[1]->cancel();
    m_world.runUntilIdle();
    EXPECT_EQ(m_ran, "");

    before->end();
    m_world.runUntilIdle();

    EXPECT_EQ(m_ran, "3");
}

TEST_F(OperationBarrierTest, MayAddOperationsAndBarriers)
{
    m_queue.addBarrierBlock([this] {
        m_queue.addOperation(writing('2'));
        m_queue.addBarrierBlock(writing('3'));
        m_ran += '0';
    });
    m_queue.addOperation(writing('1'));

    m_queue.waitUntilAllOperationsAreFinished();

    EXPECT_EQ(m_ran, "0123");
}
