#pragma once

/// @file
/// What a step of a migration takes from where. Not in the umbrella header: migrations keep it to themselves.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Store/MigrationMapping.hpp"
#include <cstddef>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

class NSEntityDescription;
class NSManagedObjectModel;
struct MigrationStep;

namespace detail {

struct ResolvedRelationship;

[[noreturn]] void throwMigrationFailed(std::string message, std::string key = {});

/// Both models of a step, and its mapping between them. Valid as long as the step.
class MigrationPlan {
public:
    explicit MigrationPlan(const MigrationStep& step);

    const NSManagedObjectModel& from() const noexcept { return m_from; }
    const NSManagedObjectModel& to() const noexcept { return m_to; }
    const MigrationMapping& mapping() const noexcept { return m_mapping; }

    /// The entity that was called so before, or is now; nothing for one that is new or given up.
    Ref<const NSEntityDescription> oldEntity(const NSEntityDescription& entity) const;

    /// Where the values of an attribute, a relationship come from; nothing when they are new.
    std::optional<std::size_t> oldAttribute(
        const NSEntityDescription& from, const NSEntityDescription& to, std::size_t attribute) const;
    const ResolvedRelationship* oldRelationship(const NSEntityDescription& from,
        const NSEntityDescription& to, const ResolvedRelationship& relationship) const;

    /// Throws a `StoreError` when something has no place in the later model and is not given up, and when the
    /// mapping names what there is not.
    void checkNothingIsLost() const;

private:
    Ref<const NSEntityDescription> newEntity(const std::string& oldName) const;
    template <class Test>
    void checkKept(const NSEntityDescription& entity, const std::string& key, Test&& test) const;

    const NSManagedObjectModel& m_from;
    const NSManagedObjectModel& m_to;
    MigrationMapping m_mapping;
};

} // namespace detail

} // namespace orrenby
