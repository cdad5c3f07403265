#include "Examples/Fieldbook/UploadOperation.hpp"

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace {

using namespace fieldbook;
using orrenby::testing::VirtualWorld;
using Step = UploadProgress::Step;
using ::testing::ElementsAre;

class UploadOperationTest : public ::testing::Test {
protected:
    /// Uploads in a queue of the main thread. `steps` is what was told, and when.
    orrenby::Ref<UploadOperation> upload(int number)
    {
        queue.setUnderlyingQueue(orrenby::DispatchQueue::main());
        auto operation = orrenby::make<UploadOperation>(loop, number, progress, 1.0);
        queue.addOperation(operation);
        return operation;
    }

    using Told = std::pair<double, Step>;
    VirtualWorld world;
    EventLoop loop;
    orrenby::OperationQueue queue;
    UploadOperation::Progress progress;
    std::vector<Told> steps;
    orrenby::Streams::AnyCancellable handle = progress.asPublisher().bind(
        [this](const UploadProgress& step) { steps.emplace_back(world.elapsed(), step.step); });
};

TEST_F(UploadOperationTest, IsSentAtOnceWhenTheServiceTakesIt)
{
    const auto operation = upload(6);

    world.runAll();

    EXPECT_THAT(steps, ElementsAre(Told(0, Step::begins), Told(0.5, Step::isSent)));
    EXPECT_TRUE(operation->isFinished());
}

TEST_F(UploadOperationTest, WaitsLongerAfterEachFailure)
{
    upload(2);

    world.runAll();

    EXPECT_THAT(steps,
        ElementsAre(Told(0, Step::begins), Told(0.5, Step::waits), Told(2.5, Step::begins),
            Told(3, Step::waits), Told(7, Step::begins), Told(7.5, Step::isSent)));
}

TEST_F(UploadOperationTest, GivesUpWhenTheScheduleIsOver)
{
    const auto operation = upload(3);

    world.runAll();

    EXPECT_EQ(steps.back(), Told(16, Step::isGivenUp));
    EXPECT_TRUE(operation->isFinished());
    EXPECT_EQ(queue.operationCount(), 0U);
}

TEST_F(UploadOperationTest, EndsAtOnceWhenItIsCancelledWhileItWaits)
{
    const auto operation = upload(3);
    world.advance(1);

    operation->cancel();
    world.runAll();

    EXPECT_TRUE(operation->isFinished());
    EXPECT_THAT(steps, ElementsAre(Told(0, Step::begins), Told(0.5, Step::waits)));
    EXPECT_EQ(queue.operationCount(), 0U);
}

} // namespace
