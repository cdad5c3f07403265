#include "Orrenby/Platform/Store/NSPredicate.hpp"

#include "Tests/Platform/Store/PredicateParts.hpp"
#include "Tests/Platform/Store/StoreFailure.hpp"
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

namespace {

std::optional<Kind> fetchFailure(const NSPredicate& predicate)
{
    return failureOf([&] { namesIn(peopleContext(), predicate); });
}

std::optional<Kind> fetchFailure(std::string_view format, const std::vector<Any>& arguments = {})
{
    return fetchFailure(NSPredicate::make(format, arguments));
}

} // namespace

TEST(NSPredicate, ChoosesWhatIsFetched)
{
    //! [Fetching by a condition]
    const auto context = make<NSManagedObjectContext>(people());

    const auto found = context->fetch<Person>({.entity = "Person",
        .predicate = NSPredicate::make("age >= %@ AND employer.name BEGINSWITH[c] 'ac'", {35}),
        .sortDescriptors = {{"name"}}});

    EXPECT_THAT(namesOf(found), ElementsAre("Ada"));
    //! [Fetching by a condition]
}

TEST(NSPredicate, CanBeBuiltFromKeys)
{
    //! [Building a condition]
    const auto age = PredicateKey("age");
    const auto predicate = age.between(30, 39) || PredicateKey("friends.name").any() == "Eva";

    EXPECT_EQ(predicate, NSPredicate::make("age BETWEEN {30, 39} OR ANY friends.name = 'Eva'"));
    //! [Building a condition]
    EXPECT_THAT(found(predicate), ElementsAre("Eva", "Ada", "Bob"));
    EXPECT_EQ(age == 1 && age != 2 && age < 3 && age <= 4 && age > 5 && age >= 6,
        NSPredicate::make("age = 1 AND age != 2 AND age < 3 AND age <= 4 AND age > 5 AND age >= 6"));
    EXPECT_EQ(!age.in({1, nullptr}), NSPredicate::make("NOT age IN {1, nil}"));
    EXPECT_EQ(PredicateKey("friends.age").all() > 1, NSPredicate::make("ALL friends.age > 1"));
    const auto name = PredicateKey("name");
    EXPECT_EQ(name.like("a*") && name.beginsWith("b", {.ignoresCase = true}),
        NSPredicate::make("name LIKE 'a*' AND name BEGINSWITH[c] 'b'"));
    EXPECT_EQ(name.contains("c") || name.endsWith("d"),
        NSPredicate::make("name CONTAINS 'c' OR name ENDSWITH 'd'"));
}

TEST(NSPredicate, ThatSaysNothingIsFulfilledByEverything)
{
    EXPECT_THAT(found(NSPredicate()), ElementsAre("Eva", "Ada", "Bob"));
    EXPECT_EQ(NSPredicate(), NSPredicate::make("truepredicate"));
    EXPECT_THAT(found("TRUEPREDICATE"), ElementsAre("Eva", "Ada", "Bob"));
    EXPECT_THAT(found("FALSEPREDICATE"), IsEmpty());
    EXPECT_THAT(found("NOT FALSEPREDICATE AND age = 30"), ElementsAre("Eva"));
}

