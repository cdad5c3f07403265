#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"

#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include "Tests/Platform/Store/StoreFolder.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::Optional;

namespace {

NSFetchRequest peopleByName() { return {.entity = "Person", .sortDescriptors = {{"name"}}}; }

} // namespace

TEST(NSManagedObjectContext, SavesWhatWasChangedInIt)
{
    //! [Working in a context]
    const auto store = PersistentStore::open(peopleModel());
    const auto context = make<NSManagedObjectContext>(store);
    const auto eva = context->insert<Person>("Person");
    eva->name = "Eva";
    context->save();

    const auto other = make<NSManagedObjectContext>(store);
    const auto people = other->fetch<Person>(
        {.entity = "Person", .sortDescriptors = {{"name"}}, .fetchLimit = 10});

    EXPECT_EQ(people.size(), 1u);
    EXPECT_EQ(people[0]->name.get(), "Eva");
    EXPECT_EQ(people[0]->objectID(), eva->objectID());
    //! [Working in a context]
    EXPECT_NE(people[0], eva);
}

TEST(NSManagedObjectContext, AFreshOneHasNothingToSave)
{
    const auto context = peopleContext();

    EXPECT_FALSE(context->hasChanges());
    EXPECT_TRUE(context->trySave().isSuccess());
    EXPECT_THAT(context->userInfo(), IsEmpty());
    EXPECT_THAT(context->parent(), IsNull());
}

TEST(NSManagedObjectContext, KnowsWhatIsInsertedUpdatedAndDeleted)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");
    const auto b = insertPerson(context, "b");
    context->save();
    EXPECT_FALSE(context->hasChanges());
    EXPECT_FALSE(a->hasChanges());

    const auto c = insertPerson(context, "c");
    a->age = 1;
    context->delete_(b);

    EXPECT_TRUE(context->hasChanges());
    EXPECT_THAT(context->insertedObjects(), ElementsAre(c));
    EXPECT_THAT(context->updatedObjects(), ElementsAre(a));
    EXPECT_THAT(context->deletedObjects(), ElementsAre(b));
}

TEST(NSManagedObjectContext, GivesPermanentNamesThatAreNeverUsedAgain)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");
    EXPECT_TRUE(a->objectID().isTemporaryID());
    context->save();
    EXPECT_EQ(a->objectID().description(), "Person/p1");
    context->delete_(a);
    context->save();

    const auto b = insertPerson(context, "b");
    context->save();

    EXPECT_EQ(b->objectID().description(), "Person/p2");
}

TEST(NSManagedObjectContext, KeepsEveryKindOfValueExactly)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, std::string("a\0\"';--\xC3\xA4", 9));
    person->age = std::numeric_limits<std::int64_t>::min();
    person->setValue("rate", std::numeric_limits<double>::denorm_min());
    person->setValue("isActive", false);
    person->setValue("photo", Data{std::byte(0), std::byte(255)});
    person->setValue("born", Date::distantFuture());
    person->setValue("tag", *UUID::make("00112233-4455-6677-8899-AABBCCDDEEFF"));
    context->save();

    const auto other = make<NSManagedObjectContext>(context->persistentStore());
    const auto found = other->fetch({.entity = "Person"}).at(0);

    for (const auto& attribute : person->entity()->attributes())
        EXPECT_EQ(found->value(attribute.name), person->value(attribute.name)) << attribute.name;
}

