#include "Orrenby/Platform/Store/NSPredicate.hpp"

#include "Orrenby/Platform/Net/UUID.hpp"
#include "Tests/Platform/Store/StoreFolder.hpp"
#include "Tests/Platform/Store/StoreParts.hpp"
#include <gmock/gmock.h>
#include <limits>
#include <random>

using namespace orrenby;
using namespace orrenby::tests;
using Kind = StoreError::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

namespace {

using Names = std::vector<std::string>;

/// Eva (30, at Acme, friends with Ada and Bob), Ada (40, at Acme, married to Bob), Bob (no age, rate 2.5),
/// all saved.
Ref<PersistentStore> people()
{
    const auto context = peopleContext();
    const auto acme = context->insert<Company>("Company");
    acme->name = "Acme";
    const auto eva = insertPerson(context, "Eva");
    const auto ada = insertPerson(context, "Ada");
    const auto bob = insertPerson(context, "Bob");
    eva->age = 30;
    ada->age = 40;
    bob->setValue("rate", 2.5);
    eva->employer = acme;
    ada->employer = acme;
    ada->spouse = bob;
    eva->friends.insert(ada);
    eva->friends.insert(bob);
    context->save();
    return context->persistentStore();
}

/// A context whose fetches cannot be left to the store, although nothing is different from it.
Ref<NSManagedObjectContext> changedContext(const Ref<PersistentStore>& store)
{
    const auto context = make<NSManagedObjectContext>(store);
    for (const auto& person : context->fetch<Person>({.entity = "Person"})) {
        const std::string name = person->name;
        person->name = name + "!";
        person->name = name;
    }
    return context;
}

Names namesIn(const Ref<NSManagedObjectContext>& context, const NSPredicate& predicate)
{
    return namesOf(context->fetch<Person>({.entity = "Person", .predicate = predicate}));
}

/// What the store finds, when it is the same that is found in memory.
Names found(const Ref<PersistentStore>& store, const NSPredicate& predicate)
{
    const auto names = namesIn(make<NSManagedObjectContext>(store), predicate);
    EXPECT_EQ(namesIn(changedContext(store), predicate), names) << predicate.description();
    return names;
}

Names found(const NSPredicate& predicate) { return found(people(), predicate); }

Names found(std::string_view format, const std::vector<Any>& arguments = {})
{
    return found(NSPredicate::make(format, arguments));
}

std::optional<std::size_t> wrongByte(std::string_view format, const std::vector<Any>& arguments = {})
{
    const auto outcome = NSPredicate::tryMake(format, arguments);
    return outcome.isSuccess() ? std::nullopt : outcome.error()->context().position;
}

std::optional<Kind> fetchFailure(const NSPredicate& predicate)
{
    return failureOf([&] { namesIn(peopleContext(), predicate); });
}

std::optional<Kind> fetchFailure(std::string_view format, const std::vector<Any>& arguments = {})
{
    return fetchFailure(NSPredicate::make(format, arguments));
}

std::string repeated(std::string_view text, std::size_t count)
{
    std::string result;
    for (std::size_t number = 0; number < count; ++number)
        result += text;
    return result;
}

/// Draws predicates and values for them from few values, so that many are equal.
class Drawing {
public:
    explicit Drawing(unsigned seed)
        : m_engine(seed)
    {}

    std::size_t below(std::size_t count) { return m_engine() % count; }
    template <class T> const T& oneOf(const std::vector<T>& values) { return values[below(values.size())]; }

    Any number()
    {
        constexpr auto most = std::numeric_limits<std::int64_t>::max();
        return oneOf<Any>({0, 1, -1, 2, most, most - 1, -most - 1, 0.5, -0.5, 1.0, 9223372036854775807.0,
            9007199254740993, 9007199254740992.0, std::numeric_limits<double>::infinity()});
    }
    Any integer() { return oneOf<Any>({0, 1, -1, 2, std::numeric_limits<std::int64_t>::max(), nullptr}); }
    Any floating() { return oneOf<Any>({0.0, 0.5, 1.0, -1.0, 9223372036854775807.0, 1e300, nullptr}); }
    std::string text()
    {
        return oneOf<std::string>({"", "a", "A", "ab", "b", "a*b", "\xC3\xA4", "\xC3\x84", "\xFF", "*a", "a?",
            std::string("a\0b", 3), "\\*", "**b"});
    }
    Any date() { return oneOf<Any>({Date(0), Date(1.5), Date::distantFuture(), nullptr}); }
    Any identifier() { return oneOf<Any>({UUID(), *UUID::make("00112233-4455-6677-8899-AABBCCDDEEFF")}); }
    Any bytes() { return oneOf<Any>({Data{}, Data{std::byte(0)}, Data{std::byte(200), std::byte(1)}}); }

