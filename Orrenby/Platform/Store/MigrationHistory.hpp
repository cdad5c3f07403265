#pragma once

/// @file
/// The steps that a store file has taken. Not in the umbrella header: migrations keep it to themselves.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

struct MigrationRecord;
struct MigrationStep;

namespace detail {

class Connection;

/// Makes the table for them; one that is there stays.
void makeHistory(Connection& connection);

/// None where there is no table for them, as in files that are older than it.
std::vector<MigrationRecord> readHistory(Connection& connection);

/// Throws a `StoreError` of the kind `SchemaMismatch` when the file did not come to its version, or to that
/// of a step, by these steps. What it does not say is taken to be right.
void checkHistory(Connection& connection, std::int64_t version, const std::string& checksum,
    const std::vector<MigrationStep>& steps);

/// Adds a step that is done.
void recordStep(Connection& connection, const MigrationStep& step);

} // namespace detail

} // namespace orrenby
