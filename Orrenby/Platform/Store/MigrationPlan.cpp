#include "Orrenby/Platform/Store/MigrationPlan.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include "Orrenby/Platform/Store/StoreMigration.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

void throwMigrationFailed(std::string message, std::string key)
{
    throw StoreError(
        StoreError::Kind::MigrationFailed, {.message = std::move(message), .key = std::move(key)});
}

MigrationPlan::MigrationPlan(const MigrationStep& step)
    : m_from(*step.from)
    , m_to(*step.to)
{
    if (step.mapping)
        step.mapping(m_mapping);
}

Ref<const NSEntityDescription> MigrationPlan::oldEntity(const NSEntityDescription& entity) const
{
    const auto& name = m_mapping.oldEntity(*entity.name());
    return m_mapping.isDropped(name) ? nullptr : m_from.entity(name);
}

Ref<const NSEntityDescription> MigrationPlan::newEntity(const std::string& oldName) const
{
    for (const auto& entity : m_to.entities())
        if (m_mapping.oldEntity(*entity->name()) == oldName)
            return entity;
    return nullptr;
}

std::optional<std::size_t> MigrationPlan::oldAttribute(
    const NSEntityDescription& from, const NSEntityDescription& to, std::size_t attribute) const
{
    const auto& described = to.attributes()[attribute];
    const auto& key = m_mapping.oldKey(*to.name(), described.name);
    const auto found = from.attributeIndex(key);
    const bool isTaken = found != NSEntityDescription::none && from.attributes()[found].kind == described.kind
        && !m_mapping.isDropped(*to.name(), key);
    return isTaken ? std::optional(found) : std::nullopt;
}

const ResolvedRelationship* MigrationPlan::oldRelationship(const NSEntityDescription& from,
    const NSEntityDescription& to, const ResolvedRelationship& relationship) const
{
    const auto& key = m_mapping.oldKey(*to.name(), relationship.description.name);
    const auto found = from.relationshipIndex(key);
    if (found == NSEntityDescription::none || m_mapping.isDropped(*to.name(), key))
        return nullptr;
    const auto& old = from.relationships()[found];
    const bool isSame = old.storage == relationship.storage
        && *old.destination->name() == m_mapping.oldEntity(*relationship.destination->name())
        && !m_mapping.isDropped(*old.destination->name());
    return isSame ? &old : nullptr;
}

template <class Test>
void MigrationPlan::checkKept(const NSEntityDescription& entity, const std::string& key, Test&& test) const
{
    if (!m_mapping.isDropped(*entity.name(), key) && !test())
        throwMigrationFailed("The step would drop the values of " + *entity.name() + "." + key, key);
}

void MigrationPlan::checkNothingIsLost() const
{
    m_mapping.checkNames(m_from, m_to);
    for (const auto& old : m_from.entities()) {
        const auto& name = *old->name();
        if (m_mapping.isDropped(name))
            continue;
        const auto entity = newEntity(name);
        if (!entity)
            throwMigrationFailed("The step would drop the entity " + name, name);
        for (std::size_t slot = 0; slot < old->attributes().size(); ++slot)
            checkKept(*entity, old->attributes()[slot].name, [&] {
                for (std::size_t index = 0; index < entity->attributes().size(); ++index)
                    if (oldAttribute(*old, *entity, index) == slot)
                        return true;
                return false;
            });
        for (const auto& relationship : old->relationships())
            if (relationship.storage != RelationshipStorage::InverseColumn)
                checkKept(*entity, relationship.description.name, [&] {
                    for (const auto& newer : entity->relationships())
                        if (oldRelationship(*old, *entity, newer) == &relationship)
                            return true;
                    return false;
                });
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
