#pragma once

/// @file
/// People to choose from, for the tests of predicates.

#include "Tests/Platform/Store/StoreParts.hpp"
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::tests {

using Names = std::vector<std::string>;

/// Eva (30, at Acme, friends with Ada and Bob), Ada (40, at Acme, married to Bob), Bob (no age, rate 2.5),
/// all saved.
inline Ref<PersistentStore> people()
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
inline Ref<NSManagedObjectContext> changedContext(const Ref<PersistentStore>& store)
{
    const auto context = make<NSManagedObjectContext>(store);
    for (const auto& person : context->fetch<Person>({.entity = "Person"})) {
        const std::string name = person->name;
        person->name = name + "!";
        person->name = name;
    }
    return context;
}

inline Names namesIn(const Ref<NSManagedObjectContext>& context, const NSPredicate& predicate)
{
    return namesOf(context->fetch<Person>({.entity = "Person", .predicate = predicate}));
}

/// What the store finds, when it is the same that is found in memory.
inline Names found(const Ref<PersistentStore>& store, const NSPredicate& predicate)
{
    const auto names = namesIn(make<NSManagedObjectContext>(store), predicate);
    EXPECT_EQ(namesIn(changedContext(store), predicate), names) << predicate.description();
    return names;
}

inline Names found(const NSPredicate& predicate) { return found(people(), predicate); }

inline Names found(std::string_view format, const std::vector<Any>& arguments = {})
{
    return found(NSPredicate::make(format, arguments));
}

inline std::string repeated(std::string_view text, std::size_t count)
{
    std::string result;
    for (std::size_t number = 0; number < count; ++number)
        result += text;
    return result;
}

} // namespace orrenby::tests
