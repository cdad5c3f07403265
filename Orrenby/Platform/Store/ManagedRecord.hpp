#pragma once

/// @file
/// What a context knows of one stored object. Not in the umbrella header: contexts and objects share it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>
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

/// Keys that were temporary, and what they became.
class NewKeys {
public:
    void addTo(std::unordered_map<std::int64_t, std::int64_t>& keys) const
    {
        keys.insert(m_keys.begin(), m_keys.end());
    }

    /// After the last one comes `sort`.
    void add(std::int64_t temporaryKey, std::int64_t key) { m_keys.push_back({temporaryKey, key}); }
    void add(const NewKeys& others);
    void sort();

    bool isEmpty() const noexcept { return m_keys.empty(); }
    /// The permanent key, or nothing. O(log n).
    std::optional<std::int64_t> find(std::int64_t temporaryKey) const;
    /// The permanent key, or the key itself.
    std::int64_t renamed(std::int64_t key) const { return key < 0 ? find(key).value_or(key) : key; }

private:
    /// Falling, as temporary keys are given.
    std::vector<std::pair<std::int64_t, std::int64_t>> m_keys;
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
    Ref<ObjectRegistry> registry; ///< Empty for an object that belongs to no context.
    /// Set on the queue of the context, cleared anywhere. While it is not null, what it points to is whole
    /// only for whoever holds the lock of the registry.
    std::atomic<NSManagedObject*> handle = nullptr;
    ManagedRecord* next = nullptr; ///< In its row of the registry, which guards it.
    bool isFault = false;          ///< The values are not known yet.
    bool isInserted = false;
    bool isDeleted = false;
    bool isTracked = false;                     ///< Among the changes of the context.
    bool isListed = false;                      ///< In the list of them, maybe as what is left over there.
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
    /// The record, a new one without values if there was none.
    Ref<ManagedRecord> findOrMake(
        const Ref<const NSEntityDescription>& entity, std::int64_t key, const Ref<ObjectRegistry>& self);
    void add(ManagedRecord& record);
    void forget(const ManagedRecord& record);
    void rename(ManagedRecord& record, std::int64_t key);
    std::vector<Ref<ManagedRecord>> all();

    void dropHandle(ManagedRecord& record, NSManagedObject* handle);
    Ref<NSManagedObject> handle(ManagedRecord& record);

private:
    // All with the lock held.
    ManagedRecord*& row(const NSEntityDescription& entity, std::int64_t key);
    ManagedRecord* place(const NSEntityDescription& entity, std::int64_t key);
    void link(ManagedRecord& record);
    bool unlink(const ManagedRecord& record);
    void makeRoom();

    std::mutex m_mutex;
    NSManagedObjectContext* m_context;
    /// The records in rows by what they are found with, linked to one another: a record costs no allocation
    /// here. The number of rows is a power of two.
    std::vector<ManagedRecord*> m_rows;
    std::size_t m_count = 0;
};

/// Negative, and never given twice.
std::int64_t nextTemporaryKey();

/// The object that shows a record, made if there is none.
ORRENBY_EXPORT Ref<NSManagedObject> objectFor(const Ref<ManagedRecord>& record);

/// The record that `objectFor` is making an object for on this thread, handed out once; else empty.
Ref<ManagedRecord> takeRecordToShow() noexcept;

} // namespace detail

} // namespace orrenby
