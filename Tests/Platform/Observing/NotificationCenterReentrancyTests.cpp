#include "Orrenby/Platform/Observing/NotificationCenter.hpp"

#include "Tests/Platform/Observing/NotificationCenterParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::writing;
using ::testing::ElementsAre;

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