TEST(NSPredicate, ComparesInEverySpelling)
{
    EXPECT_THAT(found("age = 30"), ElementsAre("Eva"));
    EXPECT_THAT(found("age == 30"), ElementsAre("Eva"));
    EXPECT_THAT(found("30 < age"), ElementsAre("Ada"));
    EXPECT_THAT(found("30 <= age"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("40 > age"), ElementsAre("Eva"));
    EXPECT_THAT(found("40 >= age"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("30 = age"), ElementsAre("Eva"));
    EXPECT_THAT(found("30 != age"), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found("age => 30"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("age =< 30"), ElementsAre("Eva"));
    EXPECT_THAT(found("age <> 30 && name != \"Bob\""), ElementsAre("Ada"));
    EXPECT_THAT(found("not (age > 35 or name = 'Bob')"), ElementsAre("Eva"));
    EXPECT_THAT(found("! age > 35 && isActive = YES"), ElementsAre("Eva", "Bob"));
    EXPECT_THAT(found("name IN {'Eva', 'Bob'}"), ElementsAre("Eva", "Bob"));
    EXPECT_THAT(found("name IN {}"), IsEmpty());
}

TEST(NSPredicate, AndBindsMoreTightlyThanOr)
{
    EXPECT_THAT(found("name = 'Eva' OR name = 'Ada' AND age = 0"), ElementsAre("Eva"));
    EXPECT_THAT(found("(name = 'Eva' OR name = 'Ada') AND age = 0"), IsEmpty());
}

TEST(NSPredicate, WhatIsEmptyEqualsOnlyNil)
{
    EXPECT_THAT(found("age = nil"), ElementsAre("Bob"));
    EXPECT_THAT(found("age != nil"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("age != 30"), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found("age < 35"), ElementsAre("Eva"));
    EXPECT_THAT(found("NOT age < 35"), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found("age IN {30, nil}"), ElementsAre("Eva", "Bob"));
    EXPECT_THAT(found("age = %@", {Any()}), ElementsAre("Bob"));
    EXPECT_THAT(found("employer.name = nil"), ElementsAre("Bob"));
}

TEST(NSPredicate, ComparesTextsByTheirParts)
{
    EXPECT_THAT(found("name BEGINSWITH 'E'"), ElementsAre("Eva"));
    EXPECT_THAT(found("name BEGINSWITH ''"), ElementsAre("Eva", "Ada", "Bob"));
    EXPECT_THAT(found("name CONTAINS 'o'"), ElementsAre("Bob"));
    EXPECT_THAT(found("name ENDSWITH 'a'"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("name ENDSWITH[c] 'DA'"), ElementsAre("Ada"));
    EXPECT_THAT(found("name CONTAINS[c] 'B'"), ElementsAre("Bob"));
    EXPECT_THAT(found("name LIKE '?d?'"), ElementsAre("Ada"));
    EXPECT_THAT(found("name LIKE '*a'"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("name LIKE[c] 'b*B'"), ElementsAre("Bob"));
    EXPECT_THAT(found("name LIKE 'v'"), IsEmpty());
    EXPECT_THAT(found("name LIKE '\\*'"), IsEmpty());
}

TEST(NSPredicate, IgnoresCaseBeyondLatin)
{
    const auto context = peopleContext();
    insertPerson(context, "\xC3\x84rger");
    insertPerson(context, "100% *");
    context->save();

    EXPECT_THAT(found(context->persistentStore(), NSPredicate::make("name BEGINSWITH[c] '\xC3\xA4R'")),
        ElementsAre("\xC3\x84rger"));
    EXPECT_THAT(
        found(context->persistentStore(), NSPredicate::make("name LIKE '1??% \\*'")), ElementsAre("100% *"));
}

TEST(NSPredicate, FollowsRelationships)
{
    EXPECT_THAT(found("employer.name = 'Acme'"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("spouse.spouse.name = name"), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found("ANY friends.age = 40"), ElementsAre("Eva"));
    EXPECT_THAT(found("NONE friends.age = 40"), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found("ANY friends != nil"), ElementsAre("Eva", "Ada", "Bob"));
    EXPECT_THAT(found("ANY employer.staff.name = 'Eva'"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("ANY friends.friends.friends.friends.name = 'Eva'"), ElementsAre("Eva"));
}

TEST(NSPredicate, AllValuesPassWhenThereIsNone)
{
    EXPECT_THAT(found("ALL friends.name = 'Eva'"), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found("ALL friends.age = 40"), IsEmpty());
    EXPECT_THAT(found("ALL friends.name IN {'Ada', 'Bob'}"), ElementsAre("Eva"));
    EXPECT_THAT(found("ALL employer.staff.age >= 30"), ElementsAre("Eva", "Ada", "Bob"));
    EXPECT_THAT(found("NOT ALL employer.staff.age > 30"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("ALL friends.spouse = nil"), ElementsAre("Ada", "Bob"));
}

TEST(NSPredicate, AnEmptyValueIsOneOfAllValues)
{
    EXPECT_THAT(found("ALL friends.age < 100"), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found("ALL friends.age != 30"), ElementsAre("Eva"));
    EXPECT_THAT(found("ALL friends.friends.age = 30"), ElementsAre("Eva"));
}

TEST(NSPredicate, CountsTheObjectsOfARelationship)
{
    EXPECT_THAT(found("friends.@count = 2"), ElementsAre("Eva"));
    EXPECT_THAT(found("1 >= friends.@count"), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found("employer.staff.@count BETWEEN {2, 3}"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("friends.@count = spouse.friends.@count"), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found("ANY friends.friends.@count > 1"), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found("friends.@count IN {0.5, 2.0}"), ElementsAre("Eva"));
    EXPECT_THAT(found(PredicateKey("friends.@count") > 1), ElementsAre("Eva"));
}

TEST(NSPredicate, NothingIsCountedBehindAnEmptyRelationship)
{
    EXPECT_THAT(found("employer.staff.@count = nil"), ElementsAre("Bob"));
    EXPECT_THAT(found("employer.staff.@count = 0"), IsEmpty());
    EXPECT_THAT(found("friends.@count = nil"), IsEmpty());
}

TEST(NSPredicate, CountsNoneAndUnsavedChanges)
{
    const auto context = make<NSManagedObjectContext>(people());
    const auto eva = context->fetch<Person>({.entity = "Person"}).at(0);
    const auto last = insertPerson(context, "New");

    EXPECT_THAT(namesIn(context, NSPredicate::make("friends.@count = 0")), ElementsAre("New"));
    eva->friends.insert(last);
    EXPECT_THAT(namesIn(context, NSPredicate::make("friends.@count = 3")), ElementsAre("Eva"));
    context->delete_(context->fetch<Person>({.entity = "Person"}).at(1));
    EXPECT_THAT(namesIn(context, NSPredicate::make("friends.@count = 2")), ElementsAre("Eva"));
    EXPECT_THAT(namesIn(context, NSPredicate::make("employer.staff.@count = 1")), ElementsAre("Eva"));
}

TEST(NSPredicate, MatchesWholeTexts)
{
    EXPECT_THAT(found("name MATCHES '[AE].a'"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("name MATCHES 'v'"), IsEmpty());
    EXPECT_THAT(found("name MATCHES[c] 'b\\wB'"), ElementsAre("Bob"));
    EXPECT_THAT(found("employer.name MATCHES '.*'"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("ANY friends.name MATCHES %@", {"A.*|B.*"}), ElementsAre("Eva"));
    EXPECT_THAT(found("ALL friends.name MATCHES %@", {"A.*|B.*"}), ElementsAre("Eva"));
    EXPECT_THAT(found(PredicateKey("name").matches("B|EVA", {.ignoresCase = true})), ElementsAre("Eva"));
    EXPECT_THAT(failureOf([] { PredicateKey("name").matches("("); }), Optional(Kind::InvalidPredicate));
}

TEST(NSPredicate, MatchesEmptyTextsAndNoLineEnds)
{
    const auto context = peopleContext();
    insertPerson(context, "");
    insertPerson(context, "a\nb");
    context->save();

    EXPECT_THAT(found(context->persistentStore(), NSPredicate::make("name MATCHES ''")), ElementsAre(""));
    EXPECT_THAT(found(context->persistentStore(), NSPredicate::make("name MATCHES '.*'")), ElementsAre(""));
    EXPECT_THAT(
        found(context->persistentStore(), NSPredicate::make("name MATCHES '(?s).+'")), ElementsAre("a\nb"));
}

TEST(NSPredicate, OrderAndLimitHoldForWhatMatches)
{
    const auto context = make<NSManagedObjectContext>(people());
    const NSFetchRequest request{.entity = "Person",
        .predicate = NSPredicate::make("name MATCHES '.+' AND age != nil"),
        .sortDescriptors = {{"age", false}},
        .fetchLimit = 1,
        .fetchOffset = 1};

    EXPECT_THAT(namesOf(context->fetch<Person>(request)), ElementsAre("Eva"));
    EXPECT_THAT(namesOf(make<NSManagedObjectContext>(context)->fetch<Person>(request)), ElementsAre("Eva"));
}

TEST(NSPredicate, APatternThatTakesTooLongIsRefused)
{
    const auto context = peopleContext();
    insertPerson(context, std::string(40, 'a'));

    EXPECT_THAT(failureOf([&] { namesIn(context, NSPredicate::make("name MATCHES '(a+)+b'")); }),
        Optional(Kind::InvalidPredicate));
}

TEST(NSPredicate, ComparesObjectsAndTheirNames)
{
    const auto store = people();
    const auto context = make<NSManagedObjectContext>(store);
    const auto eva = context->fetch<Person>({.entity = "Person"}).at(0);
    const auto bob = context->fetch<Person>({.entity = "Person"}).at(2);

    EXPECT_THAT(found(store, NSPredicate::make("SELF = %@", {eva})), ElementsAre("Eva"));
    EXPECT_THAT(found(store, NSPredicate::make("SELF != %@", {eva->objectID()})), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(found(store, NSPredicate::make("spouse = %@", {bob})), ElementsAre("Ada"));
    EXPECT_THAT(found(store, NSPredicate::make("ANY friends = %@", {eva})), ElementsAre("Ada", "Bob"));
    EXPECT_THAT(
        found(store, NSPredicate::make("SELF IN %@", {std::vector{bob, eva}})), ElementsAre("Eva", "Bob"));
    EXPECT_THAT(fetchFailure("employer = %@", {eva}), Optional(Kind::InvalidPredicate));
}

TEST(NSPredicate, SeesUnsavedChangesOfAllObjectsThatDecide)
{
    const auto context = make<NSManagedObjectContext>(people());
    const auto acme = context->fetch<Company>({.entity = "Company"}).at(0);
    acme->name = "Other";
    insertPerson(context, "New")->employer = acme;

    EXPECT_THAT(
        namesIn(context, NSPredicate::make("employer.name = 'Other'")), ElementsAre("Eva", "Ada", "New"));
    EXPECT_THAT(namesIn(context, NSPredicate::make("employer.name = 'Acme'")), IsEmpty());
    EXPECT_THAT(namesIn(context, NSPredicate::make("SELF = %@", {context->insertedObjects().at(0)})),
        ElementsAre("New"));

    context->delete_(context->fetch<Person>({.entity = "Person"}).at(0));
    EXPECT_THAT(namesIn(context, NSPredicate::make("ANY employer.staff.name = 'Eva'")), IsEmpty());
    EXPECT_THAT(namesIn(context, NSPredicate::make("ANY friends != nil")), IsEmpty());
}

TEST(NSPredicate, AChildSeesWhatItsParentHasNotSaved)
{
    const auto parent = make<NSManagedObjectContext>(people());
    parent->fetch<Person>({.entity = "Person"}).at(0)->age = 41;
    const auto child = make<NSManagedObjectContext>(parent);

    EXPECT_THAT(namesIn(child, NSPredicate::make("age > 39")), ElementsAre("Eva", "Ada"));
    child->fetch<Person>({.entity = "Person"}).at(2)->age = 50;
    EXPECT_THAT(namesIn(child, NSPredicate::make("age > 40")), ElementsAre("Eva", "Bob"));
}

TEST(NSPredicate, LimitsCountWhatIsFulfilled)
{
    const auto store = people();
    const NSFetchRequest request{.entity = "Person",
        .predicate = NSPredicate::make("age != nil"),
        .sortDescriptors = {{"name", false}},
        .fetchLimit = 1,
        .fetchOffset = 1};

    EXPECT_THAT(namesOf(make<NSManagedObjectContext>(store)->fetch<Person>(request)), ElementsAre("Ada"));
    EXPECT_THAT(namesOf(changedContext(store)->fetch<Person>(request)), ElementsAre("Ada"));
}

TEST(NSPredicate, ValuesAreNeverReadAsText)
{
    const std::string forged = "' OR 1 = 1; DROP TABLE Person; --";

    EXPECT_THAT(found("name = %@", {forged}), IsEmpty());
    EXPECT_THAT(found("name != %@", {forged}), ElementsAre("Eva", "Ada", "Bob"));
    EXPECT_THAT(found("name = \"\\\" OR 1 = 1 --\""), IsEmpty());
}

TEST(NSPredicate, ComparesIntegersWithNumbersBeyondThemAll)
{
    EXPECT_THAT(found("age > -1e300"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("age < 1e300"), ElementsAre("Eva", "Ada"));
    EXPECT_THAT(found("age < -1e300 OR age > 1e300"), IsEmpty());
    EXPECT_THAT(found("age > 29.5 AND age < 30.5"), ElementsAre("Eva"));
}

TEST(NSPredicate, FetchesWithTheLargestThatThereAre)
{
    EXPECT_THAT(found("age = 30" + repeated(" OR age = 1", 199)), ElementsAre("Eva"));
    EXPECT_THAT(found("age = 30" + repeated(" OR age = 1", 9'999)), ElementsAre("Eva"));
    EXPECT_THAT(found(repeated("NOT (age = 1 AND ", 49) + "age = 30" + repeated(")", 49)),
        ElementsAre("Eva", "Ada", "Bob"));
    EXPECT_THAT(found(repeated("(name = 'Eva' AND (age = 2 OR ", 3)
                    + "ANY friends.friends.friends.name = 'Ada'" + repeated("))", 3)),
        ElementsAre("Eva"));
    EXPECT_THAT(found("NOT (isActive = NO OR (age = 2 AND (age = 3 OR (age = 4 AND (age = 5 OR (age = 6 AND "
                      "ANY employer.staff.friends.spouse.name = spouse.spouse.spouse.name))))))"),
        ElementsAre("Eva", "Ada", "Bob"));
    std::vector<int> numbers(29'999, 7);
    numbers.push_back(40);
    EXPECT_THAT(found("age IN %@", {numbers}), ElementsAre("Ada"));
}

TEST(NSPredicate, RefusesWhatDoesNotFitTheEntity)
{
    for (const auto* const text :
        {"size = 1", "employer.size = 1", "name.size = 1", "age = 'x'", "name = 1", "isActive = 1",
            "friends.age = 1", "friends = nil", "ANY age = 1", "age LIKE 'x'", "age < nil", "employer < nil",
            "age = name", "employer = spouse", "name CONTAINS nil", "born = 1", "tag = 'x'", "employer = 1",
            "ANY friends.name = friends.name", "ALL age = 1", "friends.@count = 'x'",
            "friends.@count LIKE 'x'", "spouse.@count = 1", "name.@count = 1", "ANY friends.@count = 1",
            "friends.spouse.@count = 1", "friends.@count > nil", "age MATCHES 'x'", "born MATCHES 'x'"})
        EXPECT_THAT(fetchFailure(text), Optional(Kind::InvalidPredicate)) << text;
    EXPECT_THAT(fetchFailure("rate = %@", {std::numeric_limits<double>::quiet_NaN()}),
        Optional(Kind::InvalidPredicate));
    EXPECT_THAT(fetchFailure("age = %@", {std::numeric_limits<std::uint64_t>::max()}),
        Optional(Kind::InvalidPredicate));
}
