#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include "Orrenby/Platform/Store/ContextState.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include <algorithm>
#include <cmath>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

NSManagedObjectID identify(const ManagedRecord& record) { return {record.entity, record.key}; }

[[noreturn]] void refuseValue(const ManagedRecord& record, const std::string& key, const char* problem)
{
    throw StoreError(StoreError::Kind::InvalidValue,
        {.message = identify(record).description() + "." + key + " " + problem,
            .objectIDs = {identify(record)},
            .key = key});
}

bool isNoNumber(const Any& value)
{
    const auto* const number = value.get<double>();
    const auto* const date = value.get<Date>();
    return (number != nullptr && std::isnan(*number))
        || (date != nullptr && std::isnan(date->secondsSince1970()));
}

void rename(std::set<std::int64_t>& keys, const NewKeys& newKeys)
{
    std::set<std::int64_t> result;
    for (const auto key : keys)
        result.insert(newKeys.renamed(key));
    keys = std::move(result);
}

} // namespace

void ContextState::checkValues(const ManagedRecord& record) const
{
    const auto& attributes = record.entity->attributes();
    for (std::size_t slot = 0; slot < attributes.size(); ++slot) {
        if (record.values[slot].isNull() && !attributes[slot].isOptional)
            refuseValue(record, attributes[slot].name, "is missing");
        if (isNoNumber(record.values[slot]))
            refuseValue(record, attributes[slot].name, "is no number");
    }
    for (const auto& relationship : record.entity->relationships())
        if (!relationship.description.isToMany && !relationship.description.isOptional
            && record.values[relationship.slot].isNull())
            refuseValue(record, relationship.description.name, "is missing");
}

void ContextState::checkDeletion(ManagedRecord& record)
{
    const auto& relationships = record.entity->relationships();
    for (std::size_t index = 0; index < relationships.size(); ++index) {
        const auto& relationship = relationships[index];
        if (relationship.description.deleteRule != DeleteRule::Deny)
            continue;
        bool isDenied = false;
        if (relationship.description.isToMany)
            isDenied = !members(record, index).empty();
        else {
            if (record.isFault)
                fill(record);
            const Any& key = record.values[relationship.slot];
            isDenied = !key.isNull()
                && !this->record(*relationship.destination, *key.get<std::int64_t>())->isDeleted;
        }
        if (isDenied)
            throw StoreError(StoreError::Kind::DeleteDenied,
                {.message = identify(record).description() + "." + relationship.description.name
                        + " still leads to something",
                    .objectIDs = {identify(record)},
                    .key = relationship.description.name});
    }
}

void ContextState::save()
{
    takeOverKeys();
    if (!hasChanges())
        return;
    std::vector<RecordChange> changes;
    changes.reserve(m_changeCount);
    // Checking may read further objects, which must not disturb the walk.
    const auto records = m_tracked;
    for (const auto& record : records) {
        if (!record->isTracked)
            continue;
        const auto kind = record->isDeleted ? RecordChange::Kind::Delete
            : record->isInserted            ? RecordChange::Kind::Insert
                                            : RecordChange::Kind::Update;
        if (kind == RecordChange::Kind::Delete)
            checkDeletion(*record);
        else if (!record->isFault)
            checkValues(*record);
        changes.push_back({.kind = kind, .record = record.get(), .key = record->key});
    }
    source().save(changes);
    adopt(changes);
    post(changes);
}

void ContextState::adopt(std::span<RecordChange> changes)
{
    NewKeys newKeys;
    for (const auto& change : changes)
        if (change.record->key != change.key)
            newKeys.add(change.record->key, change.key);
    newKeys.sort();
    for (const auto& change : changes) {
        auto& record = *change.record;
        if (change.kind == RecordChange::Kind::Delete) {
            registry->forget(record);
            continue;
        }
        rename(record, newKeys);
        record.isInserted = false;
        record.snapshot = nullptr;
        record.version += change.isRowWritten ? 1 : 0;
        for (auto& set : record.sets) {
            if (set.stored)
                set.stored = set.members();
            set.added.clear();
            set.removed.clear();
        }
    }
    const auto saved = std::exchange(m_tracked, {}); // keeps the records until the end
    for (const auto& record : saved)
        record->isTracked = record->isListed = false;
    m_changeCount = 0;
    if (!newKeys.isEmpty() && tellChildren(newKeys))
        newKeys.addTo(m_permanentKeys);
}

void ContextState::rename(ManagedRecord& record, const NewKeys& newKeys)
{
    if (newKeys.isEmpty())
        return;
    if (const auto key = newKeys.renamed(record.key); key != record.key)
        registry->rename(record, key);
    for (auto* const values : {&record.values, record.snapshot.get()})
        for (std::size_t slot = record.entity->attributes().size();
             values != nullptr && slot < values->size(); ++slot)
            if (Any& value = (*values)[slot]; !value.isNull())
                value = newKeys.renamed(*value.get<std::int64_t>());
    for (auto& set : record.sets) {
        detail::rename(set.added, newKeys);
        detail::rename(set.removed, newKeys);
        if (set.stored) {
            for (auto& key : *set.stored)
                key = newKeys.renamed(key);
            std::sort(set.stored->begin(), set.stored->end());
        }
    }
}