TEST(NSManagedObjectContext, KeepsInfiniteNumbersAndForgetsTheSignOfZero)
{
    const auto context = peopleContext();
    insertPerson(context, "a")->setValue("rate", -std::numeric_limits<double>::infinity());
    insertPerson(context, "b")->setValue("rate", -0.0);
    context->save();

    const auto other = make<NSManagedObjectContext>(context->persistentStore());
    const auto found = other->fetch({.entity = "Person"});

    EXPECT_EQ(found[0]->value("rate"), Any(-std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(std::signbit(*found[1]->value("rate").get<double>()));
}

TEST(NSManagedObjectContext, AnEmptyValueIsNotAMissingOne)
{
    const auto context = peopleContext();
    insertPerson(context, "")->setValue("photo", Data{});
    context->save();

    const auto other = make<NSManagedObjectContext>(context->persistentStore());
    const auto found = other->fetch({.entity = "Person"}).at(0);

    EXPECT_EQ(found->value("photo"), Any(Data{}));
    EXPECT_EQ(found->value("tag"), Any());
}

TEST(NSManagedObjectContext, SavesRelationshipsOfNewObjectsInAnyOrder)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");
    const auto b = insertPerson(context, "b");
    const auto company = context->insert<Company>("Company");
    a->spouse = b;
    a->friends.insert(b);
    company->staff.insert(a);
    company->staff.insert(b);
    context->save();

    const auto other = make<NSManagedObjectContext>(context->persistentStore());
    const auto people = other->fetch<Person>(peopleByName());

    EXPECT_EQ(people[0]->spouse.get(), people[1]);
    EXPECT_EQ(people[1]->spouse.get(), people[0]);
    EXPECT_THAT(people[0]->friends.get(), ElementsAre(people[1]));
    EXPECT_THAT(people[1]->friends.get(), ElementsAre(people[0]));
    EXPECT_EQ(namesOf(people[0]->employer.get()->staff), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(namesOf(company->staff), (std::vector<std::string>{"a", "b"}));
}

TEST(NSManagedObjectContext, ReadsRelatedObjectsWhenTheyAreNeeded)
{
    const auto context = peopleContext();
    const auto company = context->insert<Company>("Company");
    company->staff.insert(insertPerson(context, "a"));
    context->save();
    const auto other = make<NSManagedObjectContext>(context->persistentStore());

    const auto person = other->object<Company>(company->objectID())->staff.get().at(0);

    EXPECT_TRUE(person->isFault());
    EXPECT_EQ(person->name.get(), "a");
    EXPECT_FALSE(person->isFault());
}

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

TEST(NSManagedObjectContext, RefusesToSaveWhatIsMissingAndLosesNothing)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");
    const auto b = context->insert<Person>("Person");

    const auto outcome = context->trySave();

    EXPECT_EQ(outcome.error()->kind(), Kind::InvalidValue);
    EXPECT_EQ(outcome.error()->context().key, "name");
    EXPECT_THAT(outcome.error()->context().objectIDs, ElementsAre(b->objectID()));
    EXPECT_THAT(context->insertedObjects(), ElementsAre(a, b));
    EXPECT_THAT(storedNames(context->persistentStore()), IsEmpty());
    b->name = "b";
    context->save();
    EXPECT_THAT(storedNames(context->persistentStore()), ElementsAre("a", "b"));
}

TEST(NSManagedObjectContext, RefusesToSaveWhatIsNoNumber)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "a");

    person->setValue("rate", std::nan(""));
    EXPECT_THAT(failureOf([&] { context->save(); }), Optional(Kind::InvalidValue));

    person->setValue("rate", Any());
    person->setValue("born", Date(std::nan("")));
    EXPECT_THAT(failureOf([&] { context->save(); }), Optional(Kind::InvalidValue));
}

TEST(NSManagedObjectContext, NullifiesReferencesToWhatIsDeleted)
{
    const auto context = peopleContext();
    const auto company = context->insert<Company>("Company");
    const auto a = insertPerson(context, "a");
    const auto b = insertPerson(context, "b");
    company->staff.insert(a);
    a->friends.insert(b);
    context->save();

    context->delete_(company);
    context->delete_(b);
    EXPECT_THAT(a->employer.get(), IsNull());
    EXPECT_THAT(a->friends.get(), IsEmpty());
    context->save();

    EXPECT_THAT(storedNames(context->persistentStore()), ElementsAre("a"));
}

TEST(NSManagedObjectContext, CascadesDeletions)
{
    const auto context = peopleContext(DeleteRule::Cascade);
    const auto company = context->insert<Company>("Company");
    company->staff.insert(insertPerson(context, "a"));
    company->staff.insert(insertPerson(context, "b"));
    insertPerson(context, "c");
    context->save();

    context->delete_(company);
    context->delete_(company);
    context->save();

    EXPECT_THAT(storedNames(context->persistentStore()), ElementsAre("c"));
}

TEST(NSManagedObjectContext, DeniesDeletionsUntilNothingIsInTheWay)
{
    const auto context = peopleContext(DeleteRule::Deny);
    const auto company = context->insert<Company>("Company");
    const auto a = insertPerson(context, "a");
    company->staff.insert(a);
    context->save();

    context->delete_(company);
    EXPECT_THAT(failureOf([&] { context->save(); }), Optional(Kind::DeleteDenied));
    EXPECT_THAT(context->deletedObjects(), ElementsAre(company));

    a->employer = nullptr;
    context->save();
    EXPECT_THAT(context->fetch({.entity = "Company"}), IsEmpty());
}

TEST(NSManagedObjectContext, WithoutARuleADanglingReferenceMakesTheSaveFail)
{
    const auto context = peopleContext(DeleteRule::NoAction);
    const auto company = context->insert<Company>("Company");
    const auto a = insertPerson(context, "a");
    company->staff.insert(a);
    context->save();

    context->delete_(company);
    EXPECT_THAT(failureOf([&] { context->save(); }), Optional(Kind::Constraint));
    EXPECT_TRUE(context->hasChanges());

    context->delete_(a);
    context->save();
    EXPECT_THAT(storedNames(context->persistentStore()), IsEmpty());
}

