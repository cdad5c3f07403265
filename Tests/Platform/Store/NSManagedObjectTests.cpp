#include "Orrenby/Platform/Store/NSManagedObject.hpp"

#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include "Tests/Support/Recorder.hpp"
#include <gmock/gmock.h>

using namespace orrenby;
using namespace orrenby::tests;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;

TEST(NSManagedObject, HasTheDefaultValuesOfItsEntity)
{
    const auto context = peopleContext();

    const auto person = context->insert<Person>("Person");

    EXPECT_EQ(person->value("isActive"), Any(true));
    EXPECT_EQ(person->value("age"), Any());
    EXPECT_EQ(person->name.get(), "");
    EXPECT_EQ(person->age.get(), std::nullopt);
}

TEST(NSManagedObject, ShowsItsValuesAsMembers)
{
    //! [Declaring a class of stored objects]
    class Note : public NSManagedObject {
    public:
        using NSManagedObject::NSManagedObject;
        Attribute<std::string, "text"> text{*this};
        Attribute<std::optional<std::int64_t>, "stars"> stars{*this};
    };
    const auto model = NSManagedObjectModel::make(1,
        {{.name = "Note",
            .attributes = {{.name = "text"},
                {.name = "stars", .kind = AttributeKind::Int, .isOptional = true}},
            .objectClass = managedObjectClass<Note>}});
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model));

    const auto note = context->insert<Note>("Note");
    note->text = "Call Eva";
    note->stars = 3;

    EXPECT_EQ(note->value("text"), Any("Call Eva"));
    EXPECT_EQ(note->stars.get(), 3);
    //! [Declaring a class of stored objects]
}

TEST(NSManagedObject, WithoutAContextKeepsItsValuesAndIsNeverSaved)
{
    const auto entity = NSEntityDescription::make(
        {.name = "A", .attributes = {{.name = "a", .defaultValue = "x"}}, .relationships = {{.name = "b"}}});

    const auto object = make<NSManagedObject>(entity);
    object->setValue("a", "y");

    EXPECT_EQ(object->value("a"), Any("y"));
    EXPECT_EQ(object->value("b"), Any());
    EXPECT_THAT(object->managedObjectContext(), IsNull());
    EXPECT_FALSE(object->hasChanges());
    EXPECT_TRUE(object->objectID().isTemporaryID());
}

TEST(NSManagedObject, ConstructedWithAContextIsInserted)
{
    const auto context = peopleContext();

    const auto person = make<Person>(context->persistentStore()->model()->entity("Person"), context);

    EXPECT_TRUE(person->isInserted());
    EXPECT_EQ(person->managedObjectContext(), context);
    EXPECT_THAT(context->insertedObjects(), ElementsAre(person));
}

TEST(NSManagedObject, ChangesOutliveTheReferenceToIt)
{
    const auto context = peopleContext();
    insertPerson(context, "Eva");

    const auto people = context->fetch<Person>({.entity = "Person"});

    EXPECT_THAT(namesOf(people), ElementsAre("Eva"));
}

TEST(NSManagedObject, IsOneInItsContext)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "Eva");
    context->save();

    EXPECT_THAT(context->fetch<Person>({.entity = "Person"}), ElementsAre(person));
    EXPECT_EQ(context->object<Person>(person->objectID()), person);
}

TEST(NSManagedObject, KeepsBothEndsOfARelationshipInStep)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "Eva");
    const auto first = context->insert<Company>("Company");
    const auto second = context->insert<Company>("Company");

    person->employer = first;
    EXPECT_THAT(first->staff.get(), ElementsAre(person));

    second->staff.insert(person);
    EXPECT_EQ(person->employer.get(), second);
    EXPECT_THAT(first->staff.get(), IsEmpty());

    second->staff.erase(person);
    EXPECT_THAT(person->employer.get(), IsNull());
    EXPECT_THAT(second->staff.get(), IsEmpty());
}

