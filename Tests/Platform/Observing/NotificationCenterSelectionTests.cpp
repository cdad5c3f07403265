#include "Orrenby/Platform/Observing/NotificationCenter.hpp"

#include "Tests/Platform/Observing/NotificationCenterParts.hpp"
#include <gmock/gmock.h>
#include <memory>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::writing;
using ::testing::ElementsAre;

namespace {

class Interface {
public:
    virtual ~Interface() = default;
};
class Other {
public:
    virtual ~Other() = default;
};
class Document : public Interface, public Other {};

} // namespace

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
