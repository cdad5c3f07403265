#include "Orrenby/Platform/Observing/NotificationCenter.hpp"

#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
#include <atomic>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Diary = std::vector<std::string>;

/// Writes the text and what was posted.
auto writing(Diary& diary, std::string text)
{
    return [&diary, text = std::move(text)](const Notification& notification) {
        diary.push_back(text + " " + notification.description());
    };
}

class Interface {
public:
    virtual ~Interface() = default;
};
class Other {
public:
    virtual ~Other() = default;
};
class Document : public Interface, public Other {};

TEST(NotificationCenter, DeliversWhatIsPosted)
{
    auto lines = Diary();
    const auto draft = std::make_shared<Document>();

    //! [Posting a notification]
    const auto center = std::make_shared<NotificationCenter>();
    const NotificationName draftWasSaved = "DraftWasSaved";

    const auto token = center->addObserver(
        {.name = draftWasSaved, .object = draft}, [&](const Notification& notification) {
            lines.push_back("saved, " + describe(notification.userInfo()["words"]) + " words");
        });
    center->post(draftWasSaved, draft, {{"words", 230}});

    center->removeObserver(token);
    center->post(draftWasSaved, draft, {{"words", 231}}); // nobody is told
    //! [Posting a notification]

    EXPECT_THAT(lines, ElementsAre("saved, 230 words"));
}

TEST(NotificationCenter, DeliversNothingToNobody)
{
    auto center = NotificationCenter();

    center.post("a");

    EXPECT_EQ(center.observerCount(), 0U);
}

TEST(NotificationCenter, HasOneThatEverybodyShares)
{
    auto diary = Diary();
    const auto& center = NotificationCenter::defaultCenter();
    const auto token = center->addObserver({.name = "a"}, writing(diary, "default"));

    NotificationCenter::defaultCenter()->post("a");
    NotificationCenter().post("a");
    center->removeObserver(token);

    EXPECT_THAT(diary, ElementsAre("default a"));
}

TEST(NotificationCenter, SelectsByName)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    center.addObserver({.name = "a"}, writing(diary, "a:"));
    center.addObserver({.name = ""}, writing(diary, "empty:"));
    center.addObserver({}, writing(diary, "all:"));

    center.post("a");
    center.post("b");
    center.post("");

    EXPECT_THAT(diary, ElementsAre("a: a", "all: a", "all: b", "empty: ", "all: "));
}

TEST(NotificationCenter, SelectsBySender)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    const auto first = std::make_shared<int>(1);
    const auto second = std::make_shared<int>(1); // equal, but another object
    center.addObserver({.object = first}, writing(diary, "first:"));
    center.addObserver({.name = "a", .object = second}, writing(diary, "second:"));
    center.addObserver({.name = "a"}, writing(diary, "any:"));

    center.post("a", first);
    center.post("b", second);
    center.post("a", second);
    center.post("a");

    EXPECT_THAT(diary, ElementsAre("first: a", "any: a", "second: a", "any: a", "any: a"));
}

TEST(NotificationCenter, KnowsASenderThroughEachOfItsInterfaces)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    const auto document = std::make_shared<Document>();
    center.addObserver({.object = Ref<Interface>(document)}, writing(diary, "document"));

    center.post("a", Ref<Other>(document));
    center.post("b", Ref<const Document>(document));

    EXPECT_THAT(diary, ElementsAre("document a", "document b"));
}

TEST(NotificationCenter, TakesAnEmptyReferenceForNoSender)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    center.addObserver({.object = Ref<int>()}, writing(diary, "any"));

    center.post("a", std::make_shared<int>());
    center.post("b", Ref<int>());

    EXPECT_THAT(diary, ElementsAre("any a", "any b"));
}

TEST(NotificationCenter, DoesNotKeepASenderAlive)
{
    auto center = NotificationCenter();
    auto sender = std::make_shared<int>();
    const auto weak = WeakRef<int>(sender);
    center.addObserver({.object = sender}, [](const Notification&) {});
    center.post("a", sender);

    sender.reset();

    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(center.observerCount(), 0U);
}

TEST(NotificationCenter, DoesNotTakeALaterObjectInThePlaceOfASenderForIt)
{
    alignas(int) unsigned char place[sizeof(int)];
    const auto inPlace = [&] { return Ref<int>(new (place) int(1), [](int*) {}); };
    auto diary = Diary();
    auto center = NotificationCenter();
    auto sender = inPlace();
    center.addObserver({.object = sender}, writing(diary, "first"));
    sender.reset();

    const auto successor = inPlace();
    center.addObserver({.object = successor}, writing(diary, "successor"));
    center.post("a", successor);

    EXPECT_THAT(diary, ElementsAre("successor a"));
}

TEST(NotificationCenter, DropsRegistrationsForSendersThatAreGone)
{
    const auto witness = std::make_shared<int>();
    auto center = NotificationCenter();

    for (int count = 0; count < 1000; ++count)
        center.addObserver({.object = std::make_shared<int>()}, [witness](const Notification&) {});

    EXPECT_EQ(center.observerCount(), 0U);
    EXPECT_LE(witness.use_count(), 17);
}

