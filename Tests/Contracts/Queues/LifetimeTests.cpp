#include "Tests/Support/Queues.hpp"

#include <array>
#include <memory>

using namespace orrenby;
using orrenby::testing::Notes;
using orrenby::testing::QueueContract;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

namespace {

class QueueLifetimeContract : public QueueContract {};

TEST_P(QueueLifetimeContract, RunsItsWorkAlthoughNoHandleIsLeft)
{
    auto notes = Notes();
    auto done = detail::Signal();

    queue->async(notes.adding(1));
    queue->asyncAfter(0.001, notes.adding(2));
    queue->asyncAfter(0.002, [&, own = *queue] { own.barrierAsync([&] { done.set(); }); });
    queue.reset();
    waitFor(done);

    EXPECT_THAT(notes.numbers(), UnorderedElementsAre(1, 2));
}

TEST_P(QueueLifetimeContract, WorkMayDropTheLastHandle)
{
    auto notes = Notes();
    auto done = detail::Signal();

    queue->barrierAsync([&, own = std::make_unique<DispatchQueue>(*queue)]() mutable {
        own->barrierAsync([&] {
            notes.add(2);
            done.set();
        });
        own.reset();
        notes.add(1);
    });
    queue.reset();
    waitFor(done);

    EXPECT_THAT(notes.numbers(), ElementsAre(1, 2));
}

TEST_P(QueueLifetimeContract, ReleasesEachWorkOnceItHasRun)
{
    const auto witness = std::make_shared<int>();
    auto countDuringSecond = 0L;

    queue->barrierAsync([witness] {});
    queue->barrierAsync([&] { countDuringSecond = witness.use_count(); });
    settle();

    EXPECT_EQ(countDuringSecond, 1);
}

TEST_P(QueueLifetimeContract, KeepsWhatIsTooLargeToStandInPlace)
{
    auto numbers = std::array<int, 100>();
    numbers.back() = 5;
    auto result = 0;

    queue->async([numbers, &result] { result = numbers.back(); });
    settle();

    EXPECT_EQ(result, 5);
}

TEST_P(QueueLifetimeContract, ReleasesDelayedWorkThatHasRun)
{
    const auto witness = std::make_shared<int>();
    auto done = detail::Signal();

    queue->asyncAfter(0.001, [witness] {});
    queue->asyncAfter(0.002, [&] { queue->barrierAsync([&] { done.set(); }); });
    waitFor(done);

    EXPECT_EQ(witness.use_count(), 1);
}

TEST_P(QueueLifetimeContract, CopiesAreTheSameQueue)
{
    const auto copy = *queue;
    const auto other = DispatchQueue::serial(queue->label());

    EXPECT_EQ(copy, *queue);
    EXPECT_EQ(copy.sharedIdentity(), queue->sharedIdentity());
    EXPECT_NE(other, *queue);
}

INSTANTIATE_TEST_SUITE_P(Queues, QueueLifetimeContract, ::testing::ValuesIn(orrenby::testing::queueCases()),
    orrenby::testing::nameOf);

} // namespace
