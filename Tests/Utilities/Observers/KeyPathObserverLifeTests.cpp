#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"

#include "Tests/Utilities/Observers/KeyPathObserverParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <utility>

using namespace orrenby;
using orrenby::testing::addTo;
using orrenby::testing::ObservedPerson;
using orrenby::testing::Person;
using orrenby::testing::Seen;
using ::testing::IsEmpty;

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
    const auto [person, observer] = ObservedPerson();
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

TEST(KeyPathObserverDeathTest, IsNotMadeWithoutAnObject)
{
    EXPECT_DEATH((void)make<KeyPathObserver<Person>>(),
        "Fatal error: Use of unimplemented initializer 'init\\(\\)' for class 'Orrenby.KeyPathObserver': "
        "file Utilities/KeyPathObserver");
    EXPECT_DEATH((void)make<KeyPathObserver<Person>>(Ref<Person>()),
        "Fatal error: A key-path observer needs an object to observe: file Utilities/KeyPathObserver");
}

TEST(KeyPathObserverDeathTest, ObservesOnlyWhileAReferenceHoldsIt)
{
    const auto person = std::make_shared<Person>();
    Object<KeyPathObserver<Person>> observer(person);

    EXPECT_DEATH(observer.observe(keyPath<&Person::age>(), [](const auto&) {}),
        "Fatal error: A key-path observer observes only while a Ref holds it: file Utilities/KeyPathObserver");
}