TEST(NotificationCenter, CallsInTheOrderOfRegistrationWhateverEachSelectsBy)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    const auto sender = std::make_shared<int>();
    center.addObserver({.name = "a", .object = sender}, writing(diary, "1"));
    center.addObserver({}, writing(diary, "2"));
    center.addObserver({.object = sender}, writing(diary, "3"));
    center.addObserver({.name = "a"}, writing(diary, "4"));
    center.addObserver({.name = "a", .object = sender}, writing(diary, "5"));
    center.addObserver({}, writing(diary, "6"));

    center.post("a", sender);

    EXPECT_THAT(diary, ElementsAre("1 a", "2 a", "3 a", "4 a", "5 a", "6 a"));
}

TEST(NotificationCenter, CallsACallbackThatIsRegisteredTwiceTwice)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    center.addObserver({.name = "a"}, writing(diary, "first"));
    const auto second = center.addObserver({.name = "a"}, writing(diary, "second"));

    center.post("a");
    center.removeObserver(second);
    center.post("a");

    EXPECT_THAT(diary, ElementsAre("first a", "second a", "first a"));
}

TEST(NotificationCenter, IgnoresTokensThatItDoesNotKnow)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    auto other = NotificationCenter();
    const auto token = center.addObserver({.name = "a"}, writing(diary, "kept"));
    const auto foreign = other.addObserver({.name = "a"}, writing(diary, "other"));
    const auto removed = center.addObserver({.name = "a"}, writing(diary, "removed"));
    center.removeObserver(removed);

    center.removeObserver(foreign);
    center.removeObserver(removed);
    center.removeObserver(nullptr);
    center.post("a");
    other.post("a");

    EXPECT_THAT(diary, ElementsAre("kept a", "other a"));
    EXPECT_NE(token, foreign);
}

TEST(NotificationCenter, GoesOnWhenATokenIsLetGo)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    center.addObserver({.name = "a"}, writing(diary, "still")).reset();

    center.post("a");

    EXPECT_THAT(diary, ElementsAre("still a"));
}

TEST(NotificationCenter, LetsGoOfACallbackWhenItsRegistrationIsRemoved)
{
    const auto witness = std::make_shared<int>();
    auto center = NotificationCenter();
    const auto token = center.addObserver({}, [witness](const Notification&) {});
    const auto other = center.addObserver({}, [witness](const Notification&) {});

    center.removeObserver(token);
    EXPECT_EQ(witness.use_count(), 2);
    center.removeObserver(other);

    EXPECT_EQ(witness.use_count(), 1);
}

TEST(NotificationCenter, LetsGoOfAllCallbacksAtItsEnd)
{
    const auto witness = std::make_shared<int>();
    auto token = Ref<NotificationToken>();
    {
        auto center = NotificationCenter();
        token = center.addObserver({}, [witness](const Notification&) {});
    }

    EXPECT_EQ(witness.use_count(), 1);
}

TEST(NotificationCenter, DoesNotCallWhatIsRemovedDuringThePost)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    auto later = Ref<NotificationToken>();
    center.addObserver({.name = "a"}, [&](const Notification&) { center.removeObserver(later); });
    later = center.addObserver({.name = "a"}, writing(diary, "removed"));
    center.addObserver({.name = "a"}, writing(diary, "last"));

    center.post("a");

    EXPECT_THAT(diary, ElementsAre("last a"));
}

TEST(NotificationCenter, DoesNotCallWhatIsAddedDuringThePost)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    center.addObserver({}, [&](const Notification& notification) {
        if (notification.name() == "a")
            center.addObserver({}, writing(diary, "added"));
    });
    center.addObserver({}, writing(diary, "old"));

    center.post("a");
    center.post("b");

    EXPECT_THAT(diary, ElementsAre("old a", "old b", "added b"));
}

TEST(NotificationCenter, LetsACallbackRemoveItself)
{
    auto calls = 0;
    auto center = NotificationCenter();
    auto token = Ref<NotificationToken>();
    const auto witness = std::make_shared<int>(7);
    token = center.addObserver({}, [&, witness](const Notification&) {
        center.removeObserver(token);
        calls += *witness; // still there
    });

    center.post("a");
    center.post("a");

    EXPECT_EQ(calls, 7);
    EXPECT_EQ(witness.use_count(), 1);
}

TEST(NotificationCenter, FinishesANestedPostFirst)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    center.addObserver({}, [&](const Notification& notification) {
        diary.push_back("first " + notification.description());
        if (notification.name() == "a")
            center.post("b");
    });
    center.addObserver({}, writing(diary, "second"));

    center.post("a");

    EXPECT_THAT(diary, ElementsAre("first a", "first b", "second b", "second a"));
}

