#include "Orrenby/Platform/Store/StoreCore.hpp"
#include "Orrenby/Platform/Store/ManagedRecord.hpp"
#include "Orrenby/Platform/Store/MigrationHistory.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include "Orrenby/Platform/Store/PredicatePlan.hpp"
#include "Orrenby/Platform/Store/RowReading.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

std::string selectStatement(const NSEntityDescription& entity)
{
    return "SELECT " + columnList(entity) + " FROM " + quotedName(*entity.name());
}

/// The name of an attribute or of a to-one relationship.
const std::string& slotName(const NSEntityDescription& entity, std::size_t slot)
{
    return entity.attributes()[slot].name;
}

} // namespace

StoreCore::StoreCore(const NSManagedObjectModel& model, const StoreSettings& settings)
    : m_connection(settings)
{
    prepareSchema(model);
}

void StoreCore::prepareSchema(const NSManagedObjectModel& model)
{
    if (hasTable(m_connection, "_store"))
        return checkSchema(model);
    // Somebody else may be about to make it as well: who comes second finds it made.
    Transaction transaction(m_connection);
    if (hasTable(m_connection, "_store"))
        checkSchema(model);
    else
        makeSchema(model);
    transaction.commit();
}

void StoreCore::makeSchema(const NSManagedObjectModel& model)
{
    if (m_connection.integer("SELECT count(*) FROM sqlite_schema") != 0)
        throwSchemaMismatch("The file holds something that is no store");
    m_connection.execute("CREATE TABLE _store (name TEXT PRIMARY KEY, value TEXT NOT NULL) STRICT;"
                         "CREATE TABLE _keys (entity TEXT PRIMARY KEY, latest INTEGER NOT NULL) STRICT");
    makeHistory(m_connection);
    for (const auto& sql : schemaStatements(model))
        m_connection.execute(sql);
    auto insert = m_connection.prepare("INSERT INTO _store VALUES ('version', ?), ('checksum', ?)");
    insert.bindText(1, std::to_string(model.version()));
    insert.bindText(2, model.checksum());
    insert.run();
    auto insertKey = m_connection.prepare("INSERT INTO _keys VALUES (?, 0)");
    for (const auto& entity : model.entities()) {
        insertKey.bindText(1, *entity->name());
        insertKey.run();
    }
}

void StoreCore::checkSchema(const NSManagedObjectModel& model)
{
    const auto version = storedValue(m_connection, "version");
    if (storedValue(m_connection, "checksum") != model.checksum())
        throwSchemaMismatch("The file was made for version " + version + " of another model, not for version "
            + std::to_string(model.version()) + " of this one");
}

Statement& StoreCore::statement(const std::string& sql)
{
    const auto found = m_statements.find(sql);
    if (found != m_statements.end())
        return found->second;
    return m_statements.emplace(sql, m_connection.prepare(sql)).first->second;
}

StoreCore::EntityStatements& StoreCore::statements(const NSEntityDescription& entity)
{
    if (m_latest.first == &entity)
        return *m_latest.second;
    const auto found = m_entityStatements.find(&entity);
    if (found != m_entityStatements.end()) {
        m_latest = {&entity, &found->second};
        return found->second;
    }
    EntityStatements made;
    made.insert = m_connection.prepare(insertStatement(entity));
    made.update = m_connection.prepare(updateStatement(entity));
    made.remove = m_connection.prepare(
        "DELETE FROM " + quotedName(*entity.name()) + " WHERE \"_key\" = ? AND \"_version\" = ?");
    made.load = m_connection.prepare(selectStatement(entity) + " WHERE \"_key\" = ?");
    return m_entityStatements.emplace(&entity, std::move(made)).first->second;
}

void StoreCore::fetch(const FetchPlan& plan, RecordReceiver& receiver)
{
    constexpr std::size_t mostKeptStatements = 200;

    std::vector<Any> values;
    auto sql = selectStatement(*plan.entity) + " AS t0";
    if (plan.predicate)
        sql += " WHERE " + translatePredicate(plan.predicate->root, values);
    sql += " ORDER BY ";
    for (const auto& order : plan.order)
        sql += quotedName(slotName(*plan.entity, order.slot)) + (order.isAscending ? ", " : " DESC, ");
    sql += "\"_key\" LIMIT ? OFFSET ?";

    const std::lock_guard lock(m_mutex);
    // An application may have any number of conditions.
    if (m_statements.size() >= mostKeptStatements)
        m_statements.clear();
    auto& select = statement(sql);
    const StatementRun run(select);
    int position = 0;
    for (const auto& value : values)
        select.bind(++position, value);
    select.bind(++position, plan.limit != 0 ? static_cast<std::int64_t>(plan.limit) : -1);
    select.bind(++position, static_cast<std::int64_t>(plan.offset));
    auto row = StatementRow(select, *plan.entity);
    while (select.step()) {
        row.key = select.integer(0);
        row.version = select.integer(1);
        receiver.take(row);
    }
}

std::optional<std::int64_t> StoreCore::load(
    const NSEntityDescription& entity, std::int64_t key, std::vector<Any>& values)
{
    const std::lock_guard lock(m_mutex);
    auto& select = statements(entity).load;
    const StatementRun run(select);
    select.bind(1, key);
    if (!select.step())
        return std::nullopt;
    StatementRow(select, entity).read(values);
    return select.integer(1);
}

std::vector<std::int64_t> StoreCore::members(
    const NSEntityDescription& entity, std::size_t relationship, std::int64_t key)
{
    const auto rows = memberRows(entity.relationships()[relationship]);
    const auto sql = "SELECT " + rows.member + " FROM " + rows.table + " WHERE " + rows.owner
        + " = ? ORDER BY 1";

    const std::lock_guard lock(m_mutex);
    auto& select = statement(sql);
    const StatementRun run(select);
    select.bind(1, key);
    std::vector<std::int64_t> keys;
    while (select.step())
        keys.push_back(select.integer(0));
    return keys;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
