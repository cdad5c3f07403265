#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"

#include "Tests/Utilities/Observers/KeyPathObserverParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <optional>

using namespace orrenby;
using orrenby::testing::addTo;
using orrenby::testing::change;
using orrenby::testing::Compass;
using orrenby::testing::initial;
using orrenby::testing::Mood;
using orrenby::testing::ObservedPerson;
using orrenby::testing::Person;
using orrenby::testing::Seen;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(KeyPathObserver, DeliversAnEmptyOptionalOnlyWhenItChanges)
{
    using Value = std::optional<int>;
    const auto [person, observer] = ObservedPerson();
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
    const auto [person, observer] = ObservedPerson();
    Seen<Mood> seen;
    observer->observe(keyPath<&Person::mood>(), addTo(seen));

    person->mood = Mood::Calm;
    person->mood = Mood::Cross;

    EXPECT_THAT(seen, ElementsAre(initial(Mood::Calm), change(Mood::Calm, Mood::Cross)));
}

TEST(KeyPathObserver, DeliversNothingForARawValueThatIsNoCase)
{
    const auto [person, observer] = ObservedPerson();
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
    const auto [person, observer] = ObservedPerson();
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
    const auto [person, observer] = ObservedPerson();
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
    const auto [person, observer] = ObservedPerson();
    Seen<int> seen;
    observer->observe(keyPath<&Person::double_>(), addTo(seen));

    person->age = 6;

    EXPECT_THAT(seen, ElementsAre(initial(10), change(10, 12)));
}

TEST(KeyPathObserver, DeliversValuesAlongAPathWhileItLeadsThere)
{
    const auto [person, observer] = ObservedPerson();
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
    const auto [person, observer] = ObservedPerson();
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
