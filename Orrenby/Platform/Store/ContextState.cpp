#include "Orrenby/Platform/Store/ContextState.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Orrenby/Platform/Store/PersistentStore.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

ContextState::ContextState(
    NSManagedObjectContext& owner, Ref<PersistentStore> contextStore, RecordSource& source)
    : store(std::move(contextStore))
    , registry(std::make_shared<ObjectRegistry>(owner))
    , m_owner(owner)
    , m_source(&source)
{}

ContextState::ContextState(NSManagedObjectContext& owner, Ref<NSManagedObjectContext> parentContext)
    : store(parentContext->persistentStore())
    , parent(std::move(parentContext))
    , registry(std::make_shared<ObjectRegistry>(owner))
    , m_owner(owner)
    , m_parentSource(std::make_unique<ParentSource>(*parent, *parent->m_state, *this))
    , m_source(m_parentSource.get())
{}

RecordSource& ContextState::source()
{
    if (parent && !std::exchange(m_isKnownToParent, true))
        parent->performAndWait([&] { parent->m_state->addChild(m_owner.weak_from_this()); });
    takeOverKeys();
    return *m_source;
}

void ContextState::addChild(WeakRef<NSManagedObjectContext> child)
{
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_children, [](const auto& other) { return other.expired(); });
    m_children.push_back(std::move(child));
}

Ref<ManagedRecord> ContextState::insert(Ref<const NSEntityDescription> entity)
{
    const auto record = std::make_shared<ManagedRecord>(std::move(entity), nextTemporaryKey(), registry);
    registry->add(*record);
    record->setDefaults();
    record->isInserted = true;
    track(*record);
    return record;
}

Ref<ManagedRecord> ContextState::record(const NSEntityDescription& entity, std::int64_t key)
{
    takeOverKeys();
    if (const auto found = key < 0 ? m_permanentKeys.find(key) : m_permanentKeys.end();
        found != m_permanentKeys.end())
        key = found->second;
    if (auto found = registry->find(entity, key))
        return found;
    return registry->findOrMake(store->model()->entity(*entity.name()), key, registry);
}

void ContextState::fill(ManagedRecord& record)
{
    std::vector<Any> values;
    const auto version = source().load(*record.entity, record.key, values);
    if (!version)
        throw StoreError(StoreError::Kind::ObjectGone,
            {.message = NSManagedObjectID(record.entity, record.key).description() + " is not in the store",
                .objectIDs = {NSManagedObjectID(record.entity, record.key)}});
    record.values = std::move(values);
    record.version = *version;
    record.isFault = false;
}

void ContextState::track(ManagedRecord& record)
{
    if (!record.isInserted && !record.isFault && record.snapshot == nullptr)
        record.snapshot = std::make_unique<std::vector<Any>>(record.values);
    // What was deleted before it was ever saved is nobody's any more.
    const bool isNobodys = record.isDeleted && !record.isTracked;
    if (record.isTracked || isNobodys)
        return;
    if (!record.isListed)
        m_tracked.push_back(record.shared_from_this());
    record.isListed = true;
    record.isTracked = true;
    ++m_changeCount;
}

void ContextState::untrack(ManagedRecord& record) noexcept
{
    if (!record.isTracked)
        return;
    record.isTracked = false;
    --m_changeCount;
    // Those that are left over are passed over, and dropped here when nothing else is left.
    if (m_changeCount != 0)
        return;
    for (const auto& leftOver : m_tracked)
        leftOver->isListed = false;
    m_tracked.clear();
}

void ContextState::setLink(ManagedRecord& record, const ResolvedRelationship& relationship, const Any& key)
{
    tell(record, relationship.description.name, [&] {
        track(record);
        record.values[relationship.slot] = key;
    });
}

void ContextState::addLink(ManagedRecord& other, const ResolvedRelationship& link,
    const ResolvedRelationship& back, std::int64_t key)
{
    if (link.description.isToMany)
        return tell(other, link.description.name, [&] {
            track(other);
            other.sets[link.slot].add(key);
        });
    if (other.isFault)
        fill(other);
    const Any old = other.values[link.slot];
    if (!old.isNull() && *old.get<std::int64_t>() != key)
        dropLink(*record(*link.destination, *old.get<std::int64_t>()), back, other.key);
    setLink(other, link, key);
}

void ContextState::dropLink(ManagedRecord& other, const ResolvedRelationship& link, std::int64_t key)
{
    if (link.description.isToMany)
        return tell(other, link.description.name, [&] {
            track(other);
            other.sets[link.slot].remove(key);
        });
    if (other.isFault)
        fill(other);
    if (other.values[link.slot] == Any(key))
        setLink(other, link, Any());
}

