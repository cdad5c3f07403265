#include "Orrenby/Platform/Store/StoreMigration.hpp"
#include "Orrenby/Platform/Store/Connection.hpp"
#include "Orrenby/Platform/Store/MigrationHistory.hpp"
#include "Orrenby/Platform/Store/MigrationPlan.hpp"
#include "Orrenby/Platform/Store/MigrationRun.hpp"
#include "Orrenby/Platform/Store/StoreOutcome.hpp"
#include "Orrenby/Platform/Store/StoreSchema.hpp"
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <optional>

namespace orrenby::inline ORRENBY_ABI {

namespace {

void checkSteps(const std::vector<MigrationStep>& steps)
{
    for (std::size_t index = 0; index < steps.size(); ++index) {
        const auto& step = steps[index];
        if (!step.from || !step.to || step.to->version() != step.from->version() + 1)
            detail::throwMigrationFailed("A step leads from one version to the next");
        if (index != 0 && steps[index - 1].to->checksum() != step.from->checksum())
            detail::throwMigrationFailed("A step begins with another model than the one before it ends with");
        if (index != 0 && steps[index - 1].to->version() != step.from->version())
            detail::throwMigrationFailed(
                "The step from version " + std::to_string(steps[index - 1].to->version()) + " is missing");
    }
}

void requireStore(detail::Connection& connection)
{
    if (!detail::hasTable(connection, "_store"))
        detail::throwSchemaMismatch("The file holds something that is no store");
}

bool isFile(const std::string& path)
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

} // namespace

std::string MigrationStep::checksum() const
{
    MigrationMapping mapped;
    if (mapping)
        mapping(mapped);
    return detail::checksumOf(std::to_string(from->version()) + ' ' + from->checksum() + '\n'
        + std::to_string(to->version()) + ' ' + to->checksum() + '\n' + mapped.description() + revision);
}

MigrationReport migrateStore(
    const std::vector<MigrationStep>& steps, const StoreSettings& settings, MigrationOptions options)
{
    checkSteps(steps);
    if (steps.empty() || !isFile(settings.path))
        return {};
    detail::Connection connection(settings);
    // Tables are exchanged; what leads nowhere in the end is looked for before it is kept.
    connection.execute("PRAGMA foreign_keys = OFF");
    std::optional<detail::Transaction> dryRun;
    if (options.isDryRun)
        dryRun.emplace(connection);
    if (connection.integer("SELECT count(*) FROM sqlite_schema") == 0)
        return {};
    requireStore(connection);
    MigrationReport report;
    const auto last = steps.back().to->version();
    for (;;) {
        detail::Transaction transaction(connection);
        const auto written = detail::storedValue(connection, "version");
        const auto version = std::int64_t(std::strtoll(written.c_str(), nullptr, 10));
        if (report.fromVersion == 0)
            report.fromVersion = version;
        report.toVersion = version;
        const auto checksum = detail::storedValue(connection, "checksum");
        detail::checkHistory(connection, version, checksum, steps);
        if (version > last)
            detail::throwSchemaMismatch(
                "The file is of version " + written + ", newer than " + std::to_string(last));
        if (version == last) {
            if (checksum != steps.back().to->checksum())
                detail::throwSchemaMismatch("The file was made for another model of version " + written);
            return report;
        }
        const auto first = steps.front().from->version();
        if (version < first)
            detail::throwMigrationFailed("The step from version " + written + " is missing");
        const auto& step = steps[static_cast<std::size_t>(version - first)];
        if (checksum != step.from->checksum())
            detail::throwSchemaMismatch("The file was made for another model of version " + written);
        report.objectCount += detail::runMigration(connection, step);
        detail::recordStep(connection, step);
        transaction.commit();
    }
}

Result<MigrationReport, AnyError> tryMigrateStore(
    const std::vector<MigrationStep>& steps, const StoreSettings& settings, MigrationOptions options)
{
    using Outcome = Result<MigrationReport, AnyError>;
    try {
        return Outcome::success(migrateStore(steps, settings, options));
    } catch (...) {
        return Outcome::failure(AnyError(std::current_exception()));
    }
}

std::vector<MigrationRecord> migrationHistory(const StoreSettings& settings)
{
    if (!isFile(settings.path))
        return {};
    auto readOnly = settings;
    readOnly.isReadOnly = true;
    detail::Connection connection(readOnly);
    requireStore(connection);
    return detail::readHistory(connection);
}

Result<std::vector<MigrationRecord>, StoreError> tryMigrationHistory(const StoreSettings& settings)
{
    return detail::storeOutcome([&] { return migrationHistory(settings); });
}

} // namespace orrenby
