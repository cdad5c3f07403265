#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"

#include "Tests/Utilities/Observers/KeyPathObserverParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using orrenby::testing::addTo;
using orrenby::testing::change;
using orrenby::testing::initial;
using orrenby::testing::ObservedPerson;
using orrenby::testing::Person;
using orrenby::testing::Seen;
using ::testing::ElementsAre;

TEST(KeyPathObserver, ReplacesTheHandlerOfAPathYetRunsItPerRegistration)
{
    const auto [person, observer] = ObservedPerson();
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
    const auto [person, observer] = ObservedPerson();
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
    const auto [person, observer] = ObservedPerson();
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen));

    observer->unobserve(keyPath<&Person::age>());
    person->age = 6;

    EXPECT_THAT(seen, ElementsAre(initial(5)));
    EXPECT_EQ(person->observerCount(), 0u);
}

TEST(KeyPathObserver, IgnoresTheEndOfWhatWasNeverObserved)
{
    const auto [person, observer] = ObservedPerson();
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen));

    observer->unobserve(keyPath<&Person::rank>());
    person->age = 6;

    EXPECT_EQ(seen.size(), 2u);
}

TEST(KeyPathObserver, UnobservesAllAndMayObserveAgain)
{
    const auto [person, observer] = ObservedPerson();
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

TEST(KeyPathObserver, UnobservingAllTakesBackOneRegistrationOfAPathThatWasObservedTwice)
{
    auto [person, observer] = ObservedPerson();
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), addTo(seen));
    observer->observe(keyPath<&Person::age>(), addTo(seen));
    seen.clear();

    observer->unobserveAll();
    person->age = 6; // the registration that is left has no handler
    const auto countAfterUnobserving = person->observerCount();
    observer->observe(keyPath<&Person::age>(), addTo(seen));
    person->age = 7;
    observer.reset();
    person->age = 8;

    EXPECT_EQ(countAfterUnobserving, 1u);
    EXPECT_THAT(seen, ElementsAre(initial(6), change(6, 7), change(6, 7)));
    EXPECT_EQ(person->observerCount(), 0u);
}

TEST(KeyPathObserver, MayReplaceOrEndAHandlerFromWithinIt)
{
    const auto [person, observer] = ObservedPerson();
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
    const auto [person, observer] = ObservedPerson();
    Seen<int> seen;
    observer->observe(keyPath<&Person::age>(), [&](const KeyPathObservation<int>& age) {
        seen.push_back(age);
        if (age.value() > 100)
            person->age = 100;
    });

    person->age = 150;

    EXPECT_THAT(seen, ElementsAre(initial(5), change(5, 150), change(150, 100)));
}
