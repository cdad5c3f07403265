#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Observing/Notification.hpp"
#include "Orrenby/Platform/Store/ContextState.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// The names of the values, by their places.
std::vector<std::string> slotNames(const NSEntityDescription& entity)
{
    std::vector<std::string> names;
    for (const auto& attribute : entity.attributes())
        names.push_back(attribute.name);
    for (const auto& relationship : entity.relationships())
        if (!relationship.description.isToMany)
            names.push_back(relationship.description.name);
    return names;
}

} // namespace

void ContextState::rollback()
{
    const auto records = std::exchange(m_tracked, {});
    m_changeCount = 0;
    for (const auto& record : records) // before observers, who may change any of them, hear of the first
        record->isListed = false;
    for (const auto& record : records) {
        if (!std::exchange(record->isTracked, false))
            continue;
        record->isDeleted = false;
        if (std::exchange(record->isInserted, false)) {
            record->isDeleted = true;
            registry->forget(*record);
            continue;
        }
        const auto snapshot = std::move(record->snapshot);
        const auto names = slotNames(*record->entity);
        for (std::size_t slot = 0; snapshot != nullptr && slot < names.size(); ++slot)
            if (record->values[slot] != (*snapshot)[slot])
                tell(*record, names[slot], [&] { record->values[slot] = (*snapshot)[slot]; });
        for (const auto& relationship : record->entity->relationships())
            if (relationship.description.isToMany && record->sets[relationship.slot].hasChanges())
                tell(*record, relationship.description.name, [&] {
                    record->sets[relationship.slot].added.clear();
                    record->sets[relationship.slot].removed.clear();
                });
    }
}

void ContextState::update(ManagedRecord& record, std::int64_t version, std::vector<Any> values)
{
    const auto held = record.shared_from_this();
    const auto names = slotNames(*record.entity);
    record.version = version;
    for (std::size_t slot = 0; slot < names.size(); ++slot)
        if (record.values[slot] != values[slot])
            tell(record, names[slot], [&] { record.values[slot] = values[slot]; });
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
    record.version = *version;
    for (auto& set : record.sets)
        set.stored.reset();
    if (std::exchange(record.isFault, false))
        record.values = stored; // nobody has seen others
    const auto names = slotNames(*record.entity);
    for (std::size_t slot = 0; slot < names.size(); ++slot) {
        const bool isOwn = keepingChanges && record.isChangedAt(slot);
        if (!isOwn && record.values[slot] != stored[slot])
            tell(record, names[slot], [&] { record.values[slot] = stored[slot]; });
    }
    if (keepingChanges && record.isTracked) {
        record.snapshot = std::make_unique<std::vector<Any>>(std::move(stored));
        return;
    }
    record.snapshot = nullptr;
    for (auto& set : record.sets)
        set = {};
    record.isDeleted = false;
    untrack(record);
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
