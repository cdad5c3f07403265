#pragma once

/// @file
/// Bringing a store file to a later version of its model.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectModel.hpp"
#include "Orrenby/Platform/Store/StoreSettings.hpp"
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// One object on its way: what it was, and what it becomes. Valid during the call that it is handed to.
class ORRENBY_EXPORT MigratedObject {
public:
    /// Made by the migration; refers to what it is given.
    MigratedObject(const NSEntityDescription& from, const std::vector<Any>& oldValues,
        const NSEntityDescription& to, std::vector<Any>& newValues) noexcept
        : m_from(from)
        , m_oldValues(oldValues)
        , m_to(to)
        , m_newValues(newValues)
    {}

    /// The value of an attribute in the earlier version. Throws a `StoreError` for an unknown key, as the
    /// next one.
    const Any& oldValue(std::string_view key) const;
    /// Sets an attribute of the later version.
    void setValue(std::string_view key, Any value);

private:
    const NSEntityDescription& m_from;
    const std::vector<Any>& m_oldValues;
    const NSEntityDescription& m_to;
    std::vector<Any>& m_newValues;
};

/// Says what becomes of what is not called the same in the later version. Entities are named as they are
/// there, keys to give up as they were.
class ORRENBY_EXPORT MigrationMapping {
public:
    /// Takes one object on its way; what it throws ends the migration.
    using Change = std::function<void(MigratedObject& object)>;

    MigrationMapping();
    MigrationMapping(const MigrationMapping& other);
    MigrationMapping& operator=(const MigrationMapping& other);
    ~MigrationMapping();

    /// The objects of entity `from` go on as those of entity `to`.
    void renameEntity(std::string from, std::string to);

    /// The values under the key `from` go on under the key `to`. The entity is named as it is in the later
    /// version.
    void renameKey(std::string entity, std::string from, std::string to);

    /// Gives up all objects of an entity.
    void dropEntity(std::string entity);
    /// Gives up the values of an attribute, or a relationship.
    void dropKey(std::string entity, std::string key);
    /// Called for every object, after the values that stay were taken over.
    void change(std::string entity, Change change);

    /// For the migration: what an entity or key of the later version is called in the earlier one; the same
    /// name when nothing was said.
    const std::string& oldEntity(const std::string& entity) const;
    const std::string& oldKey(const std::string& entity, const std::string& key) const;

    /// For the migration: whether an entity or key of the earlier version is given up.
    bool isDropped(const std::string& entity) const;
    bool isDropped(const std::string& entity, const std::string& key) const;

    /// For the migration: what was said by `change`, or `nullptr`.
    const Change* changeFor(const std::string& entity) const;

private:
    struct Rules;
    detail::Owned<Rules> m_rules;
};

/// A step from one version of a model to the next.
struct MigrationStep {
    /// The model that stores of the earlier version were made with.
    Ref<const NSManagedObjectModel> from = {};
    /// Its version is that of `from` and one.
    Ref<const NSManagedObjectModel> to = {};
    /// May be empty.
    std::function<void(MigrationMapping& mapping)> mapping = {};
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

/// Brings the file of the settings to the version that the last step leads to, step by step from the one that
/// it has; each is a transaction of its own, so that a failure leaves the file as the step before left it.
///
/// @snippet Tests/Platform/Store/StoreMigrationTests.cpp Migrating a store
///
/// Entities, attributes and relationships with the same name and kind are taken over; new ones begin with
/// their default values. What has no place in the later version has to be given up explicitly: else nothing
/// is done. Nothing is done either for a file that has the version already, and for one without a store.
///
/// Throws a `StoreError`: `SchemaMismatch` when the file is newer than the last step, was made for another
/// model than the one of its version, or holds no store; `MigrationFailed` when a step is missing, drops
/// something silently, leaves a required value empty or a reference without its object. What a mapping
/// throws passes.
///
/// Safe to use from several threads. Nobody else may have the file open. Takes time and twice the room of the
/// file.
ORRENBY_EXPORT MigrationReport migrateStore(
    const std::vector<MigrationStep>& steps, const StoreSettings& settings, MigrationOptions options = {});

} // namespace orrenby