    NSPredicate predicate(int depth)
    {
        const auto kind = depth == 0 ? 0 : below(5);
        if (kind == 1)
            return predicate(depth - 1) && predicate(depth - 1);
        if (kind == 2)
            return predicate(depth - 1) || predicate(depth - 1);
        return kind == 3 ? !predicate(depth - 1) : leaf();
    }

private:
    NSPredicate leaf()
    {
        const auto sign = oneOf<std::string>({"=", "!=", "<", "<=", ">", ">="});
        const auto equality = oneOf<std::string>({"=", "!="});
        const auto word = oneOf<std::string>({"BEGINSWITH", "CONTAINS", "ENDSWITH", "LIKE"})
            + oneOf<std::string>({" ", "[c] "});
        const auto numberPath = oneOf<std::string>({"age", "rate", "spouse.age", "spouse.spouse.rate",
            "ANY friends.age", "NONE friends.rate", "ANY employer.staff.age", "ANY spouse.friends.age",
            "ANY friends.spouse.age", "ANY friends.friends.rate"});
        const auto textPath = oneOf<std::string>({"name", "employer.name", "ANY friends.name",
            "ANY friends.employer.name", "spouse.name", "NONE employer.staff.spouse.name"});
        const auto linkPath = oneOf<std::string>({"employer", "spouse", "spouse.employer", "ANY friends",
            "ANY employer.staff", "NONE friends.spouse"});
        switch (below(11)) {
        case 0:
            return NSPredicate::make(numberPath + " " + sign + " %@", {number()});
        case 1:
            return NSPredicate::make(textPath + " " + sign + " %@", {text()});
        case 2:
            return NSPredicate::make(textPath + " " + word + "%@", {text()});
        case 3:
            return NSPredicate::make(linkPath + " " + equality + " nil");
        case 4:
            return NSPredicate::make(numberPath + " BETWEEN {%@, %@}", {number(), number()});
        case 5:
            return NSPredicate::make(numberPath + " IN {%@, %@, nil}", {number(), number()});
        case 6:
            return NSPredicate::make(textPath + " " + word + "spouse.name");
        case 7:
            return NSPredicate::make("age " + sign + " " + oneOf<std::string>({"rate", "spouse.rate"}));
        case 8:
            return NSPredicate::make("born " + equality + " %@ OR isActive = %@", {date(), below(2) == 0});
        case 9:
            return NSPredicate::make("tag " + sign + " %@ OR photo " + sign + " %@", {identifier(), bytes()});
        default:
            return NSPredicate::make("name IN %@", {std::vector<std::string>{text(), text()}});
        }
    }

    std::mt19937 m_engine;
};

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
    EXPECT_THAT(found("FALSEPREDICATE"), IsEmpty());
}

