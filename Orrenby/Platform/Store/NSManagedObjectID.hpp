#pragma once

/// @file
/// What names a stored object.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

class NSEntityDescription;

/// Names an object of a store, in every context and after every start.
///
/// An object that was not saved yet has a temporary one, which no other object of the process has; saving
/// gives it its permanent one. Numbers are never given twice, also not after a deletion.
///
/// A plain value that keeps the description of its entity alive. Safe to use from several threads.
class NSManagedObjectID {
public:
    /// @param key  The object's number within its entity; negative as long as it is temporary.
    NSManagedObjectID(Ref<const NSEntityDescription> entity, std::int64_t key) noexcept
        : m_entity(std::move(entity))
        , m_key(key)
    {}

    /// The entity; never empty.
    const Ref<const NSEntityDescription>& entity() const noexcept { return m_entity; }

    /// The number within the entity; negative as long as it is temporary.
    std::int64_t key() const noexcept { return m_key; }

    /// Whether the object was never saved.
    bool isTemporaryID() const noexcept { return m_key < 0; }

    /// `Person/p12`; a temporary one `Person/t3`.
    ORRENBY_EXPORT std::string description() const;

    /// By entity and number. Entities of two models are two.
    friend bool operator==(const NSManagedObjectID&, const NSManagedObjectID&) noexcept = default;

private:
    Ref<const NSEntityDescription> m_entity;
    std::int64_t m_key;
};

} // namespace orrenby

template <> struct std::hash<orrenby::NSManagedObjectID> {
    std::size_t operator()(const orrenby::NSManagedObjectID& identifier) const noexcept
    {
        return std::hash<const void*>()(identifier.entity().get()) * 31
            + std::hash<std::int64_t>()(identifier.key());
    }
};
