#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"

#include "Tests/Platform/Store/StoreFolder.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

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
