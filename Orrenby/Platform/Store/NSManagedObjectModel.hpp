#pragma once

/// @file
/// All entities of a store, tied together.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The entities that a store holds, with a version.
///
/// @snippet Tests/Platform/Store/NSManagedObjectModelTests.cpp Declaring a model
///
/// Never changes. Safe to use from several threads.
class ORRENBY_EXPORT NSManagedObjectModel : public std::enable_shared_from_this<NSManagedObjectModel> {
    struct Private {};

public:
    /// Checks the entities and ties their relationships.
    ///
    /// Throws a `StoreError` of the kind `InvalidModel` whose message names the first fault found: a version
    /// below 1, names that are missing, malformed, reserved or equal to another without regard to case, a
    /// default value of another kind, a destination or an inverse that does not exist, an inverse that leads
    /// elsewhere, more than 1000 columns.
    ///
    /// @param version  1 or more; larger for later models of the same store.
    static Ref<const NSManagedObjectModel> make(std::int64_t version, std::vector<EntityOptions> entities);

    /// `make` that gives the failure instead of throwing it.
    static Result<Ref<const NSManagedObjectModel>, StoreError> tryMake(
        std::int64_t version, std::vector<EntityOptions> entities);

    /// Which model of its store it is, counted from 1.
    std::int64_t version() const noexcept { return m_version; }

    /// What the tables look like, in 40 hexadecimal digits: models with the same checksum store alike.
    /// Default values, delete rules, classes and the order of declaration have no part in it.
    const std::string& checksum() const noexcept { return m_checksum; }

    /// The entity of that name; empty when there is none. It keeps the model alive.
    Ref<const NSEntityDescription> entity(std::string_view name) const;

    /// By name.
    std::vector<Ref<const NSEntityDescription>> entities() const;

    /// For `make` only.
    NSManagedObjectModel(Private, std::int64_t version, std::vector<EntityOptions> entities);

private:
    void tie(NSEntityDescription& entity);
    void findStorage(NSEntityDescription& entity);
    NSEntityDescription* find(std::string_view name) const;

    std::int64_t m_version;
    std::vector<std::unique_ptr<NSEntityDescription>> m_entities;
    std::string m_checksum;
};

} // namespace orrenby
