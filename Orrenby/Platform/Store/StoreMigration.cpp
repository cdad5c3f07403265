#include "Orrenby/Platform/Store/StoreMigration.hpp"

#include "Orrenby/Platform/Store/Connection.hpp"
#include "Orrenby/Platform/Store/ModelCheck.hpp"
#include "Orrenby/Platform/Store/RowReading.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using detail::quotedName;
using detail::RelationshipStorage;

[[noreturn]] void fail(std::string message, std::string key = {})
{
    throw StoreError(
        StoreError::Kind::MigrationFailed, {.message = std::move(message), .key = std::move(key)});
}

[[noreturn]] void refuse(std::string message)
{
    throw StoreError(StoreError::Kind::SchemaMismatch, {.message = std::move(message)});
}

// No name of a model has a dot in front.
std::string oldTable(const std::string& name) { return quotedName(".old." + name); }

/// One step, inside a transaction.
class Migration {
public:
    Migration(detail::Connection& connection, const MigrationStep& step)
        : m_connection(connection)
        , m_from(*step.from)
        , m_to(*step.to)
    {
        if (step.mapping)
            step.mapping(m_mapping);
    }

    std::int64_t run()
    {
        checkNothingIsLost();
        setOldTablesAside();
        std::vector<std::string> indexes;
        for (const auto& sql : detail::schemaStatements(m_to))
            if (sql.starts_with("CREATE INDEX"))
                indexes.push_back(sql); // named as the old ones are, which are still there
            else
                m_connection.execute(sql);
        std::int64_t count = 0;
        for (const auto& entity : m_to.entities())
            count += copyObjects(*entity);
        for (const auto& entity : m_to.entities())
            copyPairs(*entity);
        dropOldTables();
        for (const auto& sql : indexes)
            m_connection.execute(sql);
        keepKeys();
        if (m_connection.prepare("PRAGMA foreign_key_check").step())
            fail("A reference leads to an object that is no longer there");
        auto update = m_connection.prepare("UPDATE _store SET value = CASE name WHEN 'version' THEN ?"
                                           " WHEN 'checksum' THEN ? ELSE value END");
        update.bindText(1, std::to_string(m_to.version()));
        update.bindText(2, m_to.checksum());
        update.run();
        return count;
    }

private:
    /// The entity that was called so before, or is now; nothing for one that is new or given up.
    Ref<const NSEntityDescription> oldEntity(const NSEntityDescription& entity) const
    {
        const auto& name = m_mapping.oldEntity(*entity.name());
        return m_mapping.isDropped(name) ? nullptr : m_from.entity(name);
    }

    Ref<const NSEntityDescription> newEntity(const std::string& oldName) const
    {
        for (const auto& entity : m_to.entities())
            if (m_mapping.oldEntity(*entity->name()) == oldName)
                return entity;
        return nullptr;
    }

    std::optional<std::size_t> oldAttribute(
        const NSEntityDescription& from, const NSEntityDescription& to, std::size_t attribute) const
    {
        const auto& described = to.attributes()[attribute];
        const auto& key = m_mapping.oldKey(*to.name(), described.name);
        const auto found = from.attributeIndex(key);
        const bool isTaken = found != NSEntityDescription::none
            && from.attributes()[found].kind == described.kind && !m_mapping.isDropped(*to.name(), key);
        return isTaken ? std::optional(found) : std::nullopt;
    }

    const detail::ResolvedRelationship* oldRelationship(const NSEntityDescription& from,
        const NSEntityDescription& to, const detail::ResolvedRelationship& relationship) const
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

