#include "Orrenby/Platform/Observing/NotificationCenter.hpp"

#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include "Tests/Platform/Observing/NotificationCenterParts.hpp"
#include <gmock/gmock.h>
#include <thread>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::VirtualWorld;
using orrenby::testing::writing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Posts from another thread, and changes something while the callback waits in its suspended queue.
template <class Change>
void postWhileSuspended(NotificationCenter& center, const OperationQueue& queue, Change&& change)
{
    queue.setSuspended(true);
    auto posting = std::thread([&] { center.post("a"); });
    while (queue.operationCount() == 0)
        std::this_thread::yield();
    change();
    queue.setSuspended(false);
    posting.join();
}

} // namespace

TEST(NotificationCenter, RunsTheCallbackOnTheGivenQueueAndWaitsForIt)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    const auto queue = OperationQueue();
    center.addObserver({.name = "a", .queue = queue},
        [&](const Notification&) { diary.push_back(queue.isCurrent() ? "on the queue" : "elsewhere"); });
    center.addObserver({.name = "a"}, writing(diary, "after"));

    center.post("a");

    EXPECT_THAT(diary, ElementsAre("on the queue", "after a"));
}

TEST(NotificationCenter, RunsTheCallbackDirectlyOnTheQueueItIsFor)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    const auto queue = OperationQueue();
    queue.setMaxConcurrentOperationCount(1); // an operation could not wait for another one
    center.addObserver({.name = "a", .queue = queue}, writing(diary, "inside"));

    queue.addOperation([&] {
        center.post("a");
        diary.push_back("posted");
    });
    queue.waitUntilAllOperationsAreFinished();

    EXPECT_THAT(diary, ElementsAre("inside a", "posted"));
}

TEST(NotificationCenter, RunsTheCallbackDirectlyForTheMainQueueOnTheMainThread)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    center.addObserver({.name = "a", .queue = OperationQueue::main()}, writing(diary, "main"));

    center.post("a");

    EXPECT_THAT(diary, ElementsAre("main a"));
}

TEST(NotificationCenter, RunsTheCallbackOnTheMainThreadForAPostFromAnotherOne)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    center.addObserver({.name = "a", .queue = OperationQueue::main()},
        [&](const Notification&) { diary.push_back(Thread::isMainThread() ? "main" : "other"); });

    auto posting = std::thread([&] {
        center.post("a");
        diary.push_back("posted");
        RunLoop::main().perform([] { RunLoop::main().stop(); });
    });
    RunLoop::main().run();
    posting.join();

    EXPECT_THAT(diary, ElementsAre("main", "posted"));
}

TEST(NotificationCenter, WaitsForAQueueOfAVirtualWorld)
{
    auto diary = Diary();
    const auto world = VirtualWorld();
    auto center = NotificationCenter();
    const auto queue = OperationQueue();
    center.addObserver({.name = "a", .queue = queue}, writing(diary, "queue"));
    center.addObserver({.name = "a"}, writing(diary, "thread"));

    center.post("a");

    EXPECT_THAT(diary, ElementsAre("queue a", "thread a"));
}

TEST(NotificationCenter, DoesNotCallWhatIsRemovedWhileItWaitsInItsQueue)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    const auto queue = OperationQueue();
    queue.setMaxConcurrentOperationCount(1);
    const auto token = center.addObserver({.name = "a", .queue = queue}, writing(diary, "called"));

    postWhileSuspended(center, queue, [&] { center.removeObserver(token); });

    EXPECT_THAT(diary, IsEmpty());
}

TEST(NotificationCenter, DoesNotCallWhatIsCancelledInItsQueue)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    const auto queue = OperationQueue();
    center.addObserver({.name = "a", .queue = queue}, writing(diary, "called"));

    postWhileSuspended(center, queue, [&] { queue.cancelAllOperations(); });

    EXPECT_THAT(diary, IsEmpty());
}
