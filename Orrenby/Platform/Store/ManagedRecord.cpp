#include "Orrenby/Platform/Store/ManagedRecord.hpp"
#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include <algorithm>
#include <atomic>
#include <functional>
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

void NewKeys::add(const NewKeys& others)
{
    m_keys.insert(m_keys.end(), others.m_keys.begin(), others.m_keys.end());
}

void NewKeys::sort()
{
    // Only a parent of several contexts gets keys in another order.
    if (!std::is_sorted(m_keys.begin(), m_keys.end(), std::greater()))
        std::sort(m_keys.begin(), m_keys.end(), std::greater());
}

std::optional<std::int64_t> NewKeys::find(std::int64_t temporaryKey) const
{
    const auto found = std::lower_bound(m_keys.begin(), m_keys.end(), temporaryKey,
        [](const auto& known, std::int64_t wanted) { return known.first > wanted; });
    return found != m_keys.end() && found->first == temporaryKey ? std::optional(found->second)
                                                                 : std::nullopt;
}

ManagedRecord::ManagedRecord(
    Ref<const NSEntityDescription> recordEntity, std::int64_t recordKey, Ref<ObjectRegistry> recordRegistry)
    : entity(std::move(recordEntity))
    , key(recordKey)
    , registry(std::move(recordRegistry))
    , sets(entity->setCount())
{}

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

ManagedRecord*& ObjectRegistry::row(const NSEntityDescription& entity, std::int64_t key)
{
    // Numbers of one entity follow one another: neighbours in rows then, of which no two are the same.
    const auto place = static_cast<std::size_t>(key) + entity.serialNumber() * 0x9E3779B97F4A7C15U;
    return m_rows[place & (m_rows.size() - 1)];
}

ManagedRecord* ObjectRegistry::place(const NSEntityDescription& entity, std::int64_t key)
{
    if (m_rows.empty())
        return nullptr;
    auto* record = row(entity, key);
    while (record != nullptr && (record->key != key || record->entity.get() != &entity))
        record = record->next;
    return record;
}

void ObjectRegistry::link(ManagedRecord& record)
{
    auto*& first = row(*record.entity, record.key);
    record.next = first;
    first = &record;
    ++m_count;
}

bool ObjectRegistry::unlink(const ManagedRecord& record)
{
    if (m_rows.empty())
        return false;
    auto** link = &row(*record.entity, record.key);
    while (*link != nullptr && *link != &record)
        link = &(*link)->next;
    if (*link == nullptr)
        return false;
    *link = record.next;
    --m_count;
    return true;
}

void ObjectRegistry::makeRoom()
{
    constexpr std::size_t leastRowCount = 16;

    if (m_count < m_rows.size())
        return;
    auto earlier = std::vector<ManagedRecord*>(std::max(leastRowCount, m_rows.size() * 2));
    earlier.swap(m_rows);
    for (auto* record : earlier)
        while (record != nullptr) {
            auto*& first = row(*record->entity, record->key);
            auto* const next = std::exchange(record->next, first);
            first = std::exchange(record, next);
        }
}

Ref<ManagedRecord> ObjectRegistry::find(const NSEntityDescription& entity, std::int64_t key)
{
    const std::lock_guard lock(m_mutex);
    auto* const found = place(entity, key);
    return found != nullptr ? found->weak_from_this().lock() : nullptr;
}

Ref<ManagedRecord> ObjectRegistry::findOrMake(
    const Ref<const NSEntityDescription>& entity, std::int64_t key, const Ref<ObjectRegistry>& self)
{
    const std::lock_guard lock(m_mutex);
    if (auto* const found = place(*entity, key)) {
        if (auto record = found->weak_from_this().lock())
            return record;
        // It is about to go, and waits for the lock.
        unlink(*found);
    }
    // First, so that nothing can fail once the record is there: its end would wait for this lock.
    makeRoom();
    auto made = std::make_shared<ManagedRecord>(entity, key, self);
    made->isFault = true;
    link(*made);
    return made;
}

void ObjectRegistry::add(ManagedRecord& record)
{
    const std::lock_guard lock(m_mutex);
    makeRoom();
    link(record);
}

void ObjectRegistry::forget(const ManagedRecord& record)
{
    const std::lock_guard lock(m_mutex);
    unlink(record);
}

void ObjectRegistry::rename(ManagedRecord& record, std::int64_t key)
{
    const std::lock_guard lock(m_mutex);
    const bool isKnown = unlink(record);
    record.key = key;
    if (isKnown)
        link(record);
}

std::vector<Ref<ManagedRecord>> ObjectRegistry::all()
{
    const std::lock_guard lock(m_mutex);
    std::vector<Ref<ManagedRecord>> result;
    for (auto* record : m_rows)
        for (; record != nullptr; record = record->next)
            if (auto held = record->weak_from_this().lock())
                result.push_back(std::move(held));
    return result;
}

void ObjectRegistry::dropHandle(ManagedRecord& record, NSManagedObject* handle)
{
    // A newer object may have taken its place.
    const std::lock_guard lock(m_mutex);
    record.handle.compare_exchange_strong(handle, nullptr);
}

Ref<NSManagedObject> ObjectRegistry::handle(ManagedRecord& record)
{
    if (record.handle.load() == nullptr)
        return nullptr;
    // An object that is about to go waits for this lock before any part of it is destroyed.
    const std::lock_guard lock(m_mutex);
    auto* const handle = record.handle.load();
    return handle != nullptr ? handle->weak_from_this().lock() : nullptr;
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
