#pragma once

/// @file
/// Doing one step of a migration. Not in the umbrella header: migrations keep it to themselves.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI {

struct MigrationStep;

namespace detail {

class Connection;

/// Exchanges the tables of the earlier model for those of the later one, inside a transaction of the caller.
/// Throws a `StoreError`, and what the step's mapping throws.
///
/// @returns How many objects were taken over.
std::int64_t runMigration(Connection& connection, const MigrationStep& step);

} // namespace detail

} // namespace orrenby