void ContextState::connect(
    const Ref<ManagedRecord>& record, std::size_t index, const Ref<ManagedRecord>& target)
{
    const auto& relationship = record->entity->relationships()[index];
    if (record->isFault)
        fill(*record);
    const Any old = record->values[relationship.slot];
    const Any key = target ? Any(target->key) : Any();
    if (old == key)
        return;
    if (relationship.inverse) {
        const auto& inverse = relationship.destination->relationships()[*relationship.inverse];
        if (!old.isNull())
            dropLink(
                *this->record(*relationship.destination, *old.get<std::int64_t>()), inverse, record->key);
        if (target)
            addLink(*target, inverse, relationship, record->key);
    }
    setLink(*record, relationship, key);
}

void ContextState::addMember(
    const Ref<ManagedRecord>& record, std::size_t index, const Ref<ManagedRecord>& target)
{
    const auto& relationship = record->entity->relationships()[index];
    if (relationship.storage == RelationshipStorage::InverseColumn)
        return connect(target, *relationship.inverse, record);
    addLink(*record, relationship, relationship, target->key);
    if (relationship.inverse)
        addLink(*target, relationship.destination->relationships()[*relationship.inverse], relationship,
            record->key);
}

void ContextState::removeMember(
    const Ref<ManagedRecord>& record, std::size_t index, const Ref<ManagedRecord>& target)
{
    const auto& relationship = record->entity->relationships()[index];
    if (relationship.storage == RelationshipStorage::InverseColumn) {
        if (target->isFault)
            fill(*target);
        const auto& inverse = relationship.destination->relationships()[*relationship.inverse];
        if (target->values[inverse.slot] == Any(record->key))
            connect(target, *relationship.inverse, nullptr);
        return;
    }
    dropLink(*record, relationship, target->key);
    if (relationship.inverse)
        dropLink(*target, relationship.destination->relationships()[*relationship.inverse], record->key);
}

std::vector<std::int64_t> ContextState::memberKeys(ManagedRecord& record, std::size_t index)
{
    auto& set = record.sets[record.entity->relationships()[index].slot];
    if (!set.stored) {
        auto stored = source().members(*record.entity, index, record.key);
        std::sort(stored.begin(), stored.end());
        set.stored = std::move(stored);
        for (const auto key : *set.stored)
            set.added.erase(key);
    }
    return set.members();
}

std::vector<Ref<ManagedRecord>> ContextState::members(ManagedRecord& record, std::size_t index)
{
    const auto keys = memberKeys(record, index);
    // Temporary keys fall; their objects come last, in the order in which they were made.
    const auto permanent = std::lower_bound(keys.begin(), keys.end(), 0);
    std::vector<Ref<ManagedRecord>> result;
    const auto add = [&](std::int64_t key) {
        auto member = this->record(*record.entity->relationships()[index].destination, key);
        if (!member->isDeleted)
            result.push_back(std::move(member));
    };
    std::for_each(permanent, keys.end(), add);
    std::for_each(std::make_reverse_iterator(permanent), keys.rend(), add);
    return result;
}

void ContextState::remove(const Ref<ManagedRecord>& record)
{
    if (record->isDeleted)
        return;
    if (!record->isInserted)
        track(*record);
    record->isDeleted = true; // first, for circles of cascades
    const auto& relationships = record->entity->relationships();
    for (std::size_t index = 0; index < relationships.size(); ++index) {
        const auto& relationship = relationships[index];
        const auto rule = relationship.description.deleteRule;
        if (rule == DeleteRule::Deny || rule == DeleteRule::NoAction
            || (rule == DeleteRule::Nullify && !relationship.inverse))
            continue;
        std::vector<Ref<ManagedRecord>> targets;
        if (relationship.description.isToMany)
            targets = members(*record, index);
        else {
            if (record->isFault)
                fill(*record);
            if (const Any& key = record->values[relationship.slot]; !key.isNull())
                targets.push_back(this->record(*relationship.destination, *key.get<std::int64_t>()));
        }
        for (const auto& target : targets)
            if (rule == DeleteRule::Cascade)
                remove(target);
            else if (!target->isDeleted)
                dropLink(
                    *target, relationship.destination->relationships()[*relationship.inverse], record->key);
    }
    if (record->isInserted) {
        record->isInserted = false;
        untrack(*record);
        registry->forget(*record);
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
