#pragma once

/// @file
/// Log entries about stored objects.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Utilities/Log/Entries.hpp"
#include <concepts>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

class NSManagedObject;

namespace Log {

/// What was found in a relationship.
struct RelationProblem {
    /// The key of the relationship.
    std::string_view relation = {};
    /// What does not belong there; null when there is nothing.
    Any value = {};
};

} // namespace Log

namespace detail {

ORRENBY_EXPORT void logInvalidRelation(const NSManagedObject& object, const Log::RelationProblem& problem);

} // namespace detail

namespace Log {

/// Reports that a relationship of a stored object holds what does not belong there, at the level `critical`.
///
/// @snippet Tests/Utilities/Log+ModelsTests.cpp Reporting a wrong member
///
/// The entry's item is a platform error: its domain names entity and relationship, its user information has
/// "Entity", "Value", "Type" and "Relationship Key", and for a set "Members" and "Member Types" as well. The
/// critical-error handler receives this very error. The entry carries a fixed place, not the caller's. An
/// empty reference is a programming error. Use from the queue of the object's context.
template <std::derived_from<NSManagedObject> T>
void critical(
    Ref<T> object, RelationProblem problem) // by value: the refused texts of `critical` match no better
{
    if (!object)
        fatalError("Empty reference in place of a stored object", "Utilities/Log+Models", 34);
    detail::logInvalidRelation(*object, problem);
}

} // namespace Log

} // namespace orrenby
