#include "Orrenby/Platform/Store/StoreSchema.hpp"

#include "Orrenby/Platform/Digest/SHA1.hpp"
#include "Orrenby/Platform/Store/Connection.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include "Orrenby/Platform/Text/Hexadecimal.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

const char* columnType(AttributeKind kind)
{
    switch (kind) {
    case AttributeKind::Int:
    case AttributeKind::Bool:
        return " INTEGER";
    case AttributeKind::Double:
    case AttributeKind::Date:
        return " REAL";
    case AttributeKind::Text:
        return " TEXT";
    case AttributeKind::Bytes:
    case AttributeKind::UUID:
        return " BLOB";
    }
    return " BLOB";
}

// Checked at the commit, so that the order of saving does not matter.
std::string reference(const NSEntityDescription& destination)
{
    return " REFERENCES " + quotedName(*destination.name()) + "(\"_key\") DEFERRABLE INITIALLY DEFERRED";
}

std::string entityTable(const NSEntityDescription& entity)
{
    auto sql = "CREATE TABLE " + quotedName(*entity.name())
        + " (\"_key\" INTEGER PRIMARY KEY, \"_version\" INTEGER NOT NULL";
    for (const auto& attribute : entity.attributes())
        sql += ", " + quotedName(attribute.name) + columnType(attribute.kind)
            + (attribute.isOptional ? "" : " NOT NULL");
    for (const auto& relationship : entity.relationships())
        if (relationship.storage == RelationshipStorage::Column)
            sql += ", " + quotedName(relationship.description.name) + " INTEGER"
                + (relationship.description.isOptional ? "" : " NOT NULL")
                + reference(*relationship.destination);
    return sql + ") STRICT";
}

} // namespace

std::vector<std::string> schemaStatements(const NSManagedObjectModel& model)
{
    std::vector<std::string> statements;
    for (const auto& entity : model.entities())
        statements.push_back(entityTable(*entity));
    for (const auto& entity : model.entities())
        for (const auto& relationship : entity->relationships()) {
            const auto name = *entity->name() + "." + relationship.description.name;
            if (relationship.storage == RelationshipStorage::Column)
                statements.push_back("CREATE INDEX " + quotedName("index." + name) + " ON "
                    + quotedName(*entity->name()) + "(" + quotedName(relationship.description.name) + ")");
            if (!relationship.writesJoinTable)
                continue;
            statements.push_back("CREATE TABLE " + quotedName(name) + " (source INTEGER NOT NULL"
                + reference(*entity) + ", target INTEGER NOT NULL" + reference(*relationship.destination)
                + ", PRIMARY KEY (source, target)) STRICT, WITHOUT ROWID");
            statements.push_back(
                "CREATE INDEX " + quotedName("index." + name) + " ON " + quotedName(name) + "(target)");
        }
    return statements;
}

std::string columnList(const NSEntityDescription& entity)
{
    std::string list = "\"_key\", \"_version\"";
    for (const auto& attribute : entity.attributes())
        list += ", " + quotedName(attribute.name);
    for (const auto& relationship : entity.relationships())
        if (relationship.storage == RelationshipStorage::Column)
            list += ", " + quotedName(relationship.description.name);
    return list;
}

std::string insertStatement(const NSEntityDescription& entity)
{
    auto sql = "INSERT INTO " + quotedName(*entity.name()) + " (" + columnList(entity) + ") VALUES (?, 1";
    for (std::size_t count = 0; count < entity.valueCount(); ++count)
        sql += ", ?";
    return sql + ")";
}

std::string updateStatement(const NSEntityDescription& entity)
{
    auto sql = "UPDATE " + quotedName(*entity.name()) + " SET \"_version\" = \"_version\" + 1";
    for (const auto& attribute : entity.attributes())
        sql += ", " + quotedName(attribute.name) + " = ?";
    for (const auto& relationship : entity.relationships())
        if (relationship.storage == RelationshipStorage::Column)
            sql += ", " + quotedName(relationship.description.name) + " = ?";
    return sql + " WHERE \"_key\" = ? AND \"_version\" = ?";
}

MemberRows memberRows(const ResolvedRelationship& relationship)
{
    if (relationship.storage == RelationshipStorage::JoinTable)
        return {quotedName(relationship.joinTable), relationship.ownColumn, relationship.otherColumn};
    const auto& inverse = relationship.destination->relationships()[*relationship.inverse].description;
    return {quotedName(*relationship.destination->name()), quotedName(inverse.name), "\"_key\""};
}

void throwSchemaMismatch(std::string message)
{
    throw StoreError(StoreError::Kind::SchemaMismatch, {.message = std::move(message)});
}

std::string checksumOf(std::string_view text) { return hexadecimalText(sha1(text)); }

bool hasTable(Connection& connection, std::string_view name)
{
    auto select = connection.prepare("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?");
    select.bindText(1, name);
    return select.step();
}

std::string storedValue(Connection& connection, std::string_view name)
{
    auto select = connection.prepare("SELECT value FROM _store WHERE name = ?");
    select.bindText(1, name);
    return select.step() ? std::string(select.text(0)) : std::string();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
