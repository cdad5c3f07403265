#include "Orrenby/Platform/Observing/NotificationCenter.hpp"

#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Tests/Platform/Observing/NotificationCenterParts.hpp"
#include <atomic>
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::writing;
using ::testing::ElementsAre;

TEST(NotificationCenter, DeliversWhatIsPosted)
{
    auto lines = Diary();
    const auto draft = std::make_shared<std::string>("draft");

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
namespace {

std::vector<std::string>& reports()
{
    static auto reports = std::vector<std::string>();
    return reports;
}

} // namespace

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
