#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"

#include "Tests/Utilities/Observers/KeyPathObserverParts.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace orrenby;
using orrenby::testing::addTo;
using orrenby::testing::change;
using orrenby::testing::initial;
using orrenby::testing::ObservedPerson;
using orrenby::testing::Person;
using orrenby::testing::Seen;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
    const auto [person, observer] = ObservedPerson();
    Seen<int> seen;

    observer->observe(keyPath<&Person::age>(), addTo(seen));

    ASSERT_EQ(seen.size(), 1u);
    EXPECT_TRUE(seen[0].isInitial());
    EXPECT_EQ(seen[0].value(), 5);
    EXPECT_EQ(seen[0].oldValue(), 5);
}

TEST(KeyPathObserver, DeliversOnlyRealChanges)
{
    const auto [person, observer] = ObservedPerson();
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen));

    person->age = 5;
    person->age = 6;

    EXPECT_THAT(seen, ElementsAre(initial(5), change(5, 6)));
}

TEST(KeyPathObserver, DoesNotObserveAPathWithoutACodingString)
{
    const auto [person, observer] = ObservedPerson();
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
    const auto [person, observer] = ObservedPerson();
    Seen<int> seen;
    observer->observe(keyPath<&Person::identifier>(), addTo(seen));

    person->identifier = 2;

    EXPECT_THAT(seen, ElementsAre(initial(1), change(1, 2)));
}

TEST(KeyPathObserver, IgnoresCallsWithoutValuesOrWithAnotherPath)
{
    const auto [person, observer] = ObservedPerson();
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen));
    seen.clear();

    observer->observeValue("age", *person, {});
    observer->observeValue("", *person, {.newValue = 2, .oldValue = 1});
    observer->observeValue("rank", *person, {.newValue = 2, .oldValue = 1});

    EXPECT_THAT(seen, IsEmpty());
}

TEST(KeyPathObserver, RunsHandlersOnTheThreadOfTheChange)
{
    const auto [person, observer] = ObservedPerson();
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
    const auto [person, observer] = ObservedPerson();
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
