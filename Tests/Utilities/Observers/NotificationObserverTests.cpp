#include "Orrenby/Utilities/Observers/NotificationObserver.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Diary = std::vector<std::string>;

auto writing(Diary& diary, std::string text)
{
    return [&diary, text = std::move(text)](const Notification& notification) {
        diary.push_back(text + " " + notification.description());
    };
}

Ref<NotificationCenter> makeCenter() { return std::make_shared<NotificationCenter>(); }

TEST(NotificationObserver, RemovesItsRegistrationsWithItsOwner)
{
    //! [Observing notifications]
    class Counter {
    public:
        explicit Counter(const Ref<NotificationCenter>& center)
            : m_observer(center)
        {
            m_observer.observe({.name = "MessageArrived"}, [this](const Notification&) { ++m_count; });
        }
        int count() const { return m_count; }

    private:
        int m_count = 0;
        NotificationObserver m_observer; // last, so that it goes first
    };

    const auto center = std::make_shared<NotificationCenter>();
    {
        const auto counter = Counter(center);
        center->post("MessageArrived");
        center->post("MessageLeft");
        EXPECT_EQ(counter.count(), 1);
    }
    center->post("MessageArrived"); // nobody is left to count it
    //! [Observing notifications]

    EXPECT_EQ(center->observerCount(), 0U);
}

TEST(NotificationObserver, CallsBothOfTwoRegistrationsForOneNameAndLeavesTheSecondWhenTheFirstGoes)
{
    auto diary = Diary();
    const auto center = makeCenter();
    auto observer = NotificationObserver(center);
    const auto first = observer.observe({.name = "a"}, writing(diary, "first"));
    const auto second = observer.observe({.name = "a"}, writing(diary, "second"));

    center->post("a");
    observer.unobserve(first);
    center->post("a");

    EXPECT_THAT(diary, ElementsAre("first a", "second a", "second a"));
    EXPECT_NE(first, second);
}

TEST(NotificationObserver, IgnoresTheTokenOfAnotherObserver)
{
    auto diary = Diary();
    const auto center = makeCenter();
    auto observer = NotificationObserver(center);
    auto other = NotificationObserver(center);
    observer.observe({.name = "a"}, writing(diary, "own"));
    const auto foreign = other.observe({.name = "a"}, writing(diary, "foreign"));
    const auto direct = center->addObserver({.name = "a"}, writing(diary, "direct"));

    observer.unobserve(foreign);
    observer.unobserve(direct); // the center would know this one
    observer.unobserve(nullptr);
    center->post("a");

    EXPECT_THAT(diary, ElementsAre("own a", "foreign a", "direct a"));
}

TEST(NotificationObserver, IgnoresATokenThatItRemovedBefore)
{
    auto diary = Diary();
    const auto center = makeCenter();
    auto observer = NotificationObserver(center);
    const auto token = observer.observe({.name = "a"}, writing(diary, "removed"));
    observer.observe({.name = "a"}, writing(diary, "kept"));

    observer.unobserve(token);
    observer.unobserve(token);
    center->post("a");

    EXPECT_THAT(diary, ElementsAre("kept a"));
}

TEST(NotificationObserver, StopsAllCallbacksWhenItIsReleased)
{
    auto diary = Diary();
    const auto center = makeCenter();
    auto observer = std::make_shared<NotificationObserver>(center);
    const auto token = observer->observe({.name = "a"}, writing(diary, "a:"));
    observer->observe({}, writing(diary, "all:"));
    auto second = observer;

    observer.reset();
    center->post("a"); // one reference is left
    second.reset();
    center->post("a");

    EXPECT_THAT(diary, ElementsAre("a: a", "all: a"));
    EXPECT_EQ(center->observerCount(), 0U);
}

TEST(NotificationObserver, ReceivesEverythingWithoutANameAndASender)
{
    auto diary = Diary();
    const auto center = makeCenter();
    auto observer = NotificationObserver(center);
    observer.observe({}, writing(diary, "all:"));

    center->post("a");
    center->post("b", std::make_shared<int>());
    makeCenter()->post("c"); // not this center

    EXPECT_THAT(diary, ElementsAre("all: a", "all: b"));
}

TEST(NotificationObserver, SelectsBySender)
{
    auto diary = Diary();
    const auto center = makeCenter();
    auto observer = NotificationObserver(center);
    const auto sender = std::make_shared<int>();
    observer.observe({.name = "a", .object = sender}, writing(diary, "sender:"));

    center->post("a", sender);
    center->post("a", std::make_shared<int>());
    center->post("a");

    EXPECT_THAT(diary, ElementsAre("sender: a"));
}

