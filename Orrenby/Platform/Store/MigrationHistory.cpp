#include "Orrenby/Platform/Store/MigrationHistory.hpp"
#include "Orrenby/Platform/Store/Connection.hpp"
#include "Orrenby/Platform/Store/StoreMigration.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

// Also what the file says of its schema afterwards, so that it is spelled the same whoever makes the table.
constexpr auto table = "CREATE TABLE _history (version INTEGER PRIMARY KEY, step TEXT NOT NULL,"
                       " model TEXT NOT NULL, seconds REAL NOT NULL) STRICT";

} // namespace

void makeHistory(Connection& connection)
{
    if (!hasTable(connection, "_history"))
        connection.execute(table);
}

std::vector<MigrationRecord> readHistory(Connection& connection)
{
    std::vector<MigrationRecord> history;
    if (!hasTable(connection, "_history"))
        return history;
    auto select = connection.prepare("SELECT version, step, seconds FROM _history ORDER BY version");
    while (select.step())
        history.push_back({.version = select.integer(0),
            .checksum = std::string(select.text(1)),
            .date = Date(select.floating(2))});
    return history;
}

void checkHistory(Connection& connection, std::int64_t version, const std::string& checksum,
    const std::vector<MigrationStep>& steps)
{
    const auto history = readHistory(connection);
    if (history.empty())
        return;
    const auto first = version + 1 - static_cast<std::int64_t>(history.size());
    for (std::size_t index = 0; index < history.size(); ++index)
        if (history[index].version != first + static_cast<std::int64_t>(index))
            throwSchemaMismatch(
                "The steps that the file has taken do not lead to its version " + std::to_string(version));
    auto select = connection.prepare("SELECT model FROM _history WHERE version = ?");
    select.bind(1, version);
    if (select.step() && select.text(0) != checksum)
        throwSchemaMismatch(
            "The steps that the file has taken lead to another model of version " + std::to_string(version));
    for (const auto& step : steps)
        for (const auto& record : history)
            if (record.version == step.to->version() && record.checksum != step.checksum())
                throwSchemaMismatch(
                    "The file has come to version " + std::to_string(record.version) + " by another step");
}

void recordStep(Connection& connection, const MigrationStep& step)
{
    makeHistory(connection);
    auto insert = connection.prepare("INSERT INTO _history VALUES (?, ?, ?, ?)");
    insert.bind(1, step.to->version());
    const auto checksum = step.checksum();
    insert.bindText(2, checksum);
    insert.bindText(3, step.to->checksum());
    const Any date(Date::now());
    insert.bind(4, date);
    insert.run();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
