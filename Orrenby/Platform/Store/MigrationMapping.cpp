#include "Orrenby/Platform/Store/MigrationMapping.hpp"
#include "Orrenby/Platform/Store/MigrationPlan.hpp"
#include "Orrenby/Platform/Store/ModelCheck.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include <map>
#include <set>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

bool hasKey(const NSEntityDescription& entity, const std::string& key)
{
    return entity.attribute(key) != nullptr || entity.relationship(key) != nullptr;
}

} // namespace

const Any& MigratedObject::oldValue(std::string_view key) const
{
    const auto slot = m_from.attributeIndex(key);
    if (slot == NSEntityDescription::none)
        detail::throwMigrationFailed("There was no attribute " + std::string(key), std::string(key));
    return m_oldValues[slot];
}

void MigratedObject::setValue(std::string_view key, Any value)
{
    const auto slot = m_to.attributeIndex(key);
    if (slot == NSEntityDescription::none)
        detail::throwMigrationFailed("There is no attribute " + std::string(key), std::string(key));
    if (!value.isNull() && !detail::isOfKind(value, m_to.attributes()[slot].kind))
        detail::throwMigrationFailed(
            "The value for " + std::string(key) + " is of another kind", std::string(key));
    m_newValues[slot] = std::move(value);
}

struct MigrationMapping::Rules {
    std::map<std::string, std::string> entities;                     // the old name of each
    std::map<std::pair<std::string, std::string>, std::string> keys; // by entity and new key
    std::set<std::string> droppedEntities;
    std::set<std::pair<std::string, std::string>> droppedKeys;
    std::map<std::string, Change> changes;
};

MigrationMapping::MigrationMapping()
    : m_rules(detail::Owned<Rules>::make())
{}
MigrationMapping::MigrationMapping(const MigrationMapping& other)
    : m_rules(detail::Owned<Rules>::make(*other.m_rules))
{}
MigrationMapping& MigrationMapping::operator=(const MigrationMapping& other)
{
    *m_rules = *other.m_rules;
    return *this;
}
MigrationMapping::~MigrationMapping() = default;

void MigrationMapping::renameEntity(std::string from, std::string to)
{
    m_rules->entities[std::move(to)] = std::move(from);
}
void MigrationMapping::renameKey(std::string entity, std::string from, std::string to)
{
    m_rules->keys[{std::move(entity), std::move(to)}] = std::move(from);
}
void MigrationMapping::dropEntity(std::string entity) { m_rules->droppedEntities.insert(std::move(entity)); }
void MigrationMapping::dropKey(std::string entity, std::string key)
{
    m_rules->droppedKeys.emplace(std::move(entity), std::move(key));
}
void MigrationMapping::change(std::string entity, Change change)
{
    m_rules->changes[std::move(entity)] = std::move(change);
}

const std::string& MigrationMapping::oldEntity(const std::string& entity) const
{
    const auto found = m_rules->entities.find(entity);
    return found != m_rules->entities.end() ? found->second : entity;
}
const std::string& MigrationMapping::oldKey(const std::string& entity, const std::string& key) const
{
    const auto found = m_rules->keys.find({entity, key});
    return found != m_rules->keys.end() ? found->second : key;
}
bool MigrationMapping::isDropped(const std::string& entity) const
{
    return m_rules->droppedEntities.count(entity) != 0;
}
bool MigrationMapping::isDropped(const std::string& entity, const std::string& key) const
{
    return m_rules->droppedKeys.count({entity, key}) != 0;
}
const MigrationMapping::Change* MigrationMapping::changeFor(const std::string& entity) const
{
    const auto found = m_rules->changes.find(entity);
    return found != m_rules->changes.end() ? &found->second : nullptr;
}

void MigrationMapping::checkNames(const NSManagedObjectModel& from, const NSManagedObjectModel& to) const
{
    const auto require = [](bool isKnown, const std::string& name) {
        if (!isKnown)
            detail::throwMigrationFailed("The step says something of " + name + ", which there is not", name);
    };
    const auto requireKey = [&](const Ref<const NSEntityDescription>& entity, const std::string& key) {
        require(entity && hasKey(*entity, key), key);
    };
    for (const auto& [name, oldName] : m_rules->entities) {
        require(to.entity(name) != nullptr, name);
        require(from.entity(oldName) != nullptr, oldName);
    }
    for (const auto& [place, oldKey] : m_rules->keys) {
        requireKey(to.entity(place.first), place.second);
        requireKey(from.entity(oldEntity(place.first)), oldKey);
    }
    for (const auto& name : m_rules->droppedEntities)
        require(from.entity(name) != nullptr, name);
    for (const auto& [entity, key] : m_rules->droppedKeys)
        requireKey(from.entity(oldEntity(entity)), key);
    for (const auto& rule : m_rules->changes)
        require(to.entity(rule.first) != nullptr, rule.first);
}

std::string MigrationMapping::description() const
{
    std::string text;
    for (const auto& [to, from] : m_rules->entities)
        text += to + " was " + from + '\n';
    for (const auto& [key, from] : m_rules->keys)
        text += key.first + '.' + key.second + " was " + from + '\n';
    for (const auto& entity : m_rules->droppedEntities)
        text += entity + " is dropped\n";
    for (const auto& [entity, key] : m_rules->droppedKeys)
        text += entity + '.' + key + " is dropped\n";
    for (const auto& rule : m_rules->changes)
        text += rule.first + " is changed\n";
    return text;
}

} // namespace orrenby