TEST(NSManagedObject, FreesThePartnersOfBothWhenTwoBecomeACouple)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");
    const auto b = insertPerson(context, "b");
    const auto c = insertPerson(context, "c");
    const auto d = insertPerson(context, "d");
    a->spouse = b;
    c->spouse = d;

    b->spouse = c;

    EXPECT_THAT(a->spouse.get(), IsNull());
    EXPECT_EQ(b->spouse.get(), c);
    EXPECT_EQ(c->spouse.get(), b);
    EXPECT_THAT(d->spouse.get(), IsNull());
}

TEST(NSManagedObject, ManyToManyIsMutual)
{
    const auto context = peopleContext();
    const auto a = insertPerson(context, "a");
    const auto b = insertPerson(context, "b");

    a->friends.insert(b);
    a->friends.insert(b);
    EXPECT_THAT(b->friends.get(), ElementsAre(a));

    b->friends.erase(a);
    EXPECT_THAT(a->friends.get(), IsEmpty());
}

TEST(NSManagedObject, GivesSetsUnderTheirNames)
{
    const auto context = peopleContext();
    const auto company = context->insert<Company>("Company");
    const auto person = insertPerson(context, "Eva");
    company->staff.insert(person);

    EXPECT_EQ(company->value("staff"), Any(NSSet{Any(Ref<NSManagedObject>(person))}));
    EXPECT_EQ(person->value("employer"), Any(Ref<NSManagedObject>(company)));
}

TEST(NSManagedObject, TellsItsObservers)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "Eva");
    const auto recorder = makeRecorder();
    person->addObserver(recorder, "name", oldAndNew);

    person->name = "Ada";
    person->name = "Ada";
    person->setValue("name", Any());

    EXPECT_THAT(recorder->told,
        ElementsAre(R"(name: "Eva" -> "Ada")", R"(name: "Ada" -> "Ada")", R"(name: "Ada" -> <null>)"));
}

TEST(NSManagedObject, TellsTheObserversOfTheOtherEnd)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "Eva");
    const auto company = context->insert<Company>("Company");
    const auto recorder = makeRecorder();
    company->addObserver(recorder, "staff", oldAndNew);
    person->addObserver(recorder, "employer.name", oldAndNew);

    person->employer = company;

    EXPECT_THAT(recorder->told,
        ElementsAre(
            "staff: [] -> [Person(" + person->description() + ")]", R"(employer.name: none -> "Company")"));
}

TEST(NSManagedObject, TellsItsObserversOfARollbackAndARefresh)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "Eva");
    context->save();
    person->name = "Ada";
    const auto recorder = makeRecorder();
    person->addObserver(recorder, "name", oldAndNew);

    context->rollback();
    person->name = "Bob";
    context->refresh(person, false);

    EXPECT_THAT(recorder->told,
        ElementsAre(R"(name: "Ada" -> "Eva")", R"(name: "Eva" -> "Bob")", R"(name: "Bob" -> "Eva")"));
}

TEST(NSManagedObject, ItsNameIsTemporaryUntilItIsSaved)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "Eva");
    const auto temporary = person->objectID();

    context->save();

    EXPECT_TRUE(temporary.isTemporaryID());
    EXPECT_FALSE(person->objectID().isTemporaryID());
    EXPECT_EQ(context->object(person->objectID()), person);
    EXPECT_EQ(
        make<NSManagedObjectContext>(context)->object(person->objectID())->objectID(), person->objectID());
}

TEST(NSManagedObject, TakesRelatedObjectsUnderTheirNames)
{
    const auto context = peopleContext();
    const auto company = context->insert<Company>("Company");
    const auto person = insertPerson(context, "Eva");

    person->setValue("employer", Ref<NSManagedObject>(company));
    EXPECT_EQ(person->employer.get(), company);
    EXPECT_THAT(company->staff.get(), ElementsAre(person));

    person->setValue("employer", nullptr);
    EXPECT_EQ(person->employer.get(), nullptr);
    EXPECT_EQ(person->value("employer"), Any());
}

