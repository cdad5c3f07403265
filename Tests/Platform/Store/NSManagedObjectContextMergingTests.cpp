#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"

#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::IsNull;
using testing::Optional;

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

TEST(NSManagedObjectContext, RefreshingWhatWasNeverSavedChangesNothing)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "a");

    context->refresh(person, false);

    EXPECT_EQ(person->name.get(), "a");
    EXPECT_THAT(context->insertedObjects(), ElementsAre(person));
}

TEST(NSManagedObjectContext, RefreshingWhatWasNotReadYetReadsIt)
{
    const auto [saved, company, a, b] = savedTeam();
    const auto context = make<NSManagedObjectContext>(saved->persistentStore());
    const auto fault = context->object<Person>(a->objectID());

    context->refresh(fault, true);
    a->name = "later";
    saved->save();

    EXPECT_EQ(fault->name.get(), "a");
    EXPECT_FALSE(context->hasChanges());
}

TEST(NSManagedObjectContext, RefreshingWhatWasNotReadYetKeepsItsChangedSets)
{
    const auto [saved, company, a, b] = savedTeam();
    const auto context = make<NSManagedObjectContext>(saved->persistentStore());
    const auto fault = context->object<Person>(b->objectID());
    const auto c = insertPerson(context, "c");
    fault->friends.insert(c);

    context->refresh(fault, true);
    fault->age = 7;
    context->save();

    const auto after = make<NSManagedObjectContext>(saved->persistentStore());
    const auto stored = after->object<Person>(b->objectID());
    EXPECT_EQ(stored->age.get(), 7);
    EXPECT_EQ(namesOf(stored->friends.get()), (std::vector<std::string>{"a", "c"}));
}

TEST(NSManagedObjectContext, RefreshingWhatWasNotReadYetGivesItsChangedSetsUp)
{
    const auto [saved, company, a, b] = savedTeam();
    const auto context = make<NSManagedObjectContext>(saved->persistentStore());
    const auto one = context->object<Person>(a->objectID());
    const auto other = context->object<Person>(b->objectID());
    one->friends.erase(other);

    context->refresh(one, false);
    context->refresh(other, false);

    EXPECT_FALSE(context->hasChanges());
    EXPECT_THAT(one->friends.get(), ElementsAre(other));
    EXPECT_THAT(other->friends.get(), ElementsAre(one));
}

TEST(NSManagedObjectContext, SavesOnceWhatWasChangedAgainAfterItsChangesWereGivenUp)
{
    const auto [context, company, a, b] = savedTeam();
    a->name = "x";
    b->name = "y";

    context->refresh(a, false);
    a->name = "z";

    EXPECT_EQ(context->updatedObjects().size(), 2u);
    context->save();
    EXPECT_THAT(storedNames(context->persistentStore()), ElementsAre("y", "z"));
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

TEST(NSManagedObjectContext, GivesTheFailureOfARefreshInsteadOfThrowingIt)
{
    const auto [context, company, a, b] = savedTeam();
    const auto other = make<NSManagedObjectContext>(context->persistentStore());
    const auto fault = other->object<Person>(a->objectID());

    EXPECT_TRUE(other->tryRefresh(fault, false).isSuccess());
    context->delete_(a);
    context->save();

    EXPECT_EQ(other->tryRefresh(fault, false).error()->kind(), Kind::ObjectGone);
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

TEST(NSManagedObjectContext, MergesItsOwnSavesAndTheSameOnesTwiceWithoutAnEffect)
{
    const auto context = peopleContext();
    std::vector<Notification> saves;
    const auto token = NotificationCenter::defaultCenter()->addObserver(
        {.name = NSManagedObjectContextDidSaveNotification},
        [&](const Notification& note) { saves.push_back(note); });
    const auto a = insertPerson(context, "a");
    const auto b = insertPerson(context, "b");
    context->save();
    a->name = "c";
    context->delete_(b);
    context->save();
    NotificationCenter::defaultCenter()->removeObserver(token);
    a->age = 1;

    for (int round = 0; round < 2; ++round)
        for (const auto& save : saves)
            context->mergeChanges(save);

    EXPECT_EQ(saves.size(), 2u);
    EXPECT_EQ(a->age.get(), 1);
    EXPECT_THAT(context->updatedObjects(), ElementsAre(a));
    EXPECT_THAT(namesOf(context->fetch<Person>(peopleByName())), ElementsAre("c"));
}

TEST(NSManagedObjectContext, MergesNothingFromAnotherKindOfNotification)
{
    const auto context = peopleContext();
    insertPerson(context, "a");

    context->mergeChanges(
        Notification(NotificationName("Other"), nullptr, {{"updated", 1}, {"deleted", Array{"x", Any()}}}));

    EXPECT_EQ(context->insertedObjects().size(), 1u);
}
