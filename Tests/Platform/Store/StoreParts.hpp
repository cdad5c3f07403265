#pragma once

/// @file
/// People and companies for the tests of the store.

#include "Orrenby/Platform/Store/ManagedMembers.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include <string>
#include <utility>
#include <vector>

namespace orrenby::tests {

class Company;

class Person : public NSManagedObject {
public:
    using NSManagedObject::NSManagedObject;

    Attribute<std::string, "name"> name{*this};
    Attribute<std::optional<std::int64_t>, "age"> age{*this};
    ToOne<Company, "employer"> employer{*this};
    ToOne<Person, "spouse"> spouse{*this};
    ToMany<Person, "friends"> friends{*this};
};

class Company : public NSManagedObject {
public:
    using NSManagedObject::NSManagedObject;

    Attribute<std::string, "name"> name{*this};
    ToMany<Person, "staff"> staff{*this};
};

inline Ref<const NSManagedObjectModel> peopleModel(DeleteRule staffRule = DeleteRule::Nullify)
{
    return NSManagedObjectModel::make(1,
        {{.name = "Person",
             .attributes = {{.name = "name"}, {.name = "age", .kind = AttributeKind::Int, .isOptional = true},
                 {.name = "rate", .kind = AttributeKind::Double, .isOptional = true},
                 {.name = "isActive", .kind = AttributeKind::Bool, .defaultValue = true},
                 {.name = "photo", .kind = AttributeKind::Bytes, .isOptional = true},
                 {.name = "born", .kind = AttributeKind::Date, .isOptional = true},
                 {.name = "tag", .kind = AttributeKind::UUID, .isOptional = true}},
             .relationships = {{.name = "employer", .destination = "Company", .inverse = "staff"},
                 {.name = "spouse", .destination = "Person", .inverse = "spouse"},
                 {.name = "friends", .destination = "Person", .inverse = "friends", .isToMany = true}},
             .objectClass = managedObjectClass<Person>},
            {.name = "Company",
                .attributes = {{.name = "name", .defaultValue = "Company"}},
                .relationships = {{.name = "staff",
                    .destination = "Person",
                    .inverse = "employer",
                    .isToMany = true,
                    .deleteRule = staffRule}},
                .objectClass = managedObjectClass<Company>}});
}

inline Ref<NSManagedObjectContext> peopleContext(DeleteRule staffRule = DeleteRule::Nullify)
{
    return make<NSManagedObjectContext>(PersistentStore::open(peopleModel(staffRule)));
}

inline Ref<Person> insertPerson(const Ref<NSManagedObjectContext>& context, std::string name)
{
    auto person = context->insert<Person>("Person");
    person->name = std::move(name);
    return person;
}

/// A company with one employee, who has one friend; saved.
struct Team {
    Ref<NSManagedObjectContext> context;
    Ref<Company> company;
    Ref<Person> a; ///< The employee.
    Ref<Person> b; ///< The friend.
};

inline Team savedTeam(DeleteRule staffRule = DeleteRule::Nullify)
{
    const auto context = peopleContext(staffRule);
    const Team team{
        context, context->insert<Company>("Company"), insertPerson(context, "a"), insertPerson(context, "b")};
    team.company->staff.insert(team.a);
    team.a->friends.insert(team.b);
    context->save();
    return team;
}

inline NSFetchRequest peopleByName() { return {.entity = "Person", .sortDescriptors = {{"name"}}}; }

inline std::vector<std::string> namesOf(const std::vector<Ref<Person>>& people)
{
    std::vector<std::string> names;
    for (const auto& person : people)
        names.push_back(person->name);
    return names;
}

/// The names of all people, by name.
inline std::vector<std::string> storedNames(const Ref<PersistentStore>& store)
{
    const auto context = make<NSManagedObjectContext>(store);
    return namesOf(context->fetch<Person>(peopleByName()));
}

} // namespace orrenby::tests
