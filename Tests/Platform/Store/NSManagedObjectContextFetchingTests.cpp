#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Observing/Notification.hpp"
#include "Orrenby/Platform/Store/Connection.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::Optional;

TEST(NSManagedObjectContext, FetchesInOrderWithALimit)
{
    const auto context = peopleContext();
    for (const char* name : {"c", "a", "d", "b"})
        insertPerson(context, name);
    const NSFetchRequest request{
        .entity = "Person", .sortDescriptors = {{"name", false}}, .fetchLimit = 2, .fetchOffset = 1};

    EXPECT_THAT(namesOf(context->fetch<Person>(request)), ElementsAre("c", "b"));
    context->save();
    EXPECT_THAT(namesOf(context->fetch<Person>(request)), ElementsAre("c", "b"));
}

TEST(NSManagedObjectContext, FetchesNothingBeyondTheEnd)
{
    const auto context = peopleContext();
    insertPerson(context, "a");

    EXPECT_THAT(context->fetch({.entity = "Person", .fetchOffset = 1}), IsEmpty());
    EXPECT_THAT(context->fetch({.entity = "Person", .fetchOffset = SIZE_MAX}), IsEmpty());
    EXPECT_EQ(context->fetch({.entity = "Person", .fetchLimit = SIZE_MAX}).size(), 1u);
    EXPECT_THAT(context->fetch({.entity = "Company"}), IsEmpty());
}

TEST(NSManagedObjectContext, OrdersUnsavedObjectsAsTheStoreOrdersSavedOnes)
{
    const auto context = peopleContext();
    const std::vector<std::string> names{"", "b", "B", std::string("b\0", 2), "\xC3\xA4", "aa", "a"};
    for (const auto& name : names)
        insertPerson(context, name)->age = name.empty()
            ? std::nullopt
            : std::optional(static_cast<std::int64_t>(name.size()));
    for (const char* key : {"name", "age", "isActive", "tag"})
        for (const bool isAscending : {true, false}) {
            const NSFetchRequest request{.entity = "Person", .sortDescriptors = {{key, isAscending}}};
            const auto unsaved = namesOf(context->fetch<Person>(request));
            context->save();
            EXPECT_EQ(namesOf(context->fetch<Person>(request)), unsaved) << key;
            context->fetch<Person>({.entity = "Person"})[0]->setValue("rate", 1.0); // unsaved again
            EXPECT_EQ(namesOf(context->fetch<Person>(request)), unsaved) << key;
        }
}

TEST(NSManagedObjectContext, GivesTheFailureOfAFetchInsteadOfThrowingIt)
{
    const auto context = peopleContext();
    const auto eva = insertPerson(context, "Eva");

    EXPECT_EQ(context->tryFetch({.entity = "Nobody"}).error()->kind(), Kind::InvalidPredicate);
    EXPECT_THAT(context->tryFetch<Person>(peopleByName()).value(), Optional(ElementsAre(eva)));
    EXPECT_THAT(context->tryExistingObject<Person>(eva->objectID()).value(), Optional(eva));
    EXPECT_THAT(context->tryExistingObject<Company>(eva->objectID()).value(), Optional(IsNull()));
}

TEST(NSManagedObjectContext, GivesTheFailuresOfReadingADamagedFileInsteadOfThrowingThem)
{
    const TemporaryFolder folder;
    const StoreSettings settings{.path = folder.file("store")};
    const auto store = PersistentStore::open(peopleModel(), settings);
    const auto saving = make<NSManagedObjectContext>(store);
    const auto eva = insertPerson(saving, "Eva");
    eva->employer = saving->insert<Company>("Company");
    saving->save();
    const auto context = make<NSManagedObjectContext>(store);
    const auto known = context->fetch<Person>(peopleByName()).at(0);
    const auto company = context->fetch<Company>({.entity = "Company"}).at(0);
    const Notification saved(
        NSManagedObjectContextDidSaveNotification, {}, {{"updated", Array{known->objectID()}}});

    detail::Connection(settings).execute("DROP TABLE Person");

    const auto other = make<NSManagedObjectContext>(store);
    EXPECT_TRUE(other->tryExistingObject(known->objectID()).isFailure());
    EXPECT_TRUE(context->tryRefresh(known, false).isFailure());
    EXPECT_TRUE(context->tryMergeChanges(saved).isFailure());
    EXPECT_TRUE(context->tryDelete(company).isFailure());
}

TEST(NSManagedObjectContext, OrdersWhatIsNoNumberBetweenNothingAndAllNumbers)
{
    const auto context = peopleContext();
    insertPerson(context, "least")->setValue("rate", -std::numeric_limits<double>::infinity());
    insertPerson(context, "none")->setValue("rate", std::numeric_limits<double>::quiet_NaN());
    insertPerson(context, "empty");
    insertPerson(context, "none too")->setValue("rate", std::numeric_limits<double>::quiet_NaN());

    EXPECT_THAT(namesOf(context->fetch<Person>({.entity = "Person", .sortDescriptors = {{"rate"}}})),
        ElementsAre("empty", "none", "none too", "least"));
    EXPECT_THAT(namesOf(context->fetch<Person>({.entity = "Person", .sortDescriptors = {{"rate", false}}})),
        ElementsAre("least", "none", "none too", "empty"));
}

TEST(NSManagedObjectContext, FetchesWithUnsavedChanges)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");
    const auto b = insertPerson(context, "b");
    insertPerson(context, "c");
    context->save();

    a->name = "z";
    context->delete_(b);
    insertPerson(context, "d");

    EXPECT_THAT(namesOf(context->fetch<Person>(peopleByName())), ElementsAre("c", "d", "z"));
}

TEST(NSManagedObjectContext, RefusesToFetchWhatTheModelDoesNotKnow)
{
    const auto context = peopleContext();

    EXPECT_THAT(failureOf([&] { context->fetch({.entity = "Persons"}); }), Optional(Kind::InvalidPredicate));
    EXPECT_THAT(failureOf([&] { context->fetch({.entity = "Person", .sortDescriptors = {{"name; --"}}}); }),
        Optional(Kind::InvalidPredicate));
    EXPECT_THAT(failureOf([&] { context->fetch({.entity = "Person", .sortDescriptors = {{"employer"}}}); }),
        Optional(Kind::InvalidPredicate));
}

TEST(NSManagedObjectContext, FindsEachOfManyObjectsOnceWhenOthersWentAway)
{
    const auto context = peopleContext();
    for (int number = 0; number < 1000; ++number)
        insertPerson(context, std::to_string(number));
    context->save();
    auto kept = context->fetch<Person>({.entity = "Person"});
    for (std::size_t index = 0; index < kept.size(); index += 2)
        kept[index] = nullptr;

    const auto again = context->fetch<Person>({.entity = "Person"});

    ASSERT_EQ(again.size(), 1000u);
    for (std::size_t index = 0; index < kept.size(); ++index) {
        EXPECT_EQ(again[index]->name.get(), std::to_string(index));
        EXPECT_TRUE(kept[index] == nullptr || again[index] == kept[index]);
    }
}
