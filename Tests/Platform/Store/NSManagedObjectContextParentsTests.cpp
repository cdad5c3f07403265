#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"

#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::UnorderedElementsAre;

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

TEST(NSManagedObjectContext, AChildDeletesWhatItsParentNeverSaved)
{
    const auto parent = peopleContext();
    const auto a = insertPerson(parent, "a");
    insertPerson(parent, "b");
    const auto child = make<NSManagedObjectContext>(parent);

    child->delete_(child->fetch<Person>(peopleByName()).at(0));
    child->save();

    EXPECT_TRUE(a->isDeleted());
    EXPECT_THAT(parent->deletedObjects(), IsEmpty());
    EXPECT_THAT(namesOf(parent->fetch<Person>(peopleByName())), ElementsAre("b"));
    parent->save();
    EXPECT_THAT(storedNames(parent->persistentStore()), ElementsAre("b"));
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
    const auto people = other->fetch<Person>(peopleByName());
    ASSERT_EQ(namesOf(people), (std::vector<std::string>{"Ann", "Bob", "Cid", "Dan"}));
    EXPECT_EQ(namesOf(people[0]->friends.get()), std::vector<std::string>{"Cid"});
    EXPECT_EQ(people[1]->spouse.get(), people[3]);
}

TEST(NSManagedObjectContext, AChildThatCannotSaveLeavesItsParentAlone)
{
    const auto parent = peopleContext();
    const auto child = make<NSManagedObjectContext>(parent);
    insertPerson(child, "a");
    child->insert("Person");

    EXPECT_THAT(failureOf([&] { child->save(); }), Optional(Kind::InvalidValue));

    EXPECT_EQ(child->insertedObjects().size(), 2u);
    EXPECT_FALSE(parent->hasChanges());
}

TEST(NSManagedObjectContext, RollingAChildBackKeepsWhatItsParentHolds)
{
    const auto parent = peopleContext();
    const auto a = insertPerson(parent, "a");
    const auto child = make<NSManagedObjectContext>(parent);
    const auto copy = child->fetch<Person>(peopleByName()).at(0);
    copy->name = "b";
    insertPerson(child, "c");

    child->rollback();

    EXPECT_FALSE(child->hasChanges());
    EXPECT_EQ(copy->name.get(), "a");
    EXPECT_THAT(parent->insertedObjects(), ElementsAre(a));
}

TEST(NSManagedObjectContext, SavesTravelOneLevelAtATime)
{
    const auto grandparent = peopleContext();
    const auto parent = make<NSManagedObjectContext>(grandparent);
    const auto child = make<NSManagedObjectContext>(parent);
    const auto person = insertPerson(child, "a");

    child->save();
    EXPECT_TRUE(parent->hasChanges());
    EXPECT_FALSE(grandparent->hasChanges());
    EXPECT_TRUE(person->objectID().isTemporaryID());

    parent->save();
    grandparent->save();
    EXPECT_THAT(storedNames(grandparent->persistentStore()), ElementsAre("a"));
    EXPECT_THAT(child->fetch<Person>(peopleByName()), ElementsAre(person));
    EXPECT_FALSE(person->objectID().isTemporaryID());
}

TEST(NSManagedObjectContext, AnObjectKeepsItsTemporaryNameAsAnother)
{
    const auto parent = peopleContext();
    const auto child = make<NSManagedObjectContext>(parent);
    const auto person = insertPerson(child, "a");
    const auto temporary = person->objectID();
    child->save();

    parent->save();

    EXPECT_EQ(child->existingObject(temporary), person);
    EXPECT_EQ(parent->existingObject(temporary), parent->fetch({.entity = "Person"}).at(0));
}

TEST(NSManagedObjectContext, AChildMayBeUsedWhileItsParentIsSaved)
{
    const auto parent = peopleContext();
    const auto child = make<NSManagedObjectContext>(parent);
    for (int round = 0; round < 40; ++round) {
        const auto name = std::to_string(round);
        const auto a = insertPerson(child, name + "a");
        const auto b = insertPerson(child, name + "b");
        a->friends.insert(b);
        a->spouse = b;
        child->save();

        parent->perform([parent] { parent->save(); });
        const auto c = insertPerson(child, name + "c");
        c->friends.insert(a);
        child->refresh(a, true);

        EXPECT_EQ(a->spouse.get(), b);
        EXPECT_THAT(a->friends.get(), UnorderedElementsAre(b, c));
        const auto found = NSPredicate::make("name BEGINSWITH %@", {name + "a"});
        EXPECT_THAT(child->fetch<Person>({.entity = "Person", .predicate = found}), ElementsAre(a));
        child->save();
    }
    parent->performAndWait([&] { parent->save(); });

    EXPECT_EQ(storedNames(parent->persistentStore()).size(), 120u);
    EXPECT_EQ(child->fetch({.entity = "Person"}).size(), 120u);
}
