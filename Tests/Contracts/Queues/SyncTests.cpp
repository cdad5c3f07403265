#include "Tests/Support/Queues.hpp"

#include <memory>
#include <stdexcept>
#include <thread>

using namespace orrenby;
using orrenby::testing::Notes;
using orrenby::testing::QueueContract;
using ::testing::ElementsAre;

namespace {

/// Not on the main queue, which the test's own thread is on.
class QueueSyncContract : public QueueContract {};
class ConcurrentQueueSyncContract : public QueueContract {};

TEST_P(QueueSyncContract, ReturnsWhatTheWorkReturns)
{
    auto number = 1;

    const auto sum = queue->sync([&] { return number + 1; });
    auto& reference = queue->sync([&]() -> int& { return number; });
    const auto moveOnly = queue->sync([] { return std::make_unique<int>(3); });
    queue->sync([&] { number = 4; });

    EXPECT_EQ(sum, 2);
    EXPECT_EQ(&reference, &number);
    EXPECT_EQ(*moveOnly, 3);
    EXPECT_EQ(number, 4);
}

TEST_P(QueueSyncContract, LetsExceptionsPassAndGoesOn)
{
    EXPECT_THROW(queue->sync([] { throw std::runtime_error("refused"); }), std::runtime_error);
    EXPECT_THROW(queue->barrierSync([] { throw std::runtime_error("refused"); }), std::runtime_error);

    EXPECT_EQ(queue->sync([] { return 1; }), 1);
    EXPECT_EQ(queue->barrierSync([] { return 1; }), 1);
}

TEST_P(QueueSyncContract, RunsOnTheCallingThread)
{
    queue->async([] {}); // so that it has to wait for its turn, perhaps

    const auto thread = queue->sync([] { return std::this_thread::get_id(); });

    EXPECT_EQ(thread, std::this_thread::get_id());
}

TEST_P(QueueSyncContract, ComesAfterWhatWasHandedOver)
{
    auto notes = Notes();
    for (int number = 0; number < 600; ++number)
        queue->async(notes.adding(number));

    const auto count = queue->barrierSync([&] { return notes.numbers().size(); });

    EXPECT_EQ(count, 600U);
}

TEST_P(QueueSyncContract, LetsTheRestRunAfterwards)
{
    auto notes = Notes();

    queue->barrierSync([&] {
        queue->async(notes.adding(2));
        notes.add(1);
    });
    settle();

    EXPECT_THAT(notes.numbers(), ElementsAre(1, 2));
}

TEST_P(QueueSyncContract, IsOnTheQueueMeanwhile)
{
    const auto other = DispatchQueue::serial("other");

    const auto inside = queue->sync([&] { return queue->isCurrent(); });
    const auto nested = queue->sync(
        [&] { return other.sync([&] { return queue->isCurrent() && other.isCurrent(); }); });

    EXPECT_TRUE(inside);
    EXPECT_TRUE(nested);
    EXPECT_FALSE(queue->isCurrent());
    EXPECT_FALSE(other.isCurrent());
}

TEST_P(QueueSyncContract, IsOnTheQueueInItsWork)
{
    auto wasCurrent = false;
    auto wasOther = true;
    const auto other = DispatchQueue::serial("other");

    queue->async([&] {
        wasCurrent = queue->isCurrent();
        wasOther = other.isCurrent();
    });
    settle();

    EXPECT_TRUE(wasCurrent);
    EXPECT_FALSE(wasOther);
}

TEST_P(ConcurrentQueueSyncContract, GoesOnAtOnceOnTheQueueItIsOn)
{
    auto notes = Notes();

    queue->sync([&] {
        queue->barrierAsync(notes.adding(2)); // would wait for this work, and a second turn for it
        queue->sync(notes.adding(1));
    });
    settle();

    EXPECT_THAT(notes.numbers(), ElementsAre(1, 2));
}

TEST_P(QueueSyncContract, MaySurviveTheLastHandle)
{
    auto made = std::optional(GetParam().make());

    const auto result = made->sync([&] {
        made.reset();
        return 7;
    });

    EXPECT_EQ(result, 7);
}

TEST_P(QueueSyncContract, WorkMayWaitForAnotherQueue)
{
    const auto other = DispatchQueue::serial("other");
    auto sum = 0;

    for (int number = 1; number <= 20; ++number)
        queue->async([&, number] { other.sync([&] { sum += number; }); });
    settle();

    EXPECT_EQ(sum, 210);
}

INSTANTIATE_TEST_SUITE_P(Queues, QueueSyncContract,
    ::testing::ValuesIn(orrenby::testing::queueCasesWhere(
        [](const auto& each) { return each.kind != DispatchQueue::Kind::Main; })),
    orrenby::testing::nameOf);

INSTANTIATE_TEST_SUITE_P(Queues, ConcurrentQueueSyncContract,
    ::testing::ValuesIn(orrenby::testing::queueCasesWhere(
        [](const auto& each) { return each.kind == DispatchQueue::Kind::Concurrent; })),
    orrenby::testing::nameOf);

} // namespace
