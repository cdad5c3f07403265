#include "Orrenby/Platform/Observing/ObservableObject.hpp"

#include "Tests/Platform/Observing/ObservingParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A chain of three objects: "friend.address.city".
class Chain {
public:
    Chain()
    {
        middle->address = last;
        root.friend_ = middle;
    }

    Person root;
    Ref<Person> middle = std::make_shared<Person>();
    Ref<Address> last = std::make_shared<Address>("Rome");
};

constexpr std::string_view path = "friend.address.city";

} // namespace

TEST(ObservingPath, FindsTheValueAtItsEnd)
{
    const Chain chain;

    EXPECT_EQ(chain.root.valueForKeyPath(path), Any("Rome"));
    EXPECT_EQ(chain.root.valueForKeyPath("friend.age"), Any(18));
    EXPECT_EQ(chain.root.valueForKeyPath("age"), Any(18));
}

TEST(ObservingPath, GivesNothingWhereItDoesNotLead)
{
    const Chain chain;

    EXPECT_EQ(chain.root.valueForKeyPath("address.city"), std::nullopt);
    EXPECT_EQ(chain.root.valueForKeyPath("friend.height"), std::nullopt);
    EXPECT_EQ(chain.root.valueForKeyPath("height.city"), std::nullopt);
    EXPECT_EQ(chain.root.valueForKeyPath("age.city"), std::nullopt);
}

TEST(ObservingPath, GivesNothingWhenItIsMalformed)
{
    const Chain chain;

    for (const auto* malformed : {"", ".", ".age", "age.", "friend..age", "friend.age."})
        EXPECT_EQ(chain.root.valueForKeyPath(malformed), std::nullopt) << malformed;
}

TEST(ObservingPath, TellsOfAChangeAtItsEnd)
{
    Chain chain;
    const auto recorder = makeRecorder();
    chain.root.addObserver(recorder, path, oldAndNew);

    chain.last->city = "Oslo";

    EXPECT_THAT(recorder->told, ElementsAre("friend.address.city: \"Rome\" -> \"Oslo\""));
    EXPECT_THAT(recorder->objects, ElementsAre(&chain.root));
}

TEST(ObservingPath, TellsTheValueAtItsEndWhenAnObjectAlongItIsReplaced)
{
    Chain chain;
    const auto recorder = makeRecorder();
    chain.root.addObserver(recorder, path, oldAndNew);

    chain.middle->address = std::make_shared<Address>("Oslo");
    chain.root.friend_ = std::make_shared<Person>();

    EXPECT_THAT(recorder->told,
        ElementsAre("friend.address.city: \"Rome\" -> \"Oslo\"", "friend.address.city: \"Oslo\" -> none"));
}

TEST(ObservingPath, FollowsTheNewObjectsAndLeavesTheOldOnes)
{
    Chain chain;
    const auto recorder = makeRecorder();
    chain.root.addObserver(recorder, path, oldAndNew);
    const auto newMiddle = std::make_shared<Person>();
    newMiddle->address = std::make_shared<Address>("Bonn");

    chain.root.friend_ = newMiddle;
    chain.last->city = "Oslo";
    chain.middle->address = nullptr;
    newMiddle->address.get()->city = "Wien";

    EXPECT_THAT(recorder->told,
        ElementsAre(
            "friend.address.city: \"Rome\" -> \"Bonn\"", "friend.address.city: \"Bonn\" -> \"Wien\""));
    EXPECT_EQ(chain.middle->observerCount(), 0u);
    EXPECT_EQ(chain.last->observerCount(), 0u);
}

TEST(ObservingPath, BeginsWhereItIsInterruptedAndContinuesWhenItIsClosed)
{
    Chain chain;
    chain.middle->address = nullptr;
    const auto recorder = makeRecorder();
    chain.root.addObserver(recorder, path, {.new_ = true, .old = true, .initial = true});

    chain.middle->address = chain.last;
    chain.last->city = "Oslo";

    EXPECT_THAT(recorder->told,
        ElementsAre("friend.address.city: none -> none", "friend.address.city: none -> \"Rome\"",
            "friend.address.city: \"Rome\" -> \"Oslo\""));
}

TEST(ObservingPath, TellsBeforeAndAfterAReplacement)
{
    Chain chain;
    const auto recorder = makeRecorder();
    chain.root.addObserver(recorder, path, {.new_ = true, .old = true, .prior = true});

    chain.root.friend_ = nullptr;

    EXPECT_THAT(recorder->told,
        ElementsAre("friend.address.city: \"Rome\" ->", "friend.address.city: \"Rome\" -> none"));
}