TEST(NSManagedObjectContext, AnObjectDeletedBeforeItWasSavedNeverWas)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");

    context->delete_(a);
    a->name = "b";

    EXPECT_FALSE(context->hasChanges());
    EXPECT_TRUE(a->isDeleted());
    EXPECT_THAT(context->fetch({.entity = "Person"}), IsEmpty());
}

TEST(NSManagedObjectContext, RollsBackToWhatIsStored)
{
    const auto context = peopleContext();
    const auto company = context->insert<Company>("Company");
    const auto a = insertPerson(context, "a");
    const auto b = insertPerson(context, "b");
    company->staff.insert(a);
    a->friends.insert(b);
    context->save();
    a->name = "z";
    a->employer = nullptr;
    a->friends.erase(b);
    context->delete_(b);
    insertPerson(context, "c");

    context->rollback();

    EXPECT_FALSE(context->hasChanges());
    EXPECT_EQ(a->name.get(), "a");
    EXPECT_EQ(a->employer.get(), company);
    EXPECT_THAT(a->friends.get(), ElementsAre(b));
    EXPECT_FALSE(b->isDeleted());
    EXPECT_THAT(namesOf(context->fetch<Person>(peopleByName())), ElementsAre("a", "b"));
}

TEST(NSManagedObjectContext, WhoSavesSecondGetsAConflictAndLosesNothing)
{
    const auto context = peopleContext();
    const auto mine = insertPerson(context, "a");
    context->save();
    const auto other = make<NSManagedObjectContext>(context->persistentStore());
    const auto theirs = other->fetch<Person>(peopleByName()).at(0);
    theirs->name = "theirs";
    theirs->age = 7;
    other->save();
    mine->name = "mine";

    const auto outcome = context->trySave();
    EXPECT_EQ(outcome.error()->kind(), Kind::Conflict);
    EXPECT_THAT(outcome.error()->context().objectIDs, ElementsAre(mine->objectID()));
    EXPECT_EQ(mine->name.get(), "mine");

    context->refresh(mine, true);
    EXPECT_EQ(mine->age.get(), 7);
    context->save();
    EXPECT_THAT(storedNames(context->persistentStore()), ElementsAre("mine"));
}

TEST(NSManagedObjectContext, RefreshingWithoutOwnChangesGivesThemUp)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "a");
    context->save();
    person->name = "b";

    context->refresh(person, false);

    EXPECT_EQ(person->name.get(), "a");
    EXPECT_FALSE(context->hasChanges());
}

TEST(NSManagedObjectContext, AnObjectThatIsGoneSaysSo)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "a");
    context->save();
    const auto other = make<NSManagedObjectContext>(context->persistentStore());
    const auto fault = other->object<Person>(person->objectID());
    context->delete_(person);
    context->save();

    EXPECT_THAT(failureOf([&] { fault->name.get(); }), Optional(Kind::ObjectGone));
    EXPECT_THAT(failureOf([&] { other->refresh(fault, true); }), Optional(Kind::ObjectGone));
    EXPECT_THAT(other->existingObject(person->objectID()), IsNull());
    EXPECT_THAT(context->existingObject(person->objectID()), IsNull());
}

TEST(NSManagedObjectContext, MergesWhatAnotherContextSaved)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");
    const auto b = insertPerson(context, "b");
    const auto c = insertPerson(context, "c");
    context->save();
    a->age = 1;
    std::optional<Notification> saved;
    const auto token = NotificationCenter::defaultCenter()->addObserver(
        {.name = NSManagedObjectContextDidSaveNotification}, [&](const Notification& note) { saved = note; });
    const auto other = make<NSManagedObjectContext>(context->persistentStore());
    const auto theirs = other->fetch<Person>(peopleByName());
    theirs[0]->name = "A";
    theirs[1]->name = "B";
    other->delete_(theirs[2]);
    insertPerson(other, "d");
    other->save();
    NotificationCenter::defaultCenter()->removeObserver(token);

    context->mergeChanges(*saved);

    EXPECT_EQ(saved->object<NSManagedObjectContext>(), other);
    EXPECT_EQ(a->name.get(), "A");
    EXPECT_EQ(a->age.get(), 1);
    EXPECT_EQ(b->name.get(), "B");
    EXPECT_TRUE(c->isDeleted());
    context->save();
    EXPECT_THAT(namesOf(context->fetch<Person>(peopleByName())), ElementsAre("A", "B", "d"));
}