TEST(NSPredicate, ComparesInEverySpelling)
{
    EXPECT_THAT(found("age = 30"), ElementsAre("Eva"));
    EXPECT_THAT(found("age == 30"), ElementsAre("Eva"));
    EXPECT_THAT(found("30 < age"), ElementsAre("Ada"));
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

TEST(NSPredicate, TakesKeysAsArguments)
{
    EXPECT_THAT(found("%K = %@", {"employer.name", "Acme"}), ElementsAre("Eva", "Ada"));
    EXPECT_EQ(NSPredicate::make("%K = 1", {"like"}), NSPredicate::make("#like = 1"));
    EXPECT_THAT(wrongByte("1 = %K", {"a b"}), Optional(4u));
    EXPECT_THAT(failureOf([] { PredicateKey("a..b"); }), Optional(Kind::InvalidPredicate));
}

TEST(NSPredicate, NamesTheByteThatIsWrong)
{
    EXPECT_THAT(wrongByte(""), Optional(0u));
    EXPECT_THAT(wrongByte("age"), Optional(3u));
    EXPECT_THAT(wrongByte("age = "), Optional(6u));
    EXPECT_THAT(wrongByte("age = 1 name = 2"), Optional(8u));
    EXPECT_THAT(wrongByte("(age = 1"), Optional(8u));
    EXPECT_THAT(wrongByte("age = 1)"), Optional(7u));
    EXPECT_THAT(wrongByte("name = 'Eva"), Optional(7u));
    EXPECT_THAT(wrongByte("age = 1.2.3"), Optional(6u));
    EXPECT_THAT(wrongByte("age = 9223372036854775808"), Optional(6u));
    EXPECT_THAT(wrongByte("age = 1e999"), Optional(6u));
    EXPECT_THAT(wrongByte("age = AND"), Optional(6u));
    EXPECT_THAT(wrongByte("age BETWEEN {1}"), Optional(12u));
    EXPECT_THAT(wrongByte("age IN 3"), Optional(7u));
    EXPECT_THAT(wrongByte("age IN {name}"), Optional(8u));
    EXPECT_THAT(wrongByte("name LIKE[d] 'x'"), Optional(10u));
    EXPECT_THAT(wrongByte("employer. name = 'x'"), Optional(9u));
    EXPECT_THAT(wrongByte("3 = 3"), Optional(0u));
    EXPECT_THAT(wrongByte("'a' LIKE name"), Optional(0u));
    EXPECT_THAT(wrongByte("name MATCHES 'x'"), Optional(5u));
    EXPECT_EQ(NSPredicate::tryMake("age").error()->description(),
        "InvalidPredicate: A comparison is expected at 3");
}

TEST(NSPredicate, CountsItsArguments)
{
    EXPECT_THAT(wrongByte("age = %@"), Optional(6u));
    EXPECT_THAT(wrongByte("age = 1", {1}), Optional(7u));
    EXPECT_THAT(wrongByte("age IN %@", {1}), Optional(7u));
    EXPECT_THAT(wrongByte("age = %@", {Any(std::vector<int>{1})}), Optional(6u));
}

TEST(NSPredicate, HasLimits)
{
    EXPECT_THAT(wrongByte(repeated("(", 99) + "age = 1" + repeated(")", 99)), std::nullopt);
    EXPECT_THAT(wrongByte(repeated("(", 100) + "age = 1" + repeated(")", 100)), Optional(99u));
    EXPECT_THAT(wrongByte(repeated("!", 1'000'000)), Optional(99u));
    EXPECT_THAT(wrongByte("age = 0" + repeated(" OR age = 1", 9'999)), std::nullopt);
    EXPECT_FALSE(NSPredicate::tryMake("age = 0" + repeated(" OR age = 1", 10'000)).isSuccess());
    EXPECT_FALSE(NSPredicate::tryMake("age IN %@", {std::vector<int>(30'001)}).isSuccess());
    auto nested = NSPredicate::make("age = 1");
    for (int depth = 1; depth < 100; ++depth)
        nested = !nested;
    EXPECT_THAT(failureOf([&] { !nested; }), Optional(Kind::InvalidPredicate));
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
    for (const auto* const text : {"size = 1", "employer.size = 1", "name.size = 1", "age = 'x'", "name = 1",
             "isActive = 1", "friends.age = 1", "friends = nil", "ANY age = 1", "age LIKE 'x'", "age < nil",
             "employer < nil", "age = name", "employer = spouse", "name CONTAINS nil", "born = 1",
             "tag = 'x'", "employer = 1", "ANY friends.name = friends.name"})
        EXPECT_THAT(fetchFailure(text), Optional(Kind::InvalidPredicate)) << text;
    EXPECT_THAT(fetchFailure("rate = %@", {std::numeric_limits<double>::quiet_NaN()}),
        Optional(Kind::InvalidPredicate));
    EXPECT_THAT(fetchFailure("age = %@", {std::numeric_limits<std::uint64_t>::max()}),
        Optional(Kind::InvalidPredicate));
}

TEST(NSPredicate, PrintsWhatItReads)
{
    const std::string text
        = "(ANY a.b BETWEEN {1, 2.5} OR NOT #like LIKE[c] \"\\\"x\\\\*\") AND SELF IN {nil, TRUE}";
    const auto predicate = NSPredicate::make(text);

    EXPECT_EQ(predicate.description(), text);
    EXPECT_EQ(NSPredicate::make(predicate.description()), predicate);
    EXPECT_EQ(std::hash<NSPredicate>()(predicate), std::hash<NSPredicate>()(NSPredicate::make(text)));
    EXPECT_FALSE(predicate == NSPredicate::make("a = 1"));
    EXPECT_EQ(NSPredicate::make("rate = 1.0").description(), "rate = 1.0");
}

TEST(NSPredicate, TheStoreFindsWhatIsFoundInMemory)
{
    for (unsigned seed = 1; seed <= 12; ++seed) {
        Drawing draw(seed);
        const auto context = peopleContext();
        const auto company = context->insert<Company>("Company");
        company->name = draw.text();
        std::vector<Ref<Person>> everybody;
        for (int number = 0; number < 12; ++number) {
            const auto person = insertPerson(context, draw.text());
            person->setValue("age", draw.integer());
            person->setValue("rate", draw.floating());
            person->setValue("isActive", draw.below(2) == 0);
            person->setValue("born", draw.date());
            if (draw.below(2) == 0) {
                person->setValue("tag", draw.identifier());
                person->setValue("photo", draw.bytes());
                person->employer = company;
            }
            if (!everybody.empty() && draw.below(2) == 0)
                person->spouse = draw.oneOf(everybody);
            for (const auto& other : everybody)
                if (draw.below(4) == 0)
                    person->friends.insert(other);
            everybody.push_back(person);
        }
        std::vector<NSPredicate> predicates;
        std::vector<Names> inMemory;
        for (int number = 0; number < 60; ++number) {
            predicates.push_back(draw.predicate(3));
            inMemory.push_back(namesIn(context, predicates.back()));
        }

        context->save();

        const auto other = make<NSManagedObjectContext>(context->persistentStore());
        for (std::size_t number = 0; number < predicates.size(); ++number)
            EXPECT_EQ(namesIn(other, predicates[number]), inMemory[number])
                << "seed " << seed << ": " << predicates[number].description();
    }
}
