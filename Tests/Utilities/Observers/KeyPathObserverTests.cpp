#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"

#include "Orrenby/Platform/Observing/Computed.hpp"
#include "Orrenby/Platform/Observing/Property.hpp"
#include <array>
#include <functional>
#include <gmock/gmock.h>
#include <thread>
#include <utility>
#include <vector>

using namespace orrenby;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

enum class Mood { Calm = 1, Cross = 2 };
enum class Compass { North, South };

class Entity : public ObservableObject {
public:
    Property<int, "identifier"> identifier{*this, 1};
};

class Person : public Entity {
public:
    Property<int, "age"> age{*this, 5};
    Property<std::optional<int>, "rank"> rank{*this};
    Property<Mood, "mood"> mood{*this, Mood::Calm};
    Property<std::optional<Mood>, "formerMood"> formerMood{*this};
    Property<Compass, "compass"> compass{*this};
    Property<Ref<Person>, "friend"> friend_{*this};
    Computed<int, "double"> double_{*this, [this] { return age * 2; }, {"age"}};
    int plain = 0;
};

template <typename Value> using Seen = std::vector<KeyPathObservation<Value>>;

template <typename Value> auto addTo(Seen<Value>& seen)
{
    return [&seen](const KeyPathObservation<Value>& observation) { seen.push_back(observation); };
}

template <typename Value> auto initial(Value value) { return KeyPathObservation<Value>::initial(value); }
template <typename Value> auto change(Value oldValue, Value value)
{
    return KeyPathObservation<Value>::change({.value = value, .oldValue = oldValue});
}

} // namespace

template <> inline constexpr auto orrenby::allCases<Mood> = std::array{Mood::Calm, Mood::Cross};

template <> struct orrenby::RawRepresentation<Compass> {
    using RawValue = std::string;
    static std::string rawValue(Compass value) { return value == Compass::North ? "N" : "S"; }
    static std::optional<Compass> make(const std::string& raw)
    {
        return raw == "N" ? std::optional(Compass::North) : std::optional(Compass::South);
    }
};

TEST(KeyPathObserver, TellsTheInitialValueAndThenEachChange)
{
    //! [Observing values by key path]
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    std::vector<std::string> lines;

    observer
        ->observe(keyPath<&Person::age>(),
            [&](const KeyPathObserver<Person>::Observation<int>& age) {
                lines.push_back(age.isInitial() ? "aged " + std::to_string(age.value())
                                                : "grew by " + std::to_string(age.value() - age.oldValue()));
            })
        ->observe(optionalKeyPath<&Person::friend_, &Person::age>(),
            [&](const auto& age) { lines.push_back(age.value() ? "has a friend" : "has no friend"); });
    person->age = 7;
    person->friend_ = std::make_shared<Person>();

    EXPECT_THAT(lines, ElementsAre("aged 5", "has no friend", "grew by 2", "has a friend"));
    //! [Observing values by key path]
}

TEST(KeyPathObserver, CallsTheHandlerOnceWithTheCurrentValueBeforeReturning)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;

    observer->observe(keyPath<&Person::age>(), addTo(seen));

    ASSERT_EQ(seen.size(), 1u);
    EXPECT_TRUE(seen[0].isInitial());
    EXPECT_EQ(seen[0].value(), 5);
    EXPECT_EQ(seen[0].oldValue(), 5);
}

TEST(KeyPathObserver, DeliversOnlyRealChanges)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen));

    person->age = 5;
    person->age = 6;

    EXPECT_THAT(seen, ElementsAre(initial(5), change(5, 6)));
}

TEST(KeyPathObserver, DeliversAnEmptyOptionalOnlyWhenItChanges)
{
    using Value = std::optional<int>;
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<Value> seen;
    observer->observe(keyPath<&Person::rank>(), addTo(seen));

    person->rank = std::nullopt;
    person->rank = 3;
    person->rank = 3;
    person->rank = std::nullopt;

    EXPECT_THAT(seen, ElementsAre(initial(Value()), change(Value(), Value(3)), change(Value(3), Value())));
}

TEST(KeyPathObserver, DeliversCasesOfAnEnumeration)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<Mood> seen;
    observer->observe(keyPath<&Person::mood>(), addTo(seen));

    person->mood = Mood::Calm;
    person->mood = Mood::Cross;

    EXPECT_THAT(seen, ElementsAre(initial(Mood::Calm), change(Mood::Calm, Mood::Cross)));
}