TEST(NSManagedObjectContext, AChildSavesIntoItsParentAndTheParentIntoTheStore)
{
    const auto parent = peopleContext();
    const auto child = make<NSManagedObjectContext>(parent);
    const auto person = insertPerson(child, "a");
    const auto company = child->insert<Company>("Company");
    company->staff.insert(person);

    child->save();
    EXPECT_FALSE(child->hasChanges());
    EXPECT_THAT(storedNames(parent->persistentStore()), IsEmpty());
    EXPECT_THAT(namesOf(parent->fetch<Person>(peopleByName())), ElementsAre("a"));

    parent->save();
    EXPECT_THAT(storedNames(parent->persistentStore()), ElementsAre("a"));
    EXPECT_THAT(child->fetch<Person>(peopleByName()), ElementsAre(person));
    EXPECT_EQ(person->objectID().description(), "Person/p1");
    EXPECT_EQ(person->employer.get(), company);
}

TEST(NSManagedObjectContext, AChildReadsWhatItsParentHolds)
{
    const auto parent = peopleContext();
    const auto a = insertPerson(parent, "a");
    parent->save();
    a->name = "b";
    const auto unsaved = insertPerson(parent, "c");
    a->friends.insert(unsaved);

    const auto child = make<NSManagedObjectContext>(parent);
    const auto people = child->fetch<Person>(peopleByName());
    EXPECT_THAT(namesOf(people), ElementsAre("b", "c"));
    EXPECT_THAT(people[0]->friends.get(), ElementsAre(people[1]));

    people[1]->name = "d";
    child->delete_(people[0]);
    child->save();
    EXPECT_EQ(unsaved->name.get(), "d");
    EXPECT_TRUE(a->isDeleted());
    EXPECT_THAT(unsaved->friends.get(), IsEmpty());
}

TEST(NSManagedObjectContext, AChildWhoseParentChangedTheSameGetsAConflict)
{
    const auto parent = peopleContext();
    const auto a = insertPerson(parent, "a");
    parent->save();
    const auto child = make<NSManagedObjectContext>(parent);
    const auto copy = child->fetch<Person>(peopleByName()).at(0);
    copy->name = "child";
    a->name = "parent";

    EXPECT_THAT(failureOf([&] { child->save(); }), Optional(Kind::Conflict));
    EXPECT_EQ(a->name.get(), "parent");
    EXPECT_TRUE(child->hasChanges());
}

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
    const StoreFolder folder;
    const auto store = PersistentStore::open(
        peopleModel(), {.path = folder.file(), .synchronous = StoreSynchronous::Off});
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

TEST(NSManagedObjectContextDeathTest, RefusesWhatIsNotItsOwn)
{
    const auto context = peopleContext();

    EXPECT_DEATH(
        context->insert("Persons"), "The model has no such entity: file Platform/NSManagedObjectContext");
    EXPECT_DEATH(context->insert<Company>("Person"), "The entity's objects are of another class");
    EXPECT_DEATH(
        static_cast<void>(make<NSManagedObject>(NSEntityDescription::make({.name = "Person"}), context)),
        "is not of the store's model");
    EXPECT_DEATH(
        context->delete_(insertPerson(peopleContext(), "a")), "Only objects of the context can be deleted");
    EXPECT_DEATH(
        context->object(insertPerson(peopleContext(), "a")->objectID()), "The object is of another model");
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

TEST(NSManagedObjectContext, TiesObjectsThatSeveralChildrenMadeByTurns)
{
    const auto parent = peopleContext();
    const auto first = make<NSManagedObjectContext>(parent);
    const auto second = make<NSManagedObjectContext>(parent);
    const auto ann = insertPerson(first, "Ann");
    const auto bob = insertPerson(second, "Bob");
    const auto cid = insertPerson(first, "Cid");
    const auto dan = insertPerson(second, "Dan");
    ann->friends.insert(cid);
    bob->spouse = dan;

    // The later ones reach the parent first, so that its keys are in no order.
    second->save();
    first->save();
    parent->save();

    const auto other = make<NSManagedObjectContext>(parent->persistentStore());
    const auto people = other->fetch<Person>({.entity = "Person", .sortDescriptors = {{"name"}}});
    ASSERT_EQ(namesOf(people), (std::vector<std::string>{"Ann", "Bob", "Cid", "Dan"}));
    EXPECT_EQ(namesOf(people[0]->friends.get()), std::vector<std::string>{"Cid"});
    EXPECT_EQ(people[1]->spouse.get(), people[3]);
}