TEST(NotificationObserver, PassesTheWholeNotification)
{
    auto received = std::optional<Notification>();
    const auto center = makeCenter();
    auto observer = NotificationObserver(center);
    const auto sender = std::make_shared<int>(4);
    observer.observe({}, [&](const Notification& notification) { received = notification; });

    center->post("a", sender, {{"k", 1}});

    EXPECT_EQ(received, Notification("a", sender, {{"k", 1}}));
}

TEST(NotificationObserver, CallsOnTheGivenQueue)
{
    auto wasOnQueue = false;
    const auto center = makeCenter();
    auto observer = NotificationObserver(center);
    const auto queue = OperationQueue();
    observer.observe(
        {.name = "a", .queue = queue}, [&](const Notification&) { wasOnQueue = queue.isCurrent(); });

    center->post("a");

    EXPECT_TRUE(wasOnQueue);
}

TEST(NotificationObserver, CanRegisterAgainAfterUnobserveAll)
{
    auto diary = Diary();
    const auto center = makeCenter();
    auto observer = NotificationObserver(center);
    observer.observe({.name = "a"}, writing(diary, "old"));
    observer.observe({.name = "a"}, writing(diary, "older"));

    observer.unobserveAll();
    center->post("a");
    observer.unobserveAll(); // nothing is left to remove
    observer.observe({.name = "a"}, writing(diary, "new"));
    center->post("a");

    EXPECT_THAT(diary, ElementsAre("new a"));
}

TEST(NotificationObserver, RemovesInTheOrderOfRegistration)
{
    auto diary = Diary();
    auto observer = NotificationObserver(makeCenter());
    const auto farewell = [&](std::string text) {
        return Ref<int>(new int(), [&diary, text](int* content) {
            delete content;
            diary.push_back(text);
        });
    };
    for (const auto* const name : {"first", "second", "third"})
        observer.observe({.name = name}, [part = farewell(name)](const Notification&) {});

    observer.unobserveAll();

    EXPECT_THAT(diary, ElementsAre("first", "second", "third"));
}

TEST(NotificationObserver, AlsoRemovesWhatIsRegisteredWhileItRemoves)
{
    auto diary = Diary();
    const auto center = makeCenter();
    auto observer = NotificationObserver(center);
    auto registering = Ref<int>(new int(), [&](int* content) {
        delete content;
        observer.observe({.name = "a"}, writing(diary, "late"));
    });
    observer.observe({}, [registering](const Notification&) {});
    registering.reset();

    observer.unobserveAll();
    center->post("a");

    EXPECT_THAT(diary, IsEmpty());
    EXPECT_EQ(center->observerCount(), 0U);
}

TEST(NotificationObserver, LetsACallbackUnobserveItself)
{
    auto calls = 0;
    const auto center = makeCenter();
    auto observer = NotificationObserver(center);
    auto token = Ref<NotificationToken>();
    token = observer.observe({.name = "a"}, [&](const Notification&) {
        ++calls;
        observer.unobserve(token);
    });

    center->post("a");
    center->post("a");

    EXPECT_EQ(calls, 1);
}

TEST(NotificationObserver, MayBeReleasedInItsOwnCallback)
{
    auto diary = Diary();
    const auto center = makeCenter();
    auto observer = std::make_shared<NotificationObserver>(center);
    observer->observe({.name = "a"}, [&](const Notification&) {
        observer.reset();
        diary.push_back("released");
    });
    observer->observe({.name = "a"}, writing(diary, "never"));

    center->post("a");

    EXPECT_THAT(diary, ElementsAre("released"));
}

TEST(NotificationObserver, KeepsItsCenterAndNoSender)
{
    auto center = makeCenter();
    const auto weakCenter = WeakRef<NotificationCenter>(center);
    auto sender = std::make_shared<int>();
    const auto weakSender = WeakRef<int>(sender);
    {
        auto observer = NotificationObserver(center);
        observer.observe({.object = sender}, [](const Notification&) {});
        center.reset();
        sender.reset();

        EXPECT_EQ(observer.notificationCenter(), weakCenter.lock());
        EXPECT_FALSE(weakCenter.expired());
        EXPECT_TRUE(weakSender.expired());
    }

    EXPECT_TRUE(weakCenter.expired());
}

TEST(NotificationObserver, NeedsACenter)
{
    EXPECT_DEATH(
        NotificationObserver(nullptr), "Empty reference in place of a notification center: file Utilities");
}

} // namespace
