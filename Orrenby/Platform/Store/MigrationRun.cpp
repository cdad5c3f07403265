#include "Orrenby/Platform/Store/MigrationRun.hpp"
#include "Orrenby/Platform/Store/Connection.hpp"
#include "Orrenby/Platform/Store/MigrationPlan.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include "Orrenby/Platform/Store/RowReading.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"
#include <string>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

// No name of a model has a dot in front.
std::string oldTable(const std::string& name) { return quotedName(".old." + name); }

/// One step, inside a transaction.
class MigrationRun {
public:
    MigrationRun(Connection& connection, const MigrationStep& step)
        : m_connection(connection)
        , m_plan(step)
    {}

    std::int64_t run()
    {
        m_plan.checkNothingIsLost();
        setOldTablesAside();
        std::vector<std::string> indexes;
        for (const auto& sql : schemaStatements(m_plan.to()))
            if (sql.starts_with("CREATE INDEX"))
                indexes.push_back(sql); // named as the old ones are, which are still there
            else
                m_connection.execute(sql);
        std::int64_t count = 0;
        for (const auto& entity : m_plan.to().entities())
            count += copyObjects(*entity);
        for (const auto& entity : m_plan.to().entities())
            copyPairs(*entity);
        dropOldTables();
        for (const auto& sql : indexes)
            m_connection.execute(sql);
        keepKeys();
        if (m_connection.prepare("PRAGMA foreign_key_check").step())
            throwMigrationFailed("A reference leads to an object that is no longer there");
        auto update = m_connection.prepare("UPDATE _store SET value = CASE name WHEN 'version' THEN ?"
                                           " WHEN 'checksum' THEN ? ELSE value END");
        update.bindText(1, std::to_string(m_plan.to().version()));
        update.bindText(2, m_plan.to().checksum());
        update.run();
        return count;
    }

private:
    std::vector<std::string> oldTables() const
    {
        std::vector<std::string> names;
        for (const auto& entity : m_plan.from().entities()) {
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
        const auto from = m_plan.oldEntity(to);
        if (!from)
            return 0;
        const auto* const change = m_plan.mapping().changeFor(*to.name());
        auto select = m_connection.prepare(
            "SELECT " + columnList(*from) + " FROM " + oldTable(*from->name()) + " ORDER BY 1");
        auto insert = m_connection.prepare(insertStatement(to));
        const StatementRow row(select, *from);
        std::vector<Any> oldValues;
        std::int64_t count = 0;
        while (select.step()) {
            row.read(oldValues);
            std::vector<Any> values(to.valueCount());
            for (std::size_t slot = 0; slot < to.attributes().size(); ++slot) {
                const auto old = m_plan.oldAttribute(*from, to, slot);
                values[slot] = old ? oldValues[*old] : to.attributes()[slot].defaultValue;
            }
            for (const auto& relationship : to.relationships())
                if (relationship.storage == RelationshipStorage::Column)
                    if (const auto* const old = m_plan.oldRelationship(*from, to, relationship))
                        values[relationship.slot] = oldValues[old->slot];
            if (change != nullptr) {
                MigratedObject object(*from, oldValues, to, values);
                (*change)(object);
            }
            checkValues(to, values);
            const StatementRun run(insert);
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
                throwMigrationFailed(*entity.name() + "." + entity.attributes()[slot].name + " has no value",
                    entity.attributes()[slot].name);
        for (const auto& relationship : entity.relationships())
            if (relationship.storage == RelationshipStorage::Column && !relationship.description.isOptional
                && values[relationship.slot].isNull())
                throwMigrationFailed(*entity.name() + "." + relationship.description.name + " has no object",
                    relationship.description.name);
    }

    void copyPairs(const NSEntityDescription& to)
    {
        const auto from = m_plan.oldEntity(to);
        if (!from)
            return;
        for (const auto& relationship : to.relationships()) {
            if (!relationship.writesJoinTable)
                continue;
            if (const auto* const old = m_plan.oldRelationship(*from, to, relationship))
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
        for (const auto& entity : m_plan.to().entities()) {
            insert.bindText(1, *entity->name());
            insert.bindText(2, m_plan.mapping().oldEntity(*entity->name()));
            insert.run();
        }
        m_connection.execute("DROP TABLE latestKeys");
    }

    Connection& m_connection;
    const MigrationPlan m_plan;
};

} // namespace

std::int64_t runMigration(Connection& connection, const MigrationStep& step)
{
    return MigrationRun(connection, step).run();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
