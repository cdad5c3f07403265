#pragma once

/// @file
/// A predicate that was checked against an entity. Not in the umbrella header: between contexts and stores.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Store/AttributeDescription.hpp"
#include "Orrenby/Platform/Store/PredicateTree.hpp"
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class NSEntityDescription;
class NSPredicate;

namespace detail {

class ContextState;
struct ManagedRecord;
struct ResolvedRelationship;

/// A path whose keys were found.
struct CheckedPath {
    struct Hop {
        const ResolvedRelationship* relationship;
        std::size_t index; ///< Among those of its entity.
    };

    std::vector<Hop> hops = {};
    /// The relationship whose objects are counted at the end.
    std::optional<Hop> counted = {};
    std::optional<std::size_t> slot = {};   ///< Of the value at the end; without one the object's own key.
    std::string column = {};                ///< Of that value, as statements spell it; empty for a number of
                                            ///< objects.
    std::optional<AttributeKind> kind = {}; ///< Of an attribute, or a number of objects.
    const NSEntityDescription* object = nullptr; ///< Of an object's key.

    /// The first relationship at or after `hop` that has many objects; the number of hops when there is none.
    std::size_t nextToMany(std::size_t hop) const;
};

struct CheckedPredicate {
    PredicateKind kind = PredicateKind::True;
    std::vector<CheckedPredicate> children = {};
    PredicateOperator operation = PredicateOperator::Equal;
    bool ignoresCase = false;
    CheckedPath left = {};
    std::optional<CheckedPath> right = {};
    std::vector<Any> values = {};
    /// What the values have to match.
    std::optional<RegularExpression> pattern = {};
    /// Whether a value is wanted for which the comparison does not hold.
    bool isUnfulfilled = false;
};

struct PredicatePlan {
    CheckedPredicate root = {};
    /// Those whose objects decide, but for the entity itself.
    std::vector<const NSEntityDescription*> otherEntities = {};
    /// Whether the storage engine takes it; else it is evaluated in memory.
    bool isTranslatable = true;
};

/// Throws a `StoreError` of the kind `InvalidPredicate` when the entity has no such keys, or its values are
/// of another kind. Empty for a predicate that everything fulfils.
Ref<const PredicatePlan> planPredicate(const NSPredicate& predicate, const NSEntityDescription& entity);

/// Whether the object as its context sees it fulfils the predicate.
bool fulfils(ContextState& state, const Ref<ManagedRecord>& record, const CheckedPredicate& predicate);

/// The condition for rows of the table `t0`, and the values to bind in their order. Nothing but names from
/// the model and question marks.
std::string translatePredicate(const CheckedPredicate& predicate, std::vector<Any>& values);

} // namespace detail

} // namespace orrenby