TEST(NotificationCenter, RemovesInAnyOrderDuringNestedPosts)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    auto tokens = std::vector<Ref<NotificationToken>>();
    for (int number = 0; number < 8; ++number)
        tokens.push_back(center.addObserver({.name = "a"}, writing(diary, std::to_string(number))));
    center.addObserver({.name = "b"}, [&](const Notification&) {
        for (const auto index : {6U, 1U, 4U, 3U})
            center.removeObserver(tokens[index]);
        center.addObserver({.name = "a"}, writing(diary, "new"));
        center.post("a");
    });

    center.post("b");
    center.removeObserver(tokens[0]);
    center.removeObserver(tokens[7]);
    center.post("a");

    EXPECT_THAT(diary, ElementsAre("0 a", "2 a", "5 a", "7 a", "new a", "2 a", "5 a", "new a"));
    EXPECT_EQ(center.observerCount(), 4U);
}

TEST(NotificationCenter, MayBeLetGoInItsOwnCallback)
{
    auto diary = Diary();
    auto center = std::make_shared<NotificationCenter>();
    center->addObserver({}, [&](const Notification&) { center.reset(); });
    center->addObserver({}, writing(diary, "last"));

    auto* const plain = center.get();
    plain->post("a");

    EXPECT_EQ(center, nullptr);
    EXPECT_THAT(diary, ElementsAre("last a"));
}

TEST(NotificationCenter, MayBeUsedByWhatARemovedCallbackLetsGo)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    auto posting = Ref<int>(new int(), [&](int* content) {
        delete content;
        center.post("gone");
    });
    auto token = center.addObserver({.name = "a"}, [posting](const Notification&) {});
    center.addObserver({.name = "gone"}, writing(diary, "told"));
    posting.reset();

    center.removeObserver(token);

    EXPECT_THAT(diary, ElementsAre("told gone"));
}

TEST(NotificationCenter, NeedsACallback)
{
    auto center = NotificationCenter();

    EXPECT_DEATH(center.addObserver({}, nullptr),
        "Fatal error: Empty callable in place of a callback: file Platform/NotificationCenter");
}

TEST(NotificationCenter, EndsTheProcessWhenACallbackThrows)
{
    auto center = NotificationCenter();
    center.addObserver({}, [](const Notification&) { throw 1; });

    EXPECT_DEATH(center.post("a"), "terminate");
}

TEST(NotificationCenter, KeepsTheNotificationDuringThePost)
{
    auto center = NotificationCenter();
    auto sender = std::make_shared<std::string>("still here");
    auto seen = std::string();
    center.addObserver({.object = sender}, [&](const Notification& notification) {
        sender.reset();
        seen = *notification.object<std::string>();
    });

    center.post("a", sender);

    EXPECT_EQ(seen, "still here");
}

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
    const auto world = orrenby::testing::VirtualWorld();
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
    queue.setSuspended(true);

    auto posting = std::thread([&] { center.post("a"); });
    while (queue.operationCount() == 0)
        std::this_thread::yield();
    center.removeObserver(token);
    queue.setSuspended(false);
    posting.join();

    EXPECT_THAT(diary, IsEmpty());
}

TEST(NotificationCenter, DoesNotCallWhatIsCancelledInItsQueue)
{
    auto diary = Diary();
    auto center = NotificationCenter();
    const auto queue = OperationQueue();
    center.addObserver({.name = "a", .queue = queue}, writing(diary, "called"));
    queue.setSuspended(true);

    auto posting = std::thread([&] { center.post("a"); });
    while (queue.operationCount() == 0)
        std::this_thread::yield();
    queue.cancelAllOperations();
    queue.setSuspended(false);
    posting.join();

    EXPECT_THAT(diary, IsEmpty());
}

TEST(NotificationCenter, IsUsedBySeveralThreadsAtOnce)
{
    constexpr int rounds = 300;
    auto center = NotificationCenter();
    auto calls = std::atomic<int>(0);
    const auto sender = std::make_shared<int>();
    center.addObserver({.name = "a"}, [&](const Notification&) { ++calls; });
    center.addObserver({.object = sender}, [&](const Notification&) { ++calls; });

    auto threads = std::vector<std::thread>();
    for (int thread = 0; thread < 2; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round)
                center.post("a", sender);
        });
    for (int thread = 0; thread < 2; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                const auto own = std::make_shared<int>();
                const auto token = center.addObserver({.name = "a"}, [own](const Notification&) {});
                const auto other = center.addObserver({.object = own}, [own](const Notification&) {});
                center.post("b", own);
                center.removeObserver(token);
                center.removeObserver(other);
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(calls, 2 * 2 * rounds);
    EXPECT_EQ(center.observerCount(), 2U);
}

#ifdef ORRENBY_DIAGNOSTICS
std::vector<std::string>& reports()
{
    static auto reports = std::vector<std::string>();
    return reports;
}

TEST(NotificationCenter, ReportsWhoComesAndGoesInTheDiagnosticBuild)
{
    auto center = NotificationCenter();
    Trace::onEvent([](const Trace::Event& event) {
        reports().push_back(std::string(event.kind == Trace::Kind::Attach ? "attach " : "detach ")
            + std::string(event.site.function()));
    });

    const auto token = center.addObserver({}, [](const Notification&) {});
    center.removeObserver(token);
    center.removeObserver(token);
    Trace::onEvent(nullptr);

    EXPECT_THAT(reports(), ElementsAre("attach TestBody", "detach TestBody"));
}
#endif

} // namespace