void ContextState::announceKeys(const NewKeys& newKeys)
{
    {
        const std::lock_guard lock(m_mutex);
        m_announcedKeys.add(newKeys);
        m_hasAnnouncedKeys.store(true, std::memory_order_release);
    }
    tellChildren(newKeys);
}

bool ContextState::tellChildren(const NewKeys& newKeys)
{
    std::vector<Ref<NSManagedObjectContext>> children; // released without the lock
    {
        const std::lock_guard lock(m_mutex);
        for (const auto& child : m_children)
            children.push_back(child.lock());
    }
    for (const auto& child : children)
        if (child != nullptr)
            child->m_state->announceKeys(newKeys);
    return !children.empty();
}

void ContextState::takeOverKeys()
{
    if (!m_hasAnnouncedKeys.load(std::memory_order_acquire))
        return;
    NewKeys newKeys;
    {
        const std::lock_guard lock(m_mutex);
        newKeys = std::exchange(m_announcedKeys, {});
        m_hasAnnouncedKeys.store(false, std::memory_order_release);
    }
    newKeys.sort();
    newKeys.addTo(m_permanentKeys);
    for (const auto& record : registry->all())
        rename(*record, newKeys);
}

void ContextState::receive(std::span<RecordChange> changes)
{
    takeOverKeys();
    const auto isChanged = [](const ManagedRecord& record, std::size_t slot) {
        return record.snapshot != nullptr && record.values[slot] != (*record.snapshot)[slot];
    };
    std::vector<NSManagedObjectID> conflicts;
    for (const auto& change : changes) {
        const auto& record = *change.record;
        if (change.kind != RecordChange::Kind::Update)
            continue;
        const auto own = this->record(*record.entity, record.key);
        if (own->isFault)
            fill(*own);
        bool isConflict = own->isDeleted;
        for (std::size_t slot = 0; slot < record.values.size(); ++slot)
            isConflict |= isChanged(record, slot) && own->values[slot] != (*record.snapshot)[slot];
        if (isConflict)
            conflicts.push_back(identify(record));
    }
    if (!conflicts.empty())
        throw StoreError(StoreError::Kind::Conflict,
            {.message = std::to_string(conflicts.size()) + " objects were changed in the parent meanwhile",
                .objectIDs = std::move(conflicts)});

    for (const auto& change : changes) {
        const auto& record = *change.record;
        Ref<ManagedRecord> own;
        if (change.kind == RecordChange::Kind::Insert) {
            own = std::make_shared<ManagedRecord>(record.entity, record.key, registry);
            registry->add(*own);
            own->setDefaults();
            own->values = record.values;
            own->isInserted = true;
            track(*own);
        } else
            own = this->record(*record.entity, record.key);
        if (change.kind == RecordChange::Kind::Delete) {
            // The rules were applied by the child, whose other changes follow from them.
            track(*own);
            own->isDeleted = true;
            if (std::exchange(own->isInserted, false)) {
                untrack(*own);
                registry->forget(*own);
            }
            continue;
        }
        for (std::size_t slot = 0; slot < record.values.size(); ++slot)
            if (isChanged(record, slot)) {
                const auto attributeCount = record.entity->attributes().size();
                const auto& relationships = record.entity->relationships();
                const auto found = std::find_if(
                    relationships.begin(), relationships.end(), [&](const auto& relationship) {
                        return !relationship.description.isToMany && relationship.slot == slot;
                    });
                const auto& key = slot < attributeCount ? record.entity->attributes()[slot].name
                                                        : found->description.name;
                tell(*own, key, [&] {
                    track(*own);
                    own->values[slot] = record.values[slot];
                });
            }
        for (const auto& relationship : record.entity->relationships()) {
            if (!relationship.description.isToMany || !record.sets[relationship.slot].hasChanges())
                continue;
            const auto& changedSet = record.sets[relationship.slot];
            tell(*own, relationship.description.name, [&] {
                track(*own);
                for (const auto key : changedSet.added)
                    own->sets[relationship.slot].add(key);
                for (const auto key : changedSet.removed)
                    own->sets[relationship.slot].remove(key);
            });
        }
    }
}

void ContextState::post(std::span<const RecordChange> changes) const
{
    const auto& center = NotificationCenter::defaultCenter();
    if (center->observerCount() == 0)
        return;
    Array lists[3];
    for (const auto& change : changes)
        lists[static_cast<std::size_t>(change.kind)].push_back(Any(identify(*change.record)));
    center->post(Notification(NSManagedObjectContextDidSaveNotification, m_owner.weak_from_this().lock(),
        {{"inserted", lists[0]}, {"updated", lists[1]}, {"deleted", lists[2]}}));
}

} // namespace orrenby::inline ORRENBY_ABI::detail