TEST(KeyPathObserver, DeliversNothingForARawValueThatIsNoCase)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<Mood> seen;
    person->mood = static_cast<Mood>(7);
    observer->observe(keyPath<&Person::mood>(), addTo(seen));

    person->mood = Mood::Cross;
    person->mood = static_cast<Mood>(8);
    person->mood = Mood::Calm;

    EXPECT_THAT(seen, IsEmpty());
}

TEST(KeyPathObserver, DeliversAnEmptyValueForARawValueThatIsNoCaseWhereItIsOptional)
{
    using Value = std::optional<Mood>;
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<Value> seen;
    observer->observe(keyPath<&Person::formerMood>(), addTo(seen));

    person->formerMood = static_cast<Mood>(7);
    person->formerMood = Mood::Cross;
    person->formerMood = static_cast<Mood>(8);

    EXPECT_THAT(seen,
        ElementsAre(
            initial(Value()), change(Value(), Value(Mood::Cross)), change(Value(Mood::Cross), Value())));
}

TEST(KeyPathObserver, DeliversValuesThatStandForTexts)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<Compass> seen;
    observer->observe(keyPath<&Person::compass>(), addTo(seen));

    person->compass = Compass::South;

    EXPECT_THAT(seen, ElementsAre(initial(Compass::North), change(Compass::North, Compass::South)));
}

TEST(KeyPathObserver, DeliversReferencesComparedByObject)
{
    using Value = Ref<Person>;
    const auto person = std::make_shared<Person>();
    const auto other = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<Value> seen;
    observer->observe(keyPath<&Person::friend_>(), addTo(seen));

    person->friend_ = other;
    person->friend_ = other;
    person->friend_ = nullptr;

    EXPECT_THAT(seen, ElementsAre(initial(Value()), change(Value(), other), change(other, Value())));
}

TEST(KeyPathObserver, DeliversComputedValuesWithTheirDependencies)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::double_>(), addTo(seen));

    person->age = 6;

    EXPECT_THAT(seen, ElementsAre(initial(10), change(10, 12)));
}

TEST(KeyPathObserver, DeliversValuesAlongAPathWhileItLeadsThere)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::friend_, &Person::age>(), addTo(seen));
    const auto other = std::make_shared<Person>();
    other->age = 8;

    person->friend_ = std::make_shared<Person>();
    person->friend_ = other;
    other->age = 9;
    person->friend_ = nullptr;

    EXPECT_THAT(seen, ElementsAre(change(5, 8), change(8, 9)));
}

TEST(KeyPathObserver, DeliversNothingForValuesOfAnotherType)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    Seen<std::optional<int>> seenOptional;
    observer->observe(keyPath<&Person::age>(), addTo(seen));
    observer->observe(keyPath<&Person::rank>(), addTo(seenOptional));
    seen.clear();
    seenOptional.clear();

    observer->observeValue("age", *person, {.newValue = "text", .oldValue = 1});
    observer->observeValue("age", *person, {.newValue = 2, .oldValue = "text"});
    observer->observeValue("rank", *person, {.newValue = "text", .oldValue = 1});

    EXPECT_THAT(seen, IsEmpty());
    EXPECT_THAT(seenOptional, ElementsAre(change(std::optional(1), std::optional<int>())));
}

TEST(KeyPathObserver, IgnoresCallsWithoutValuesOrWithAnotherPath)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen));
    seen.clear();

    observer->observeValue("age", *person, {});
    observer->observeValue("", *person, {.newValue = 2, .oldValue = 1});
    observer->observeValue("rank", *person, {.newValue = 2, .oldValue = 1});

    EXPECT_THAT(seen, IsEmpty());
}

TEST(KeyPathObserver, DoesNotObserveAPathWithoutACodingString)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;

    const auto same = observer->observe(keyPath<&Person::plain>(), addTo(seen))
                          ->observe(keyPath(&Person::age), addTo(seen))
                          ->observe(keyPath<Person>([](const Person& subject) { return subject.plain; }),
                              addTo(seen));
    person->age = 6;
    observer->unobserve(keyPath<&Person::plain>());

    EXPECT_EQ(same, observer);
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_EQ(person->observerCount(), 0u);
}