    void checkNothingIsLost() const
    {
        for (const auto& old : m_from.entities()) {
            const auto& name = *old->name();
            if (m_mapping.isDropped(name))
                continue;
            const auto entity = newEntity(name);
            if (!entity)
                fail("The step would drop the entity " + name, name);
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

    template <class Test>
    void checkKept(const NSEntityDescription& entity, const std::string& key, Test&& test) const
    {
        if (!m_mapping.isDropped(*entity.name(), key) && !test())
            fail("The step would drop the values of " + *entity.name() + "." + key, key);
    }

    std::vector<std::string> oldTables() const
    {
        std::vector<std::string> names;
        for (const auto& entity : m_from.entities()) {
            names.push_back(*entity->name());
            for (const auto& relationship : entity->relationships())
                if (relationship.writesJoinTable)
                    names.push_back(relationship.joinTable);
        }
        return names;
    }

    void setOldTablesAside()
    {
        for (const auto& name : oldTables())
            m_connection.execute("ALTER TABLE " + quotedName(name) + " RENAME TO " + oldTable(name));
    }

    void dropOldTables()
    {
        for (const auto& name : oldTables())
            m_connection.execute("DROP TABLE " + oldTable(name));
    }

    std::int64_t copyObjects(const NSEntityDescription& to)
    {
        const auto from = oldEntity(to);
        if (!from)
            return 0;
        const auto* const change = m_mapping.changeFor(*to.name());
        auto select = m_connection.prepare(
            "SELECT " + detail::columnList(*from) + " FROM " + oldTable(*from->name()) + " ORDER BY 1");
        auto insert = m_connection.prepare(detail::insertStatement(to));
        const detail::StatementRow row(select, *from);
        std::vector<Any> oldValues;
        std::int64_t count = 0;
        while (select.step()) {
            row.read(oldValues);
            std::vector<Any> values(to.valueCount());
            for (std::size_t slot = 0; slot < to.attributes().size(); ++slot) {
                const auto old = oldAttribute(*from, to, slot);
                values[slot] = old ? oldValues[*old] : to.attributes()[slot].defaultValue;
            }
            for (const auto& relationship : to.relationships())
                if (relationship.storage == RelationshipStorage::Column)
                    if (const auto* const old = oldRelationship(*from, to, relationship))
                        values[relationship.slot] = oldValues[old->slot];
            if (change != nullptr) {
                MigratedObject object(*from, oldValues, to, values);
                (*change)(object);
            }
            checkValues(to, values);
            const detail::StatementRun run(insert);
            insert.bind(1, select.integer(0));
            for (std::size_t slot = 0; slot < values.size(); ++slot)
                insert.bind(static_cast<int>(slot) + 2, values[slot]);
            insert.run();
            ++count;
        }
        return count;
    }

    static void checkValues(const NSEntityDescription& entity, const std::vector<Any>& values)
    {
        for (std::size_t slot = 0; slot < entity.attributes().size(); ++slot)
            if (values[slot].isNull() && !entity.attributes()[slot].isOptional)
                fail(*entity.name() + "." + entity.attributes()[slot].name + " has no value",
                    entity.attributes()[slot].name);
        for (const auto& relationship : entity.relationships())
            if (relationship.storage == RelationshipStorage::Column && !relationship.description.isOptional
                && values[relationship.slot].isNull())
                fail(*entity.name() + "." + relationship.description.name + " has no object",
                    relationship.description.name);
    }

    void copyPairs(const NSEntityDescription& to)
    {
        const auto from = oldEntity(to);
        if (!from)
            return;
        for (const auto& relationship : to.relationships()) {
            if (!relationship.writesJoinTable)
                continue;
            if (const auto* const old = oldRelationship(*from, to, relationship))
                m_connection.execute("INSERT INTO " + quotedName(relationship.joinTable) + " ("
                    + relationship.ownColumn + ", " + relationship.otherColumn + ") SELECT " + old->ownColumn
                    + ", " + old->otherColumn + " FROM " + oldTable(old->joinTable));
        }
    }

    /// Numbers are not given again, also not to objects of entities with another name.
    void keepKeys()
    {
        m_connection.execute(
            "CREATE TEMP TABLE latestKeys AS SELECT entity, latest FROM _keys; DELETE FROM _keys");
        auto insert = m_connection.prepare(
            "INSERT INTO _keys VALUES (?, coalesce((SELECT latest FROM latestKeys WHERE entity = ?), 0))");
        for (const auto& entity : m_to.entities()) {
            insert.bindText(1, *entity->name());
            insert.bindText(2, m_mapping.oldEntity(*entity->name()));
            insert.run();
        }
        m_connection.execute("DROP TABLE latestKeys");
    }

    detail::Connection& m_connection;
    const NSManagedObjectModel& m_from;
    const NSManagedObjectModel& m_to;
    MigrationMapping m_mapping;
};

void checkSteps(const std::vector<MigrationStep>& steps)
{
    for (std::size_t index = 0; index < steps.size(); ++index) {
        const auto& step = steps[index];
        if (!step.from || !step.to || step.to->version() != step.from->version() + 1)
            fail("A step leads from one version to the next");
        if (index != 0 && steps[index - 1].to->checksum() != step.from->checksum())
            fail("A step begins with another model than the one before it ends with");
        if (index != 0 && steps[index - 1].to->version() != step.from->version())
            fail("The step from version " + std::to_string(steps[index - 1].to->version()) + " is missing");
    }
}

} // namespace

const Any& MigratedObject::oldValue(std::string_view key) const
{
    const auto slot = m_from.attributeIndex(key);
    if (slot == NSEntityDescription::none)
        fail("There was no attribute " + std::string(key), std::string(key));
    return m_oldValues[slot];
}

void MigratedObject::setValue(std::string_view key, Any value)
{
    const auto slot = m_to.attributeIndex(key);
    if (slot == NSEntityDescription::none)
        fail("There is no attribute " + std::string(key), std::string(key));
    if (!value.isNull() && !detail::isOfKind(value, m_to.attributes()[slot].kind))
        fail("The value for " + std::string(key) + " is of another kind", std::string(key));
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

MigrationReport migrateStore(
    const std::vector<MigrationStep>& steps, const StoreSettings& settings, MigrationOptions options)
{
    checkSteps(steps);
    std::error_code ignored;
    if (steps.empty() || !std::filesystem::exists(settings.path, ignored))
        return {};
    detail::Connection connection(settings);
    // Tables are exchanged; what leads nowhere in the end is looked for before it is kept.
    connection.execute("PRAGMA foreign_keys = OFF");
    std::optional<detail::Transaction> dryRun;
    if (options.isDryRun)
        dryRun.emplace(connection);
    if (connection.integer("SELECT count(*) FROM sqlite_schema") == 0)
        return {};
    if (connection.integer("SELECT count(*) FROM sqlite_schema WHERE name = '_store'") == 0)
        refuse("The file holds something that is no store");
    MigrationReport report;
    const auto last = steps.back().to->version();
    for (;;) {
        detail::Transaction transaction(connection);
        const auto written = detail::storedValue(connection, "version");
        const auto version = std::int64_t(std::strtoll(written.c_str(), nullptr, 10));
        if (report.fromVersion == 0)
            report.fromVersion = version;
        report.toVersion = version;
        if (version > last)
            refuse("The file is of version " + written + ", newer than " + std::to_string(last));
        const auto checksum = detail::storedValue(connection, "checksum");
        if (version == last) {
            if (checksum != steps.back().to->checksum())
                refuse("The file was made for another model of version " + written);
            return report;
        }
        const auto first = steps.front().from->version();
        if (version < first)
            fail("The step from version " + written + " is missing");
        const auto& step = steps[static_cast<std::size_t>(version - first)];
        if (checksum != step.from->checksum())
            refuse("The file was made for another model of version " + written);
        report.objectCount += Migration(connection, step).run();
        transaction.commit();
    }
}

} // namespace orrenby
