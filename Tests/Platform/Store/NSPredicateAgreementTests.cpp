#include "Orrenby/Platform/Store/NSPredicate.hpp"

#include "Orrenby/Platform/Net/UUID.hpp"
#include "Tests/Platform/Store/PredicateParts.hpp"
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace orrenby;
using namespace orrenby::tests;

namespace {

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
            "ANY friends.spouse.age", "ANY friends.friends.rate", "ALL friends.age",
            "ALL employer.staff.rate", "ALL friends.friends.age", "friends.@count", "employer.staff.@count",
            "spouse.friends.@count", "ANY friends.friends.@count", "ALL employer.staff.friends.@count"});
        const auto textPath = oneOf<std::string>(
            {"name", "employer.name", "ANY friends.name", "ANY friends.employer.name", "spouse.name",
                "NONE employer.staff.spouse.name", "ALL friends.name", "ALL friends.employer.name"});
        const auto linkPath = oneOf<std::string>({"employer", "spouse", "spouse.employer", "ANY friends",
            "ANY employer.staff", "NONE friends.spouse", "ALL friends.spouse", "ALL friends.employer"});
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
            return NSPredicate::make(
                "age " + sign + " " + oneOf<std::string>({"rate", "spouse.rate", "friends.@count"}));
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
