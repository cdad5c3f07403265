#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include "Orrenby/Platform/Store/ModelCheck.hpp"
#include "Orrenby/Platform/Store/StoreOutcome.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

using detail::RelationshipStorage;
using detail::ResolvedRelationship;

Ref<const NSManagedObjectModel> NSManagedObjectModel::make(
    std::int64_t version, std::vector<EntityOptions> entities)
{
    return std::make_shared<const NSManagedObjectModel>(Private{}, version, std::move(entities));
}

Result<Ref<const NSManagedObjectModel>, StoreError> NSManagedObjectModel::tryMake(
    std::int64_t version, std::vector<EntityOptions> entities)
{
    return detail::storeOutcome([&] { return make(version, std::move(entities)); });
}

NSManagedObjectModel::NSManagedObjectModel(Private, std::int64_t version, std::vector<EntityOptions> entities)
    : m_version(version)
{
    if (version < 1)
        detail::throwInvalidModel("A model's version is 1 or more, not " + std::to_string(version));
    detail::checkEntities(entities);
    std::sort(entities.begin(), entities.end(),
        [](const EntityOptions& first, const EntityOptions& second) { return first.name < second.name; });
    for (auto& options : entities)
        m_entities.push_back(std::make_unique<NSEntityDescription>(std::move(options)));
    for (const auto& entity : m_entities)
        tie(*entity);
    for (const auto& entity : m_entities)
        findStorage(*entity);

    std::string schema;
    for (const auto& statement : detail::schemaStatements(*this))
        schema += statement + ";\n";
    m_checksum = detail::checksumOf(schema);
}

Ref<const NSEntityDescription> NSManagedObjectModel::entity(std::string_view name) const
{
    const auto* const found = find(name);
    return found != nullptr ? Ref<const NSEntityDescription>(shared_from_this(), found) : nullptr;
}

std::vector<Ref<const NSEntityDescription>> NSManagedObjectModel::entities() const
{
    std::vector<Ref<const NSEntityDescription>> result;
    for (const auto& entity : m_entities)
        result.emplace_back(weak_from_this().lock(), entity.get());
    return result;
}

NSEntityDescription* NSManagedObjectModel::find(std::string_view name) const
{
    for (const auto& entity : m_entities)
        if (entity->name() == name)
            return entity.get();
    return nullptr;
}

void NSManagedObjectModel::tie(NSEntityDescription& entity)
{
    for (ResolvedRelationship& relationship : entity.m_relationships) {
        const auto& description = relationship.description;
        const auto place = *entity.name() + "." + description.name;
        const auto* const destination = find(description.destination);
        if (destination == nullptr)
            detail::throwInvalidModel(place + " leads to an unknown entity: " + description.destination);
        relationship.destination = destination;
        if (description.inverse.empty())
            continue;
        const auto index = destination->relationshipIndex(description.inverse);
        if (index == NSEntityDescription::none)
            detail::throwInvalidModel(place + " has an unknown inverse: " + description.inverse);
        const auto& inverse = destination->m_relationships[index].description;
        if (inverse.destination != *entity.name() || inverse.inverse != description.name)
            detail::throwInvalidModel(place + " has an inverse that leads elsewhere: " + description.inverse);
        relationship.inverse = index;
    }
}

void NSManagedObjectModel::findStorage(NSEntityDescription& entity)
{
    for (ResolvedRelationship& relationship : entity.m_relationships) {
        if (!relationship.description.isToMany)
            continue;
        const auto ownName = *entity.name() + "." + relationship.description.name;
        const auto* const inverse = relationship.inverse
            ? &relationship.destination->m_relationships[*relationship.inverse]
            : nullptr;
        if (inverse != nullptr && !inverse->description.isToMany) {
            relationship.storage = RelationshipStorage::InverseColumn;
            continue;
        }
        // Both ends use the table of the end whose name comes first.
        const auto inverseName = inverse != nullptr
            ? *relationship.destination->name() + "." + inverse->description.name
            : ownName;
        relationship.storage = RelationshipStorage::JoinTable;
        relationship.writesJoinTable = ownName <= inverseName;
        relationship.joinTable = std::min(ownName, inverseName);
        relationship.ownColumn = relationship.writesJoinTable ? "source" : "target";
        relationship.otherColumn = relationship.writesJoinTable ? "target" : "source";
    }
}

} // namespace orrenby