TEST(KeyPathObserver, ObservesPathsThatStartAtABaseClass)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::identifier>(), addTo(seen));

    person->identifier = 2;

    EXPECT_THAT(seen, ElementsAre(initial(1), change(1, 2)));
}

TEST(KeyPathObserver, ReplacesTheHandlerOfAPathYetRunsItPerRegistration)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> first;
    Seen<int> second;
    observer->observe(keyPath<&Person::age>(), addTo(first));
    observer->observe(keyPath<&Person::age>(), addTo(second));

    person->age = 6;

    EXPECT_THAT(first, ElementsAre(initial(5)));
    EXPECT_THAT(second, ElementsAre(initial(5), change(5, 6), change(5, 6)));
    EXPECT_EQ(person->observerCount(), 2u);
}

TEST(KeyPathObserver, UnobservesOneOfTwoRegistrations)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen));
    observer->observe(keyPath<&Person::age>(), addTo(seen));
    seen.clear();

    observer->unobserve(keyPath<&Person::age>());
    person->age = 6;
    const auto countAfterUnobserving = person->observerCount();
    observer->observe(keyPath<&Person::age>(), addTo(seen));
    person->age = 7;

    EXPECT_EQ(countAfterUnobserving, 1u);
    EXPECT_THAT(seen, ElementsAre(initial(6), change(6, 7), change(6, 7)));
}

TEST(KeyPathObserver, DeliversNothingAfterUnobserving)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen));

    observer->unobserve(keyPath<&Person::age>());
    person->age = 6;

    EXPECT_THAT(seen, ElementsAre(initial(5)));
    EXPECT_EQ(person->observerCount(), 0u);
}

TEST(KeyPathObserver, IgnoresTheEndOfWhatWasNeverObserved)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen));

    observer->unobserve(keyPath<&Person::rank>());
    person->age = 6;

    EXPECT_EQ(seen.size(), 2u);
}

TEST(KeyPathObserver, UnobservesAllAndMayObserveAgain)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen))
        ->observe(keyPath<&Person::double_>(), addTo(seen));
    seen.clear();

    observer->unobserveAll();
    observer->unobserveAll();
    person->age = 6;
    const auto countAfterUnobserving = person->observerCount();
    observer->observe(keyPath<&Person::age>(), addTo(seen));
    person->age = 7;

    EXPECT_EQ(countAfterUnobserving, 0u);
    EXPECT_THAT(seen, ElementsAre(initial(6), change(6, 7)));
}

TEST(KeyPathObserver, LeavesNoRegistrationBehindWhenItIsReleased)
{
    const auto person = std::make_shared<Person>();
    const auto other = std::make_shared<Person>();
    person->friend_ = other;
    auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen))
        ->observe(keyPath<&Person::age>(), addTo(seen))
        ->observe(keyPath<&Person::friend_, &Person::age>(), addTo(seen));
    seen.clear();

    observer.reset();
    person->age = 6;
    other->age = 6;

    EXPECT_EQ(person->observerCount() + other->observerCount(), 0u);
    EXPECT_THAT(seen, IsEmpty());
}

TEST(KeyPathObserver, KeepsTheObjectAlive)
{
    auto person = std::make_shared<Person>();
    const std::weak_ptr<Person> weakPerson = person;
    auto observer = make<KeyPathObserver<Person>>(std::move(person));
    const bool wasAlive = !weakPerson.expired();

    EXPECT_EQ(observer->object(), weakPerson.lock());
    observer.reset();

    EXPECT_TRUE(wasAlive);
    EXPECT_TRUE(weakPerson.expired());
}

TEST(KeyPathObserver, IsNotKeptAliveByTheObject)
{
    const auto person = std::make_shared<Person>();
    auto observer = make<KeyPathObserver<Person>>(person);
    const std::weak_ptr<KeyPathObserver<Person>> weakObserver = observer;
    observer->observe(keyPath<&Person::age>(), [](const auto&) {});

    observer.reset();

    EXPECT_TRUE(weakObserver.expired());
}

