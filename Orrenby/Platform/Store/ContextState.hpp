#pragma once

/// @file
/// What a context is made of. Not in the umbrella header: contexts keep it to themselves.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Platform/Store/ManagedRecord.hpp"
#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/NSFetchRequest.hpp"
#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include "Orrenby/Platform/Store/RecordSource.hpp"
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class Notification;
class NSManagedObjectContext;
class PersistentStore;

namespace detail {

/// The records of a context and their changes.
///
/// Used from the queue of its context, but for `announceKeys`.
class ContextState {
public:
    ContextState(NSManagedObjectContext& owner, Ref<PersistentStore> store, RecordSource& source);
    /// A child's.
    ContextState(NSManagedObjectContext& owner, Ref<NSManagedObjectContext> parent);
    ContextState(const ContextState&) = delete;
    ContextState& operator=(const ContextState&) = delete;

    // Finding.
    Ref<ManagedRecord> insert(Ref<const NSEntityDescription> entity);
    Ref<ManagedRecord> record(const NSEntityDescription& entity, std::int64_t key);
    void fill(ManagedRecord& record);
    FetchPlan plan(const NSFetchRequest& request) const;
    std::vector<Ref<ManagedRecord>> fetch(const FetchPlan& plan);
    /// Takes over newer values; unsaved changes stay on top of them.
    void update(ManagedRecord& record, std::int64_t version, std::vector<Any> values);

    // Changing.
    void track(ManagedRecord& record);
    void connect(const Ref<ManagedRecord>& record, std::size_t index, const Ref<ManagedRecord>& target);
    void addMember(const Ref<ManagedRecord>& record, std::size_t index, const Ref<ManagedRecord>& target);
    void removeMember(const Ref<ManagedRecord>& record, std::size_t index, const Ref<ManagedRecord>& target);
    std::vector<std::int64_t> memberKeys(ManagedRecord& record, std::size_t index);
    std::vector<Ref<ManagedRecord>> members(ManagedRecord& record, std::size_t index);
    void remove(const Ref<ManagedRecord>& record);

    // Saving.
    void save();
    void rollback();
    void refresh(ManagedRecord& record, bool keepingChanges);
    void merge(const Notification& didSave);
    /// Takes over the changes of a child. All or nothing.
    void receive(std::span<RecordChange> changes);
    /// Says that objects got permanent keys, to the children as well. Safe to use from several threads.
    void announceKeys(const NewKeys& newKeys);
    /// Gives the records the keys that were announced.
    void takeOverKeys();

    bool hasChanges() const noexcept { return m_changeCount != 0; }
    const std::vector<Ref<ManagedRecord>>& tracked() const noexcept { return m_tracked; }

    const Ref<PersistentStore> store;
    const Ref<NSManagedObjectContext> parent;
    const Ref<ObjectRegistry> registry;

private:
    RecordSource& source();
    void addChild(WeakRef<NSManagedObjectContext> child);
    /// Whether there are children.
    bool tellChildren(const NewKeys& newKeys);
    void rename(ManagedRecord& record, const NewKeys& newKeys);

    void untrack(ManagedRecord& record) noexcept;
    /// Gives up the unsaved changes of a record that was saved once, and tells of it. Nothing in place of the
    /// values if nobody knows them.
    void giveBack(ManagedRecord& record, std::unique_ptr<const std::vector<Any>> stored);
    void setLink(ManagedRecord& record, const ResolvedRelationship& relationship, const Any& key);
    void addLink(ManagedRecord& other, const ResolvedRelationship& link, const ResolvedRelationship& back,
        std::int64_t key);
    void dropLink(ManagedRecord& other, const ResolvedRelationship& link, std::int64_t key);
    void checkDeletion(ManagedRecord& record);
    void checkValues(const ManagedRecord& record) const;
    void adopt(std::span<RecordChange> changes);
    void post(std::span<const RecordChange> changes) const;

    /// Makes a change between its announcement and telling of it.
    template <class Change> void tell(ManagedRecord& record, std::string_view key, Change&& change)
    {
        tell(record, std::span(&key, 1), std::forward<Change>(change));
    }
    /// The same for a change of several values at once.
    template <class Change>
    void tell(ManagedRecord& record, std::span<const std::string_view> keys, Change&& change)
    {
        const auto handle = registry->handle(record);
        for (std::size_t index = 0; handle && index < keys.size(); ++index)
            handle->willChangeValue(keys[index]);
        change();
        for (std::size_t index = 0; handle && index < keys.size(); ++index)
            handle->didChangeValue(keys[index]);
    }

    NSManagedObjectContext& m_owner;
    std::unique_ptr<RecordSource> m_parentSource;
    RecordSource* m_source;
    std::vector<Ref<ManagedRecord>> m_tracked;
    std::size_t m_changeCount = 0; ///< Of the tracked records that have something to save.
    /// Of a context with children or a parent: what became of temporary keys. Somebody may have asked for one
    /// just before.
    std::unordered_map<std::int64_t, std::int64_t> m_permanentKeys;
    bool m_isKnownToParent = false;

    std::mutex m_mutex;                                      ///< Guards what follows.
    std::vector<WeakRef<NSManagedObjectContext>> m_children; ///< To be told of permanent keys.
    NewKeys m_announcedKeys;
    std::atomic<bool> m_hasAnnouncedKeys = false;
};

/// The parent of a context as a source of records; works on the parent's queue, while the child waits. What
/// it gives has the keys that the child knows then, although the parent may have been saved a moment before.
class ParentSource final : public RecordSource {
public:
    ParentSource(NSManagedObjectContext& parent, ContextState& state, ContextState& child) noexcept
        : m_parent(parent)
        , m_state(state)
        , m_child(child)
    {}

    void fetch(const FetchPlan& plan, RecordReceiver& receiver) override;
    std::optional<std::int64_t> load(
        const NSEntityDescription& entity, std::int64_t key, std::vector<Any>& values) override;
    std::vector<std::int64_t> members(
        const NSEntityDescription& entity, std::size_t relationship, std::int64_t key) override;
    void save(std::span<RecordChange> changes) override;

private:
    NSManagedObjectContext& m_parent;
    ContextState& m_state;
    ContextState& m_child;
};

} // namespace detail

} // namespace orrenby
