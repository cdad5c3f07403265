#include "Orrenby/Platform/Observing/ObservableObject.hpp"

#include "Tests/Platform/Observing/ObservingParts.hpp"
#include <cstddef>
#include <gmock/gmock.h>
#include <memory>

using namespace orrenby;
using namespace orrenby::tests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

int liveBlocks = 0;

template <typename T> struct CountingAllocator {
    using value_type = T;
    CountingAllocator() = default;
    template <typename U> CountingAllocator(const CountingAllocator<U>&) noexcept {}
    T* allocate(std::size_t count)
    {
        ++liveBlocks;
        return std::allocator<T>().allocate(count);
    }
    void deallocate(T* block, std::size_t count) noexcept
    {
        --liveBlocks;
        std::allocator<T>().deallocate(block, count);
    }
    friend bool operator==(const CountingAllocator&, const CountingAllocator&) = default;
};

} // namespace

TEST(ObservingReentrancy, TellsAnInnerChangeBeforeTheRestOfTheOuterOne)
{
    Person person;
    std::vector<std::string> order;
    const auto limiter = makeRecorder([&](const KeyValueChange& change) {
        order.push_back("limiter " + change.newValue->description());
        if (person.age > 100)
            person.age = 100;
    });
    const auto watcher = makeRecorder(
        [&](const KeyValueChange& change) { order.push_back("watcher " + change.newValue->description()); });
    person.addObserver(limiter, "age", oldAndNew);
    person.addObserver(watcher, "age", oldAndNew);

    person.age = 150;

    EXPECT_THAT(order, ElementsAre("limiter 150", "limiter 100", "watcher 100", "watcher 100"));
    EXPECT_THAT(watcher->told, ElementsAre("age: 150 -> 100", "age: 18 -> 100"));
}

TEST(ObservingReentrancy, DoesNotCallWhoWasRemovedDuringTheSameChange)
{
    Person person;
    const auto second = makeRecorder();
    const auto first = makeRecorder([&](auto&) { person.removeObserver(*second, "age"); });
    person.addObserver(first, "age");
    person.addObserver(second, "age");

    person.age = 19;

    EXPECT_EQ(first->told.size(), 1u);
    EXPECT_THAT(second->told, IsEmpty());
}

TEST(ObservingReentrancy, DoesNotCallWhoRegistersDuringTheSameChange)
{
    Person person;
    const auto late = makeRecorder();
    const auto first = makeRecorder([&](auto&) { person.addObserver(late, "age", oldAndNew); });
    person.addObserver(first, "age");

    person.age = 19;
    person.removeObserver(*first, "age");
    person.age = 20;

    EXPECT_THAT(late->told, ElementsAre("age: 19 -> 20"));
}

TEST(ObservingReentrancy, AnObserverRemovesItself)
{
    Person person;
    Ref<Recorder> recorder;
    recorder = makeRecorder([&](auto&) { person.removeObserver(*recorder, "age"); });
    person.addObserver(recorder, "age");

    person.age = 19;
    person.age = 20;

    EXPECT_EQ(recorder->told.size(), 1u);
    EXPECT_EQ(person.observerCount(), 0u);
}

TEST(ObservingReentrancy, DoesNotCallAnObserverThatDiedDuringTheSameChange)
{
    Person person;
    bool wasCalled = false;
    auto second = makeRecorder([&](auto&) { wasCalled = true; });
    const auto first = makeRecorder([&](auto&) { second.reset(); });
    person.addObserver(first, "age");
    person.addObserver(second, "age");

    person.age = 19;

    EXPECT_FALSE(wasCalled);
    EXPECT_EQ(person.observerCount(), 1u);
}

TEST(ObservingReentrancy, AnObserverMayDropTheLastReferenceToItself)
{
    Person person;
    int calls = 0;
    Ref<Recorder> recorder;
    recorder = makeRecorder([&](auto&) {
        ++calls;
        recorder.reset();
    });
    person.addObserver(recorder, "age");

    person.age = 19;
    person.age = 20;

    EXPECT_EQ(calls, 1);
    EXPECT_EQ(person.observerCount(), 0u);
}

TEST(ObservingReentrancy, AnObserverMayEndTheObject)
{
    auto person = std::make_unique<Person>();
    const auto first = makeRecorder([&](auto&) { person.reset(); });
    const auto second = makeRecorder();
    person->addObserver(first, "age");
    person->addObserver(second, "age", oldAndNew);

    person->age = 19;

    EXPECT_EQ(person, nullptr);
    EXPECT_EQ(first->told.size(), 1u);
    EXPECT_THAT(second->told, IsEmpty());
}

TEST(ObservingReentrancy, AnObserverMayEndTheObjectBeforeTheChange)
{
    auto person = std::make_unique<Person>();
    const auto first = makeRecorder([&](auto&) { person.reset(); });
    const auto second = makeRecorder();
    person->addObserver(first, "name", {.prior = true});
    person->addObserver(second, "name", oldAndNew);

    person->name = "a name that is too long to be kept in place";

    EXPECT_EQ(first->told.size(), 1u);
    EXPECT_THAT(second->told, IsEmpty());
}

TEST(ObservingReentrancy, ManyObserversNeedNoSpecialCare)
{
    Person person;
    std::vector<Ref<Recorder>> recorders;
    for (int index = 0; index < 20; ++index) {
        recorders.push_back(makeRecorder());
        person.addObserver(recorders.back(), "age", oldAndNew);
    }

    person.age = 19;

    for (const auto& recorder : recorders)
        EXPECT_THAT(recorder->told, ElementsAre("age: 18 -> 19"));
}

TEST(ObservingLifetime, RegistrationsEndWithTheirObserver)
{
    Person person;
    auto recorder = makeRecorder();
    person.addObserver(recorder, "age");
    person.addObserver(recorder, "address.city");

    recorder.reset();

    EXPECT_EQ(person.observerCount(), 0u);
    person.age = 19;
}

TEST(ObservingLifetime, ObserversThatAreGoneDoNotPileUp)
{
    Person person;

    for (int round = 0; round < 100; ++round)
        person.addObserver(std::allocate_shared<Recorder>(CountingAllocator<Recorder>()), "age");

    // A registration keeps its observer's block, though not the observer.
    EXPECT_EQ(person.observerCount(), 0u);
    EXPECT_LT(liveBlocks, 10);
}

TEST(ObservingLifetime, TheObjectMayGoFirst)
{
    auto person = std::make_unique<Person>();
    const auto address = std::make_shared<Address>();
    const auto recorder = makeRecorder();
    person->address = address;
    person->addObserver(recorder, "address.city", oldAndNew);

    person.reset();
    address->city = "Oslo";

    EXPECT_THAT(recorder->told, IsEmpty());
    EXPECT_EQ(address->observerCount(), 0u);
    EXPECT_EQ(recorder.use_count(), 1);
}