TEST(KeyPathObserver, ReleasesTheHandlerWithTheObservation)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    const auto held = std::make_shared<int>();
    observer->observe(keyPath<&Person::age>(), [held](const auto&) {});
    const auto countWhileObserving = held.use_count();

    observer->unobserve(keyPath<&Person::age>());

    EXPECT_GT(countWhileObserving, 1);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(KeyPathObserver, MayBeReleasedByItsHandler)
{
    const auto person = std::make_shared<Person>();
    auto observer = make<KeyPathObserver<Person>>(person);
    int calls = 0;
    observer->observe(keyPath<&Person::age>(), [&](const auto& age) {
        ++calls;
        if (age.isChange())
            observer.reset();
    });

    person->age = 6;
    person->age = 7;

    EXPECT_EQ(calls, 2);
    EXPECT_EQ(person->observerCount(), 0u);
}

TEST(KeyPathObserver, MayReleaseTheObjectTogetherWithItself)
{
    auto person = std::make_shared<Person>();
    const std::weak_ptr<Person> weakPerson = person;
    auto observer = make<KeyPathObserver<Person>>(person);
    observer->observe(keyPath<&Person::age>(), [&](const auto& age) {
        if (age.isChange())
            observer.reset();
    });
    auto* const last = std::exchange(person, nullptr).get();

    last->age = 6;

    EXPECT_TRUE(weakPerson.expired());
}

TEST(KeyPathObserver, MayReplaceOrEndAHandlerFromWithinIt)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), [&](const auto& age) {
        if (!age.isChange())
            return;
        observer->unobserve(keyPath<&Person::age>());
        observer->observe(keyPath<&Person::age>(), addTo(seen));
    });

    person->age = 6;
    person->age = 7;

    EXPECT_THAT(seen, ElementsAre(initial(6), change(6, 7)));
}

TEST(KeyPathObserver, DeliversAChangeMadeByItsHandlerBeforeReturning)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), [&](const KeyPathObservation<int>& age) {
        seen.push_back(age);
        if (age.value() > 100)
            person->age = 100;
    });

    person->age = 150;

    EXPECT_THAT(seen, ElementsAre(initial(5), change(5, 150), change(150, 100)));
}

TEST(KeyPathObserver, RunsHandlersOnTheThreadOfTheChange)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    std::vector<std::thread::id> threads;
    observer->observe(
        keyPath<&Person::age>(), [&](const auto&) { threads.push_back(std::this_thread::get_id()); });
    std::thread other([&] { person->age = 6; });
    const auto otherThread = other.get_id();
    other.join();

    EXPECT_THAT(threads, ElementsAre(std::this_thread::get_id(), otherThread));
}

TEST(KeyPathObserver, TakesHandlersThatCannotBeCopied)
{
    const auto person = std::make_shared<Person>();
    const auto observer = make<KeyPathObserver<Person>>(person);
    int sum = 0;

    observer->observe(keyPath<&Person::age>(),
        [&sum, factor = std::make_unique<int>(2)](const auto& age) { sum += *factor * age.value(); });
    person->age = 6;

    EXPECT_EQ(sum, 22);
}

TEST(KeyPathObserver, ServesASubclass)
{
    class PersonObserver : public KeyPathObserver<Person> {
    public:
        using KeyPathObserver::KeyPathObserver;
        void start()
        {
            observe(keyPath<&Person::age>(), [this](const auto& value) { lastAge = value.value(); });
        }
        int lastAge = 0;
    };
    const auto person = std::make_shared<Person>();
    const auto observer = make<PersonObserver>(person);
    observer->start();

    person->age = 6;

    EXPECT_EQ(observer->lastAge, 6);
}

TEST(KeyPathObserverDeathTest, IsNotMadeWithoutAnObject)
{
    EXPECT_DEATH(make<KeyPathObserver<Person>>(),
        "Fatal error: Use of unimplemented initializer 'init\\(\\)' for class 'Orrenby.KeyPathObserver': "
        "file Utilities/KeyPathObserver");
    EXPECT_DEATH(make<KeyPathObserver<Person>>(Ref<Person>()),
        "Fatal error: A key-path observer needs an object to observe: file Utilities/KeyPathObserver");
}

TEST(KeyPathObserverDeathTest, ObservesOnlyWhileAReferenceHoldsIt)
{
    const auto person = std::make_shared<Person>();
    Object<KeyPathObserver<Person>> observer(person);

    EXPECT_DEATH(observer.observe(keyPath<&Person::age>(), [](const auto&) {}),
        "Fatal error: A key-path observer observes only while a Ref holds it: file Utilities/KeyPathObserver");
}
