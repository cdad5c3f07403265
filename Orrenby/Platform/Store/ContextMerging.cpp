#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Observing/Notification.hpp"
#include "Orrenby/Platform/Store/ContextState.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// The names of the values, by their places.
std::vector<std::string_view> slotNames(const NSEntityDescription& entity)
{
    std::vector<std::string_view> names;
    for (const auto& attribute : entity.attributes())
        names.push_back(attribute.name);
    for (const auto& relationship : entity.relationships())
        if (!relationship.description.isToMany)
            names.push_back(relationship.description.name);
    return names;
}

/// The names of the values at which this is the case.
template <class Predicate>
std::vector<std::string_view> namesWhere(const NSEntityDescription& entity, const Predicate& isWanted)
{
    auto names = slotNames(entity);
    std::size_t slot = 0;
    std::erase_if(names, [&](std::string_view) { return !isWanted(slot++); });
    return names;
}

} // namespace

void ContextState::rollback()
{
    const auto records = m_tracked; // observers may change any of them again
    for (const auto& record : records) {
        if (!record->isTracked)
            continue;
        if (std::exchange(record->isInserted, false)) {
            record->isDeleted = true;
            untrack(*record);
            registry->forget(*record);
        } else
            giveBack(*record, std::move(record->snapshot));
    }
}

/// Nobody sees half of it: what observers change when they are told is a change of its own.
void ContextState::giveBack(ManagedRecord& record, std::unique_ptr<const std::vector<Any>> stored)
{
    auto keys = namesWhere(*record.entity,
        [&](std::size_t slot) { return stored != nullptr && record.values[slot] != (*stored)[slot]; });
    for (const auto& relationship : record.entity->relationships())
        if (relationship.description.isToMany && record.sets[relationship.slot].hasChanges())
            keys.push_back(relationship.description.name);
    tell(record, keys, [&] {
        if (stored != nullptr)
            record.values = *stored;
        record.snapshot = nullptr;
        for (auto& set : record.sets) {
            set.added.clear();
            set.removed.clear();
        }
        record.isDeleted = false;
        untrack(record);
    });
}

void ContextState::update(ManagedRecord& record, std::int64_t version, std::vector<Any> values)
{
    const auto held = record.shared_from_this();
    const auto isOlder = [&](std::size_t slot) {
        return !record.isChangedAt(slot) && record.values[slot] != values[slot];
    };
    tell(record, namesWhere(*record.entity, isOlder), [&] {
        record.version = version;
        for (std::size_t slot = 0; slot < values.size(); ++slot)
            if (isOlder(slot))
                record.values[slot] = values[slot];
        if (record.isTracked)
            record.snapshot = std::make_unique<std::vector<Any>>(std::move(values));
    });
}

void ContextState::refresh(ManagedRecord& record, bool keepingChanges)
{
    const auto held = record.shared_from_this();
    if (record.isInserted)
        return; // there is nothing to read
    std::vector<Any> stored;
    const auto version = source().load(*record.entity, record.key, stored);
    if (!version)
        throw StoreError(StoreError::Kind::ObjectGone,
            {.message = NSManagedObjectID(record.entity, record.key).description() + " is not in the store",
                .objectIDs = {NSManagedObjectID(record.entity, record.key)}});
    for (auto& set : record.sets)
        set.stored.reset();
    if (std::exchange(record.isFault, false))
        record.values = stored; // nobody has seen others
    if (keepingChanges)
        return update(record, *version, std::move(stored));
    record.version = *version;
    giveBack(record, std::make_unique<const std::vector<Any>>(std::move(stored)));
}

void ContextState::merge(const Notification& didSave)
{
    takeOverKeys();
    const auto each = [&](const char* name, auto&& use) {
        const auto* const list = didSave.userInfo()[name].get<Array>();
        if (list == nullptr)
            return;
        for (const Any& element : *list)
            if (const auto* const objectID = element.get<NSManagedObjectID>())
                if (const auto record = registry->find(*objectID->entity(), objectID->key()))
                    use(*record);
    };
    each("updated", [&](ManagedRecord& record) {
        if (!record.isDeleted && !record.isFault)
            refresh(record, true);
        for (auto& set : record.sets)
            set.stored.reset();
    });
    each("deleted", [&](ManagedRecord& record) {
        const auto held = record.shared_from_this();
        record.isDeleted = true;
        untrack(record);
        registry->forget(record);
    });
}

} // namespace orrenby::inline ORRENBY_ABI::detail
