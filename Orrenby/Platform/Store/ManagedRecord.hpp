#pragma once

/// @file
/// What a context knows of one stored object. Not in the umbrella header: contexts and objects share it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class NSEntityDescription;
class NSManagedObject;
class NSManagedObjectContext;

namespace detail {

class ObjectRegistry;

/// The members of a to-many relationship: those that are stored, once they are known, and what changed since.
struct RelationshipSet {
    std::optional<std::vector<std::int64_t>> stored = {}; ///< Ascending.
    std::set<std::int64_t> added = {};
    std::set<std::int64_t> removed = {};

    bool hasChanges() const noexcept { return !added.empty() || !removed.empty(); }
    void add(std::int64_t key);
    void remove(std::int64_t key);
    /// Needs the stored members to be known.
    std::vector<std::int64_t> members() const;
};

/// The values of one object in one context. They outlive the `NSManagedObject` that shows them as long as
/// there is something to save, and are shown by a new one then.
struct ManagedRecord : std::enable_shared_from_this<ManagedRecord> {
    ManagedRecord(Ref<const NSEntityDescription> recordEntity, std::int64_t recordKey,
        Ref<ObjectRegistry> recordRegistry);
    ManagedRecord(const ManagedRecord&) = delete;
    ManagedRecord& operator=(const ManagedRecord&) = delete;
    ~ManagedRecord();

    void setDefaults();
    bool isChangedAt(std::size_t slot) const
    {
        return snapshot != nullptr && values[slot] != (*snapshot)[slot];
    }

    const Ref<const NSEntityDescription> entity;
    std::int64_t key;
    std::int64_t version = 0;
    Ref<ObjectRegistry> registry;      ///< Empty for an object that belongs to no context.
    NSManagedObject* handle = nullptr; ///< Guarded by the registry.
    bool isFault = false;              ///< The values are not known yet.
    bool isInserted = false;
    bool isDeleted = false;
    bool isTracked = false;                     ///< Among the changes of the context.
    std::vector<Any> values;                    ///< Attributes, then the keys of to-one relationships.
    std::unique_ptr<std::vector<Any>> snapshot; ///< The values as they are stored, while they differ.
    std::vector<RelationshipSet> sets;
};

/// Finds the records of a context, so that an object is there once. Safe to use from several threads, because
/// the last reference to an object may be dropped anywhere.
class ObjectRegistry {
public:
    explicit ObjectRegistry(NSManagedObjectContext& context) noexcept
        : m_context(&context)
    {}

    /// `nullptr` once the context is gone.
    NSManagedObjectContext* context();
    void contextEnds();

    Ref<ManagedRecord> find(const NSEntityDescription& entity, std::int64_t key);
    void add(ManagedRecord& record);
    void forget(const ManagedRecord& record);
    void rename(ManagedRecord& record, std::int64_t key);
    void reserve(std::size_t count);
    std::vector<Ref<ManagedRecord>> all();

    void setHandle(ManagedRecord& record, NSManagedObject* handle);
    void dropHandle(ManagedRecord& record, const NSManagedObject* handle);
    Ref<NSManagedObject> handle(ManagedRecord& record);

private:
    struct Place {
        const NSEntityDescription* entity;
        std::int64_t key;
        friend bool operator==(const Place&, const Place&) noexcept = default;
    };
    struct PlaceHash {
        std::size_t operator()(const Place& place) const noexcept
        {
            return (static_cast<std::size_t>(place.key) * 0x9E3779B97F4A7C15U)
                ^ reinterpret_cast<std::uintptr_t>(place.entity);
        }
    };

    std::mutex m_mutex;
    NSManagedObjectContext* m_context;
    std::unordered_map<Place, ManagedRecord*, PlaceHash> m_records;
};

/// Negative, and never given twice.
std::int64_t nextTemporaryKey();

/// The object that shows a record, made if there is none.
ORRENBY_EXPORT Ref<NSManagedObject> objectFor(const Ref<ManagedRecord>& record);

/// The record that `objectFor` is making an object for on this thread, handed out once; else empty.
Ref<ManagedRecord> takeRecordToShow() noexcept;

} // namespace detail

} // namespace orrenby
