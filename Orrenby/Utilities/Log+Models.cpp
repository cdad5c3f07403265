#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include "Orrenby/Utilities/Log+Models.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI::detail {

void logInvalidRelation(const NSManagedObject& object, const Log::RelationProblem& problem)
{
    const auto& entity = object.entity()->name();
    Dictionary userInfo;
    if (entity)
        userInfo.set("Entity", *entity);
    userInfo.set("Value", problem.value);
    userInfo.set("Type", problem.value.isNull() ? "Optional<Any>" : problem.value.typeName());
    userInfo.set("Relationship Key", problem.relation);
    if (const auto* const set = problem.value.get<NSSet>()) {
        Array types;
        for (const Any& member : set->allObjects())
            types.push_back(member.typeName());
        userInfo.set("Member Types", types);
        userInfo.set("Members", set->allObjects());
    }
    // The blank belongs to the domain, before the entity's name.
    const auto domain = "InvalidObjectInCoreDataRelationship " + entity.value_or("") + ":"
        + std::string(problem.relation);
    Log::_append([] { return false; }, Log::Level::critical, NSError(domain, 0, std::move(userInfo)),
        Dictionary(), CallSite("Utilities/Log+Models", 34, "critical(_:relation:value:)"));
}

} // namespace orrenby::inline ORRENBY_ABI::detail
