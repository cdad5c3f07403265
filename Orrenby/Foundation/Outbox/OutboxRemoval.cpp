#include "Orrenby/Foundation/Outbox/OutboxRemoval.hpp"

#include "Orrenby/Foundation/Outbox/Outbox.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// The entry first, then those that were put in under its key at the same moment.
std::vector<Ref<OutboxEntry>> withDuplicates(
    const Ref<NSManagedObjectContext>& context, const Ref<OutboxEntry>& entry)
{
    std::vector<Ref<OutboxEntry>> result{entry};
    const auto key = entry->key();
    if (!key)
        return result;
    for (auto& other : context->fetch<OutboxEntry>(
             {.entity = std::string(Outbox::entityName), .predicate = PredicateKey("key") == Any(*key)}))
        if (other != entry)
            result.push_back(std::move(other));
    return result;
}

} // namespace

bool isConflictOf(const StoreError& error, const Ref<NSManagedObject>& object)
{
    const auto& objectIDs = error.context().objectIDs;
    return error.kind() == StoreError::Kind::Conflict
        && std::find(objectIDs.begin(), objectIDs.end(), object->objectID()) != objectIDs.end();
}

bool refreshIfThere(NSManagedObjectContext& context, const Ref<NSManagedObject>& object)
{
    try {
        context.refresh(object, false);
        return true;
    } catch (const StoreError& error) {
        if (error.kind() != StoreError::Kind::ObjectGone)
            throw;
        return false;
    }
}

bool removeFromOutbox(const Ref<NSManagedObjectContext>& context, const Ref<OutboxEntry>& entry)
{
    if (entry->isDeleted() && !entry->hasChanges())
        return false;
    const auto removed = withDuplicates(context, entry);
    for (;;) {
        // What others saved meanwhile does not matter any more; only that it is gone.
        bool isThere = false;
        for (const auto& object : removed) {
            const bool isFound = refreshIfThere(*context, object);
            isThere |= isFound && object == entry;
            context->delete_(object);
        }
        try {
            context->save();
            return isThere;
        } catch (const StoreError& error) {
            if (std::none_of(removed.begin(), removed.end(),
                    [&](const auto& object) { return isConflictOf(error, object); }))
                throw;
        }
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