TEST(NSManagedObject, ReadsTheOtherEndOfARelationshipBeforeItChangesIt)
{
    const auto [saved, company, a, b] = savedTeam();
    a->spouse = b;
    saved->save();
    const auto context = make<NSManagedObjectContext>(saved->persistentStore());
    const auto fault = context->object<Person>(b->objectID());

    context->object<Person>(a->objectID())->spouse = nullptr;
    EXPECT_EQ(fault->spouse.get(), nullptr);
    EXPECT_EQ(fault->name.get(), "b");

    const auto other = make<NSManagedObjectContext>(saved->persistentStore());
    const auto c = insertPerson(other, "c");
    c->spouse = other->object<Person>(a->objectID());
    EXPECT_EQ(other->object<Person>(b->objectID())->spouse.get(), nullptr);
    EXPECT_EQ(other->object<Person>(a->objectID())->spouse.get(), c);
    other->save();
    EXPECT_EQ(make<NSManagedObjectContext>(saved->persistentStore())
                  ->object<Person>(a->objectID())
                  ->spouse.get()
                  ->name.get(),
        "c");
}

TEST(NSManagedObject, JoinsAndLeavesASetBeforeItIsRead)
{
    const auto [saved, company, a, b] = savedTeam();
    const auto context = make<NSManagedObjectContext>(saved->persistentStore());
    const auto firm = context->object<Company>(company->objectID());
    const auto leaving = context->object<Person>(a->objectID());
    const auto joining = context->object<Person>(b->objectID());

    firm->staff.erase(leaving);
    firm->staff.insert(joining);
    EXPECT_THAT(firm->staff.get(), ElementsAre(joining));
    EXPECT_EQ(leaving->employer.get(), nullptr);

    context->save();
    const auto after = make<NSManagedObjectContext>(saved->persistentStore());
    EXPECT_EQ(
        namesOf(after->object<Company>(company->objectID())->staff.get()), std::vector<std::string>{"b"});
}

TEST(NSManagedObject, StaysUnchangedWhenItIsTiedToWhatItIsTiedToAlready)
{
    const auto [context, company, a, b] = savedTeam();

    a->employer = company;
    company->staff.insert(a);
    company->staff.erase(b);
    b->employer = nullptr;

    EXPECT_FALSE(context->hasChanges());
}

TEST(NSManagedObjectDeathTest, NeedsAnEntity)
{
    EXPECT_DEATH(static_cast<void>(make<NSManagedObject>(nullptr, nullptr)),
        "A stored object has an entity: file Platform/NSManagedObject");
}

TEST(NSManagedObjectDeathTest, RefusesWhatDoesNotFitItsEntity)
{
    const auto context = peopleContext();
    const auto person = insertPerson(context, "Eva");

    EXPECT_DEATH(person->value("salary"), "A stored object has no such key: file Platform/NSManagedObject");
    EXPECT_DEATH(person->setValue("age", "old"), "A value is not of its attribute's kind");
    EXPECT_DEATH(person->setValue("employer", 1), "A relationship leads to a stored object");
    EXPECT_DEATH(person->setObject("employer", person), "A relationship leads to objects of one entity");
    EXPECT_DEATH(person->objects("employer"), "A stored object has no such relationship");
    EXPECT_DEATH(person->friends.insert(nullptr), "Related objects are of one context");
    EXPECT_DEATH(
        person->friends.insert(insertPerson(peopleContext(), "Ada")), "Related objects are of one context");
}

TEST(NSManagedObjectDeathTest, CannotFollowRelationshipsOnceItsContextIsGone)
{
    auto context = peopleContext();
    const auto person = insertPerson(context, "Eva");
    context = nullptr;

    EXPECT_EQ(person->name.get(), "Eva");
    EXPECT_DEATH(person->friends.get(), "The object has no context, or outlived it");
}
