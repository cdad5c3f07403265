#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"

#include "Orrenby/Platform/Net/UUID.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
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

TEST(NSManagedObjectContext, RollsBackToWhatIsStored)
{
    const auto [context, company, a, b] = savedTeam();
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

TEST(NSManagedObjectContext, RollsBackTwiceAndWithoutChanges)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");

    context->rollback();
    context->rollback();

    EXPECT_FALSE(context->hasChanges());
    EXPECT_TRUE(a->isDeleted());
    EXPECT_FALSE(a->isInserted());
    EXPECT_TRUE(context->trySave().isSuccess());
    EXPECT_THAT(context->fetch({.entity = "Person"}), IsEmpty());
}

TEST(NSManagedObjectContext, KeepsWhatItsUserLaysDown)
{
    const auto context = peopleContext();
    EXPECT_EQ(context->userInfo(), Dictionary());

    context->userInfo().set("key", 1);
    context->rollback();

    EXPECT_EQ(context->userInfo(), Dictionary({{"key", 1}}));
}

TEST(NSManagedObjectContext, RefusesToSaveWithoutARelationshipThatIsNotOptional)
{
    const auto model = NSManagedObjectModel::make(1,
        {{.name = "Leaf", .relationships = {{.name = "tree", .destination = "Tree", .isOptional = false}}},
            {.name = "Tree"}});
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model));
    const auto leaf = context->insert("Leaf");

    const auto outcome = context->trySave();
    EXPECT_EQ(outcome.error()->kind(), Kind::InvalidValue);
    EXPECT_EQ(outcome.error()->context().key, "tree");

    leaf->setObject("tree", context->insert("Tree"));
    context->save();
    EXPECT_EQ(context->fetch({.entity = "Leaf"}), std::vector{leaf});
}

TEST(NSManagedObjectContextDeathTest, NeedsAStoreOrAParent)
{
    EXPECT_DEATH(static_cast<void>(make<NSManagedObjectContext>(Ref<PersistentStore>())),
        "A context has a store or a parent: file Platform/NSManagedObjectContext");
    EXPECT_DEATH(static_cast<void>(make<NSManagedObjectContext>(Ref<NSManagedObjectContext>())),
        "A context has a store or a parent: file Platform/NSManagedObjectContext");
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
    EXPECT_DEATH(context->refresh(nullptr, false), "Only objects of the context can be refreshed");
    EXPECT_DEATH(context->refresh(insertPerson(peopleContext(), "a"), false),
        "Only objects of the context can be refreshed");
    EXPECT_DEATH(
        context->delete_(insertPerson(peopleContext(), "a")), "Only objects of the context can be deleted");
    EXPECT_DEATH(
        context->object(insertPerson(peopleContext(), "a")->objectID()), "The object is of another model");
}
