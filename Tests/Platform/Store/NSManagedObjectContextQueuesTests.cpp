#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"

#include "Tests/Platform/Store/StoreParts.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <future>
#include <gmock/gmock.h>
#include <thread>

using namespace orrenby;
using namespace orrenby::tests;
using testing::ElementsAre;

TEST(NSManagedObjectContext, PerformsWorkInOrderOnItsQueue)
{
    const auto context = peopleContext();
    context->perform([&] { insertPerson(context, "a"); });
    context->perform([&] { context->save(); });

    const auto names = context->performAndWait([&] {
        return context->performAndWait([&] { return namesOf(context->fetch<Person>(peopleByName())); });
    });

    EXPECT_THAT(names, ElementsAre("a"));
}

TEST(NSManagedObjectContext, PerformingAndWaitingLetsExceptionsPass)
{
    const auto context = peopleContext();

    EXPECT_THROW(context->performAndWait([] { throw 7; }), int);
}

TEST(NSManagedObjectContext, LastReferencesMayBeDroppedOnAnyThread)
{
    const auto context = peopleContext();
    for (int number = 0; number < 100; ++number)
        insertPerson(context, std::to_string(number));
    context->save();
    for (int round = 0; round < 20; ++round) {
        auto people = context->fetch({.entity = "Person"});
        auto thread = std::thread([held = std::move(people)]() mutable { held.clear(); });
        EXPECT_EQ(context->fetch({.entity = "Person"}).size(), 100u);
        thread.join();
    }
}

TEST(NSManagedObjectContext, ContextsOfOneStoreMaySaveFromSeveralThreads)
{
    const TemporaryFolder folder;
    const auto store = PersistentStore::open(
        peopleModel(), {.path = folder.file("store"), .synchronous = StoreSynchronous::Off});
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([&store, number] {
            const auto context = make<NSManagedObjectContext>(store);
            for (int round = 0; round < 25; ++round) {
                insertPerson(context, std::to_string(number));
                context->save();
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(storedNames(store).size(), 100u);
}

TEST(NSManagedObjectContext, WaitingForAParentsQueueMayBeNestedInWaitingForItsOwn)
{
    const auto parent = peopleContext();
    const auto child = make<NSManagedObjectContext>(parent);

    const auto names = child->performAndWait([&] {
        insertPerson(child, "a");
        child->save();
        return parent->performAndWait([&] {
            parent->save();
            return child->performAndWait([&] { return storedNames(parent->persistentStore()); });
        });
    });

    EXPECT_THAT(names, ElementsAre("a"));
}

TEST(NSManagedObjectContext, PerformedWorkKeepsItsContext)
{
    auto context = peopleContext();
    std::promise<std::vector<std::string>> stored;

    context->perform([&stored, &own = *context] {
        own.insert<Person>("Person")->name = "a";
        own.save();
        stored.set_value(storedNames(own.persistentStore()));
    });
    context = nullptr;

    EXPECT_THAT(stored.get_future().get(), ElementsAre("a"));
}