TEST(ObservingPath, LeavesAllObjectsWhenItIsRemoved)
{
    Chain chain;
    const auto recorder = makeRecorder();
    chain.root.addObserver(recorder, path, oldAndNew);

    chain.root.removeObserver(*recorder, path);
    chain.last->city = "Oslo";

    EXPECT_THAT(recorder->told, IsEmpty());
    EXPECT_EQ(chain.root.observerCount() + chain.middle->observerCount() + chain.last->observerCount(), 0u);
}

TEST(ObservingPath, TellsOnceWhenItLeadsThroughAnObjectTwice)
{
    const auto person = std::make_shared<Person>();
    person->friend_ = person;
    const auto recorder = makeRecorder();
    person->addObserver(recorder, "friend.friend.name", oldAndNew);

    person->name = "Eva";
    person->friend_ = nullptr;

    EXPECT_THAT(recorder->told,
        ElementsAre("friend.friend.name: \"Ada\" -> \"Eva\"", "friend.friend.name: \"Eva\" -> none"));
    EXPECT_EQ(person->observerCount(), 1u);
}

TEST(ObservingPath, ServesSeveralRootsThroughOneObject)
{
    const auto address = std::make_shared<Address>();
    Person first;
    Person second;
    first.address = address;
    second.address = address;
    const auto recorder = makeRecorder();
    first.addObserver(recorder, "address.city", oldAndNew);
    second.addObserver(recorder, "address.city", oldAndNew);

    address->city = "Oslo";

    EXPECT_THAT(recorder->objects, ElementsAre(&first, &second));
    EXPECT_EQ(address->observerCount(), 2u);
}

TEST(ObservingPath, LeadsThroughAComputedObject)
{
    class Household : public ObservableObject {
    public:
        Property<Ref<Person>, "owner"> owner{*this};
        Computed<Ref<Address>, "home"> home{
            *this, [this] { return owner.get() ? owner.get()->address.get() : nullptr; }, {"owner"}};
    };
    Household household;
    const auto recorder = makeRecorder();
    household.addObserver(recorder, "home.city", oldAndNew);
    const auto owner = std::make_shared<Person>();
    owner->address = std::make_shared<Address>();

    household.owner = owner;
    owner->address.get()->city = "Oslo";

    EXPECT_THAT(
        recorder->told, ElementsAre("home.city: none -> \"Rome\"", "home.city: \"Rome\" -> \"Oslo\""));
}

TEST(ObservingPath, LeadsThroughAnOptionalReference)
{
    class House : public ObservableObject {
    public:
        Property<std::optional<Ref<Address>>, "address"> address{*this};
    };
    House house;
    const std::optional<Ref<Address>> nowhere;
    const auto recorder = makeRecorder();
    house.addObserver(recorder, "address.city", oldAndNew);

    house.address = std::make_shared<Address>();
    house.address.get().value()->city = "Oslo";
    house.address = nowhere;

    EXPECT_THAT(recorder->told,
        ElementsAre("address.city: none -> \"Rome\"", "address.city: \"Rome\" -> \"Oslo\"",
            "address.city: \"Oslo\" -> none"));
}

TEST(ObservingPath, AnObserverMayReplaceAnObjectAlongIt)
{
    Chain chain;
    const auto replacement = std::make_shared<Address>("Bonn");
    const auto replacer = makeRecorder([&](const KeyValueChange& change) {
        if (change.newValue == Any("Oslo"))
            chain.middle->address = replacement;
    });
    const auto watcher = makeRecorder();
    chain.root.addObserver(replacer, path, oldAndNew);
    chain.root.addObserver(watcher, path, oldAndNew);

    chain.last->city = "Oslo";
    replacement->city = "Wien";

    // The watcher learns of the replacement first; what happened to the object that is no longer on the path
    // does not concern it any more.
    EXPECT_THAT(watcher->told,
        ElementsAre(
            "friend.address.city: \"Oslo\" -> \"Bonn\"", "friend.address.city: \"Bonn\" -> \"Wien\""));
    EXPECT_EQ(chain.last->observerCount(), 0u);
}

TEST(ObservingPath, AnObserverMayRemoveItselfWhenAnObjectIsReplaced)
{
    Chain chain;
    Ref<Recorder> recorder;
    recorder = makeRecorder([&](auto&) { chain.root.removeObserver(*recorder, path); });
    chain.root.addObserver(recorder, path, oldAndNew);

    chain.root.friend_ = std::make_shared<Person>();
    chain.root.friend_ = chain.middle;

    EXPECT_EQ(recorder->told.size(), 1u);
    EXPECT_EQ(chain.middle->observerCount(), 0u);
}

TEST(ObservingPath, ObserversOfPathsThatAreGoneLeaveTheObjectsAlongThem)
{
    Chain chain;
    auto recorder = makeRecorder();
    chain.root.addObserver(recorder, path, oldAndNew);

    recorder.reset();
    chain.last->city = "Oslo";

    EXPECT_EQ(chain.root.observerCount() + chain.middle->observerCount() + chain.last->observerCount(), 0u);
}
