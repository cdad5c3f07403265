#pragma once

/// @file
/// Where stored objects are worked with.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Lifetime.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Observing/NotificationName.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Store/NSFetchRequest.hpp"
#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include "Orrenby/Platform/Store/PersistentStore.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include "Orrenby/Platform/Store/StoreOutcome.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class Notification;

/// Posted by a context after a save, on its thread. The user information has the lists "inserted", "updated"
/// and "deleted" of `NSManagedObjectID`. Hand it to `mergeChanges` of other contexts.
extern ORRENBY_EXPORT const NotificationName& NSManagedObjectContextDidSaveNotification;

namespace detail {

class ContextState;
struct RecordChange;

} // namespace detail

/// A workplace for stored objects: it hands out each of them once, remembers what is changed, and saves all
/// of it or nothing.
///
/// @snippet Tests/Platform/Store/NSManagedObjectContextTests.cpp Working in a context
///
/// Changes are seen by other contexts only when they were saved. A context with a parent saves into the
/// parent, which in turn saves on; it reads what the parent holds, unsaved changes included.
///
/// Whoever saves changes of an object that somebody else has saved meanwhile gets a `Conflict`; `refresh`
/// brings the object up to date, with or without the own changes, and the save can be repeated. After any
/// failure the context holds all its changes, and the store what it held before.
///
/// It keeps its changed objects alive, no others. Made with `make<NSManagedObjectContext>(store)`.
///
/// Use from its queue, by `perform` or `performAndWait`; a context that only one thread ever uses needs no
/// queue.
class ORRENBY_EXPORT NSManagedObjectContext : public Lifetime,
                                              public std::enable_shared_from_this<NSManagedObjectContext> {
public:
    /// Without unsaved changes, above a store, or above another context, which then takes what this one
    /// saves.
    explicit NSManagedObjectContext(Ref<PersistentStore> store);
    explicit NSManagedObjectContext(Ref<NSManagedObjectContext> parent);
    ~NSManagedObjectContext() override;

    /// The store, of the parents' parent in the end.
    const Ref<PersistentStore>& persistentStore() const noexcept;
    /// Empty for a context that works on the store itself.
    const Ref<NSManagedObjectContext>& parent() const noexcept;

    /// Whatever the application wants to keep with the context.
    const Dictionary& userInfo() const noexcept { return m_userInfo; }
    Dictionary& userInfo() noexcept { return m_userInfo; }

    /// Runs `work` on the queue of the context, after what was handed over before, and returns at once. It
    /// keeps the context alive and must not throw.
    void perform(UniqueFunction<void()> work);

    /// Runs `work` on the queue of the context, waits for it, and returns its result or lets its exception
    /// pass. May be nested: on the queue already, it runs `work` at once.
    template <class Work> std::invoke_result_t<Work> performAndWait(Work&& work)
    {
        if (m_queue.isCurrent())
            return std::forward<Work>(work)();
        return m_queue.sync(std::forward<Work>(work));
    }

    /// A new object of the entity of that name. An unknown name is a programming error, as is an entity whose
    /// objects are no `T`.
    template <class T = NSManagedObject> Ref<T> insert(std::string_view entity)
    {
        return required<T>(insertObject(entity));
    }

    /// Deletes an object of this context; the rules of its relationships apply at once. Deleting it again is
    /// ignored. Throws a `StoreError` when an object to which they lead cannot be read.
    void delete_(const Ref<NSManagedObject>& object);
    /// `delete_` that gives the failure instead of throwing it.
    Result<Void, StoreError> tryDelete(const Ref<NSManagedObject>& object);

    /// The object of that name, which is read when it is first needed, whether it exists or not. Of another
    /// model: a programming error.
    template <class T = NSManagedObject> Ref<T> object(const NSManagedObjectID& objectID)
    {
        return std::dynamic_pointer_cast<T>(findObject(objectID, false));
    }
    /// The object of that name; empty when the store has none, it was deleted here, or it is no `T`. Throws a
    /// `StoreError`.
    template <class T = NSManagedObject> Ref<T> existingObject(const NSManagedObjectID& objectID)
    {
        return std::dynamic_pointer_cast<T>(findObject(objectID, true));
    }
    /// `existingObject` that gives the failure instead of throwing it. That there is none is no failure.
    template <class T = NSManagedObject>
    Result<Ref<T>, StoreError> tryExistingObject(const NSManagedObjectID& objectID)
    {
        return detail::storeOutcome([&] { return existingObject<T>(objectID); });
    }

    /// The objects that the request asks for, unsaved ones included and deleted ones left out. Those that are
    /// no `T` are left out as well. Throws a `StoreError`, of the kind `InvalidPredicate` for an unknown
    /// entity or key, and for a predicate that does not fit the entity.
    ///
    /// While objects of the entity, or of others that the predicate leads to, have unsaved changes, all of
    /// the entity's are read, chosen from and ordered in memory. So they are for predicates with `MATCHES`,
    /// more than 200 comparisons, 8 levels or 3 relationships in a path.
    template <class T = NSManagedObject> std::vector<Ref<T>> fetch(const NSFetchRequest& request)
    {
        auto objects = fetchObjects(request);
        if constexpr (std::is_same_v<T, NSManagedObject>)
            return objects;
        else {
            std::vector<Ref<T>> result;
            result.reserve(objects.size());
            for (auto& object : objects)
                if (auto found = std::dynamic_pointer_cast<T>(std::move(object)))
                    result.push_back(std::move(found));
            return result;
        }
    }
    /// `fetch` that gives the failure instead of throwing it.
    template <class T = NSManagedObject>
    Result<std::vector<Ref<T>>, StoreError> tryFetch(const NSFetchRequest& request)
    {
        return detail::storeOutcome([&] { return fetch<T>(request); });
    }

    /// Whether there is anything to save. O(1).
    bool hasChanges() const noexcept;

    /// What would be saved for the first time, changed, removed.
    std::vector<Ref<NSManagedObject>> insertedObjects() const;
    std::vector<Ref<NSManagedObject>> updatedObjects() const;
    std::vector<Ref<NSManagedObject>> deletedObjects() const;

    /// Saves all changes to the store, or into the parent; without changes it does nothing. Throws a
    /// `StoreError`: `InvalidValue`, `DeleteDenied`, `Conflict`, `Constraint`, `DiskFull`, `ReadOnly`, `Busy`
    /// and others. Then nothing was saved, and every change is still here.
    void save();
    /// `save` that gives the failure instead of throwing it.
    Result<Void, StoreError> trySave();

    /// Gives up all unsaved changes: new objects are no longer part of the context, deleted ones are back.
    /// An observer of an object is told when all its values are back; what it changes then is a new change.
    void rollback();

    /// Reads the object's values again. Unsaved changes are given up, or put on top of what is stored; its
    /// observers are told as by `rollback`. Throws a `StoreError`, of the kind `ObjectGone` when it was
    /// deleted meanwhile.
    void refresh(const Ref<NSManagedObject>& object, bool keepingChanges);
    /// `refresh` that gives the failure instead of throwing it.
    Result<Void, StoreError> tryRefresh(const Ref<NSManagedObject>& object, bool keepingChanges);

    /// Takes over what another context of the store has saved. Objects with unsaved changes keep them, on top
    /// of what is stored now; deleted objects are deleted here as well, their changes are lost. Throws a
    /// `StoreError`.
    void mergeChanges(const Notification& didSave);
    /// `mergeChanges` that gives the failure instead of throwing it.
    Result<Void, StoreError> tryMergeChanges(const Notification& didSave);

private:
    friend class NSManagedObject;
    friend class detail::ContextState;

    template <class T> static Ref<T> required(Ref<NSManagedObject> object)
    {
        auto result = std::dynamic_pointer_cast<T>(std::move(object));
        if (result == nullptr)
            wrongClass();
        return result;
    }
    [[noreturn]] static void wrongClass();

    void release() noexcept final;

    Ref<NSManagedObject> insertObject(std::string_view entity);
    Ref<NSManagedObject> findObject(const NSManagedObjectID& objectID, bool mustExist);
    std::vector<Ref<NSManagedObject>> fetchObjects(const NSFetchRequest& request);

    // For objects.
    Ref<detail::ManagedRecord> insertRecord(Ref<const NSEntityDescription> entity);
    Ref<detail::ManagedRecord> record(const NSEntityDescription& entity, std::int64_t key);
    void fill(detail::ManagedRecord& record);
    void track(detail::ManagedRecord& record);
    void connect(const Ref<detail::ManagedRecord>& record, std::size_t relationship,
        const Ref<detail::ManagedRecord>& target);
    void addMember(const Ref<detail::ManagedRecord>& record, std::size_t relationship,
        const Ref<detail::ManagedRecord>& target);
    void removeMember(const Ref<detail::ManagedRecord>& record, std::size_t relationship,
        const Ref<detail::ManagedRecord>& target);
    std::vector<Ref<detail::ManagedRecord>> members(detail::ManagedRecord& record, std::size_t relationship);

    Dictionary m_userInfo;
    DispatchQueue m_queue;
    detail::Owned<detail::ContextState> m_state;
};

} // namespace orrenby
