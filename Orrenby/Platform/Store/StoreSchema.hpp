#pragma once

/// @file
/// The tables of a model. Not in the umbrella header: stores ask for them.

#include "Orrenby/Platform/Export.hpp"
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class NSEntityDescription;
class NSManagedObjectModel;

namespace detail {

class Connection;
struct ResolvedRelationship;

/// A name as statements spell it. Names consist of letters, digits and underscores, so that quoting is
/// enough; those of further tables are made with dots, which no entity's has.
inline std::string quotedName(const std::string& name) { return '"' + name + '"'; }

/// The statements that make the tables, one per element, always in the same order.
ORRENBY_EXPORT std::vector<std::string> schemaStatements(const NSManagedObjectModel& model);

/// `"_key", "_version", "name", …` in the order of the values.
std::string columnList(const NSEntityDescription& entity);

/// The statements for one object each, values in the order of the columns; that of changing takes the number
/// and the expected version after them.
std::string insertStatement(const NSEntityDescription& entity);
std::string updateStatement(const NSEntityDescription& entity);

/// Where the members of a to-many relationship stand, one per row: `SELECT member FROM table WHERE owner =
/// ?`.
struct MemberRows {
    std::string table;
    std::string owner;
    std::string member;
};
MemberRows memberRows(const ResolvedRelationship& relationship);

[[noreturn]] void throwSchemaMismatch(std::string message);

/// 40 hexadecimal digits that differ when the texts do.
std::string checksumOf(std::string_view text);

bool hasTable(Connection& connection, std::string_view name);

/// What a file says of itself: its model's "version" or "checksum"; empty when it does not say.
std::string storedValue(Connection& connection, std::string_view name);

} // namespace detail

} // namespace orrenby
