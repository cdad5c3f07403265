#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Store/ContextState.hpp"
#include "Orrenby/Platform/Store/StoreCore.hpp"

namespace orrenby::inline ORRENBY_ABI {

using detail::ContextState;
using detail::ManagedRecord;

namespace {

const NotificationName& didSaveName()
{
    static const auto& name = *new NotificationName("NSManagedObjectContextDidSaveNotification");
    return name;
}

std::vector<Ref<NSManagedObject>> objectsOf(
    const std::vector<Ref<ManagedRecord>>& records, bool (*isWanted)(const ManagedRecord&))
{
    std::vector<Ref<NSManagedObject>> result;
    for (const auto& record : records)
        if (record->isTracked && isWanted(*record))
            result.push_back(detail::objectFor(record));
    return result;
}

} // namespace

const NotificationName& NSManagedObjectContextDidSaveNotification = didSaveName();

NSManagedObjectContext::NSManagedObjectContext(Ref<PersistentStore> store)
    : m_queue(DispatchQueue::serial("NSManagedObjectContext"))
{
    if (store == nullptr)
        fatalError("A context has a store or a parent", "Platform/NSManagedObjectContext", 40);
    auto& source = *store->m_core;
    m_state = detail::Owned<ContextState>::make(*this, std::move(store), source);
}

NSManagedObjectContext::NSManagedObjectContext(Ref<NSManagedObjectContext> parent)
    : m_queue(DispatchQueue::serial("NSManagedObjectContext"))
{
    if (parent == nullptr)
        fatalError("A context has a store or a parent", "Platform/NSManagedObjectContext", 49);
    m_state = detail::Owned<ContextState>::make(*this, std::move(parent));
}

NSManagedObjectContext::~NSManagedObjectContext() = default;

void NSManagedObjectContext::release() noexcept { m_state->registry->contextEnds(); }

void NSManagedObjectContext::wrongClass()
{
    fatalError("The entity's objects are of another class", "Platform/NSManagedObjectContext", 59);
}

const Ref<PersistentStore>& NSManagedObjectContext::persistentStore() const noexcept
{
    return m_state->store;
}

const Ref<NSManagedObjectContext>& NSManagedObjectContext::parent() const noexcept { return m_state->parent; }

void NSManagedObjectContext::perform(UniqueFunction<void()> work)
{
    m_queue.async([self = shared_from_this(), work = std::move(work)]() mutable { work(); });
}

Ref<NSManagedObject> NSManagedObjectContext::insertObject(std::string_view name)
{
    const auto entity = persistentStore()->model()->entity(name);
    if (entity == nullptr)
        fatalError("The model has no such entity", "Platform/NSManagedObjectContext", 75);
    return detail::objectFor(m_state->insert(entity));
}

Ref<NSManagedObject> NSManagedObjectContext::findObject(const NSManagedObjectID& objectID, bool mustExist)
{
    if (objectID.entity() == nullptr
        || persistentStore()->model()->entity(objectID.entity()->name().value_or("")) != objectID.entity())
        fatalError("The object is of another model", "Platform/NSManagedObjectContext", 83);
    const auto found = m_state->record(*objectID.entity(), objectID.key());
    if (mustExist) {
        if (found->isDeleted)
            return nullptr;
        try {
            if (found->isFault)
                m_state->fill(*found);
        } catch (const StoreError& error) {
            if (error.kind() == StoreError::Kind::ObjectGone)
                return nullptr;
            throw;
        }
    }
    return detail::objectFor(found);
}

std::vector<Ref<NSManagedObject>> NSManagedObjectContext::fetchObjects(const NSFetchRequest& request)
{
    const auto records = m_state->fetch(m_state->plan(request));
    std::vector<Ref<NSManagedObject>> objects;
    objects.reserve(records.size());
    for (const auto& found : records)
        objects.push_back(detail::objectFor(found));
    return objects;
}

void NSManagedObjectContext::delete_(const Ref<NSManagedObject>& object)
{
    if (object == nullptr || object->m_record->registry != m_state->registry)
        fatalError("Only objects of the context can be deleted", "Platform/NSManagedObjectContext", 112);
    m_state->remove(object->m_record);
}

Result<Void, StoreError> NSManagedObjectContext::tryDelete(const Ref<NSManagedObject>& object)
{
    return detail::storeOutcome([&] { delete_(object); });
}

bool NSManagedObjectContext::hasChanges() const noexcept { return m_state->hasChanges(); }

std::vector<Ref<NSManagedObject>> NSManagedObjectContext::insertedObjects() const
{
    return objectsOf(m_state->tracked(), [](const ManagedRecord& record) { return record.isInserted; });
}

std::vector<Ref<NSManagedObject>> NSManagedObjectContext::updatedObjects() const
{
    return objectsOf(m_state->tracked(),
        [](const ManagedRecord& record) { return !record.isInserted && !record.isDeleted; });
}

std::vector<Ref<NSManagedObject>> NSManagedObjectContext::deletedObjects() const
{
    return objectsOf(m_state->tracked(), [](const ManagedRecord& record) { return record.isDeleted; });
}

void NSManagedObjectContext::save() { m_state->save(); }

Result<Void, StoreError> NSManagedObjectContext::trySave()
{
    return detail::storeOutcome([&] { save(); });
}

void NSManagedObjectContext::rollback() { m_state->rollback(); }

void NSManagedObjectContext::refresh(const Ref<NSManagedObject>& object, bool keepingChanges)
{
    if (object == nullptr || object->m_record->registry != m_state->registry)
        fatalError("Only objects of the context can be refreshed", "Platform/NSManagedObjectContext", 151);
    m_state->refresh(*object->m_record, keepingChanges);
}

Result<Void, StoreError> NSManagedObjectContext::tryRefresh(
    const Ref<NSManagedObject>& object, bool keepingChanges)
{
    return detail::storeOutcome([&] { refresh(object, keepingChanges); });
}

void NSManagedObjectContext::mergeChanges(const Notification& didSave) { m_state->merge(didSave); }

Result<Void, StoreError> NSManagedObjectContext::tryMergeChanges(const Notification& didSave)
{
    return detail::storeOutcome([&] { mergeChanges(didSave); });
}

Ref<ManagedRecord> NSManagedObjectContext::insertRecord(Ref<const NSEntityDescription> entity)
{
    if (persistentStore()->model()->entity(entity->name().value_or("")) != entity)
        fatalError("The entity is not of the store's model", "Platform/NSManagedObjectContext", 160);
    return m_state->insert(std::move(entity));
}

Ref<ManagedRecord> NSManagedObjectContext::record(const NSEntityDescription& entity, std::int64_t key)
{
    return m_state->record(entity, key);
}

void NSManagedObjectContext::fill(ManagedRecord& record) { m_state->fill(record); }

void NSManagedObjectContext::track(ManagedRecord& record) { m_state->track(record); }

void NSManagedObjectContext::connect(
    const Ref<ManagedRecord>& record, std::size_t relationship, const Ref<ManagedRecord>& target)
{
    m_state->connect(record, relationship, target);
}

void NSManagedObjectContext::addMember(
    const Ref<ManagedRecord>& record, std::size_t relationship, const Ref<ManagedRecord>& target)
{
    m_state->addMember(record, relationship, target);
}

void NSManagedObjectContext::removeMember(
    const Ref<ManagedRecord>& record, std::size_t relationship, const Ref<ManagedRecord>& target)
{
    m_state->removeMember(record, relationship, target);
}

std::vector<Ref<ManagedRecord>> NSManagedObjectContext::members(
    ManagedRecord& record, std::size_t relationship)
{
    return m_state->members(record, relationship);
}

} // namespace orrenby
