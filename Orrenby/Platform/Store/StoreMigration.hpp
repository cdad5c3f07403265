#pragma once

/// @file
/// Bringing a store file to a later version of its model. Not in the umbrella header: an application does it
/// in one place, and `<functional>` costs every file that includes it.

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Store/MigrationMapping.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include "Orrenby/Platform/Store/StoreSettings.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A step from one version of a model to the next. Its mapping says what a name alone does not:
///
/// @snippet Tests/Platform/Store/StoreMigrationTests.cpp Mapping what changed
///
/// A plain value. Not synchronised.
struct MigrationStep {
    /// The model that stores of the earlier version were made with.
    Ref<const NSManagedObjectModel> from = {};
    /// Its version is that of `from` and one.
    Ref<const NSManagedObjectModel> to = {};
    /// May be empty. It is asked at least once whenever the step is handed to `migrateStore`, also when the
    /// file has taken it before.
    std::function<void(MigrationMapping& mapping)> mapping = {};
    /// Anything that names what the functions given to `MigrationMapping::change` do, which cannot be read
    /// from them: another one when they do something else.
    std::string revision = {};

    /// What the step does, in 40 hexadecimal digits: both models, what the mapping says, and the revision.
    /// The models are not null.
    ORRENBY_EXPORT std::string checksum() const;
};

/// How a migration goes.
struct MigrationOptions {
    /// Does everything and keeps nothing of it.
    bool isDryRun = false;
};

/// What a migration did, or would have done.
struct MigrationReport {
    std::int64_t fromVersion = 0; ///< 0: there is no store in the file.
    std::int64_t toVersion = 0;   ///< The version that the last step leads to.
    std::int64_t objectCount = 0; ///< Over all steps.

    friend bool operator==(const MigrationReport&, const MigrationReport&) noexcept = default;
};

/// A step that a file has taken.
struct MigrationRecord {
    std::int64_t version = 0;  ///< To which it led.
    std::string checksum = {}; ///< The step's.
    Date date = Date(0);       ///< When, by the world's clock.

    friend bool operator==(const MigrationRecord&, const MigrationRecord&) noexcept = default;
};

/// Brings the file of the settings to the version that the last step leads to, step by step from the one that
/// it has; each is a transaction of its own, so that a failure leaves the file as the step before left it.
///
/// @snippet Tests/Platform/Store/StoreMigrationTests.cpp Migrating a store
///
/// Entities, attributes and relationships with the same name and kind are taken over; new ones begin with
/// their default values. What has no place in the later version has to be given up explicitly: else nothing
/// is done. Nothing is done either for a file that has the version already, and for one without a store.
///
/// The file keeps a record of each step it has taken. So a step that has been taken somewhere is not changed
/// any more; what it got wrong is put right by a further one.
///
/// Throws a `StoreError`: `SchemaMismatch` when the file is newer than the last step, was made for another
/// model than the one of its version, has taken another step to one of the versions, or holds no store;
/// `MigrationFailed` when a step is missing, names what the models do not have, drops something silently,
/// leaves a required value empty or a reference without its object. What a mapping throws passes.
///
/// Safe to use from several threads. Nobody else may have the file open. Takes time and twice the room of the
/// file.
ORRENBY_EXPORT MigrationReport migrateStore(
    const std::vector<MigrationStep>& steps, const StoreSettings& settings, MigrationOptions options = {});

/// `migrateStore` that gives what it or a mapping throws instead of throwing it.
///
/// @snippet Tests/Platform/Store/StoreMigrationTests.cpp Migrating without a throw
///
/// Safe to use from several threads.
[[nodiscard]] ORRENBY_EXPORT Result<MigrationReport, AnyError> tryMigrateStore(
    const std::vector<MigrationStep>& steps, const StoreSettings& settings, MigrationOptions options = {});

/// The steps that the file of the settings has taken, the first one first. None for a file that was made for
/// its version or is not there; those from before files kept a record are missing.
///
/// @snippet Tests/Platform/Store/MigrationHistoryTests.cpp Reading the history of a file
///
/// Throws a `StoreError`, of the kind `SchemaMismatch` for a file that holds no store. Safe to use from
/// several threads.
ORRENBY_EXPORT std::vector<MigrationRecord> migrationHistory(const StoreSettings& settings);

/// `migrationHistory` that gives the failure instead of throwing it.
///
/// @snippet Tests/Platform/Store/MigrationHistoryTests.cpp Reading a history without a throw
///
/// Safe to use from several threads.
[[nodiscard]] ORRENBY_EXPORT Result<std::vector<MigrationRecord>, StoreError> tryMigrationHistory(
    const StoreSettings& settings);

} // namespace orrenby
