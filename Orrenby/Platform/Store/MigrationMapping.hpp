#pragma once

/// @file
/// What becomes of the objects of a store in a later version of its model. Not in the umbrella header, as
/// StoreMigration.hpp, which includes it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class NSEntityDescription;
class NSManagedObjectModel;

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
///
/// @snippet Tests/Platform/Store/StoreMigrationTests.cpp Mapping what changed
///
/// A plain value. Not synchronised.
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

    /// For the migration: throws a `StoreError` of the kind `MigrationFailed` when something is named that
    /// the models do not have.
    void checkNames(const NSManagedObjectModel& from, const NSManagedObjectModel& to) const;

    /// All of it, one thing per line and always in the same order; of `change` only for which entity.
    std::string description() const;

private:
    struct Rules;
    detail::Owned<Rules> m_rules;
};

} // namespace orrenby
