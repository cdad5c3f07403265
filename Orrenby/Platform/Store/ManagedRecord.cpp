#include "Orrenby/Platform/Store/ManagedRecord.hpp"
#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include <algorithm>
#include <atomic>
#include <iterator>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

thread_local Ref<ManagedRecord> recordToShow;

} // namespace

void RelationshipSet::add(std::int64_t key)
{
    if (removed.erase(key) != 0)
        return;
    if (!stored || !std::binary_search(stored->begin(), stored->end(), key))
        added.insert(key);
}

void RelationshipSet::remove(std::int64_t key)
{
    if (added.erase(key) != 0 && stored)
        return;
    if (!stored || std::binary_search(stored->begin(), stored->end(), key))
        removed.insert(key);
}

std::vector<std::int64_t> RelationshipSet::members() const
{
    std::vector<std::int64_t> kept;
    std::set_difference(
        stored->begin(), stored->end(), removed.begin(), removed.end(), std::back_inserter(kept));
    std::vector<std::int64_t> result;
    std::set_union(kept.begin(), kept.end(), added.begin(), added.end(), std::back_inserter(result));
    return result;
}

ManagedRecord::ManagedRecord(
    Ref<const NSEntityDescription> recordEntity, std::int64_t recordKey, Ref<ObjectRegistry> recordRegistry)
    : entity(std::move(recordEntity))
    , key(recordKey)
    , registry(std::move(recordRegistry))
    , sets(entity->setCount())
{
    if (registry)
        registry->add(*this);
}

ManagedRecord::~ManagedRecord()
{
    if (registry)
        registry->forget(*this);
}

void ManagedRecord::setDefaults()
{
    values.reserve(entity->valueCount());
    for (const auto& attribute : entity->attributes())
        values.push_back(attribute.defaultValue);
    values.resize(entity->valueCount());
    // What was never stored has no members that would have to be looked up.
    for (auto& set : sets)
        set.stored.emplace();
}

NSManagedObjectContext* ObjectRegistry::context()
{
    const std::lock_guard lock(m_mutex);
    return m_context;
}

void ObjectRegistry::contextEnds()
{
    const std::lock_guard lock(m_mutex);
    m_context = nullptr;
}

Ref<ManagedRecord> ObjectRegistry::find(const NSEntityDescription& entity, std::int64_t key)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_records.find({&entity, key});
    return found != m_records.end() ? found->second->weak_from_this().lock() : nullptr;
}

void ObjectRegistry::add(ManagedRecord& record)
{
    const std::lock_guard lock(m_mutex);
    m_records[{record.entity.get(), record.key}] = &record;
}

void ObjectRegistry::forget(const ManagedRecord& record)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_records.find({record.entity.get(), record.key});
    // A newer one may have taken the place of one that was about to go.
    if (found != m_records.end() && found->second == &record)
        m_records.erase(found);
}

void ObjectRegistry::rename(ManagedRecord& record, std::int64_t key)
{
    const std::lock_guard lock(m_mutex);
    m_records.erase({record.entity.get(), record.key});
    record.key = key;
    m_records[{record.entity.get(), key}] = &record;
}

void ObjectRegistry::reserve(std::size_t count)
{
    const std::lock_guard lock(m_mutex);
    m_records.reserve(m_records.size() + count);
}

std::vector<Ref<ManagedRecord>> ObjectRegistry::all()
{
    const std::lock_guard lock(m_mutex);
    std::vector<Ref<ManagedRecord>> result;
    for (const auto& [place, record] : m_records)
        if (auto held = record->weak_from_this().lock())
            result.push_back(std::move(held));
    return result;
}

void ObjectRegistry::setHandle(ManagedRecord& record, NSManagedObject* handle)
{
    const std::lock_guard lock(m_mutex);
    record.handle = handle;
}

void ObjectRegistry::dropHandle(ManagedRecord& record, const NSManagedObject* handle)
{
    const std::lock_guard lock(m_mutex);
    if (record.handle == handle)
        record.handle = nullptr;
}

Ref<NSManagedObject> ObjectRegistry::handle(ManagedRecord& record)
{
    // An object that is about to go waits for this lock before any part of it is destroyed.
    const std::lock_guard lock(m_mutex);
    return record.handle != nullptr ? record.handle->weak_from_this().lock() : nullptr;
}

std::int64_t nextTemporaryKey()
{
    static constinit std::atomic<std::int64_t> latest = 0;
    return latest.fetch_sub(1, std::memory_order_relaxed) - 1;
}

Ref<NSManagedObject> objectFor(const Ref<ManagedRecord>& record)
{
    if (auto object = record->registry->handle(*record))
        return object;
    // Also when a constructor throws, no later object is to take the record.
    struct Cleaner {
        ~Cleaner() { recordToShow = nullptr; }
    } const cleaner;
    recordToShow = record;
    const auto factory = record->entity->objectClass();
    return factory != nullptr ? factory(record->entity) : managedObjectClass<NSManagedObject>(record->entity);
}

Ref<ManagedRecord> takeRecordToShow() noexcept { return std::exchange(recordToShow, nullptr); }

} // namespace orrenby::inline ORRENBY_ABI::detail
