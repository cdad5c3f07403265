#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Platform/Store/ManagedRecord.hpp"
#include "Orrenby/Platform/Store/ModelCheck.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

using detail::ManagedRecord;

NSManagedObject::NSManagedObject(
    Ref<const NSEntityDescription> entity, const Ref<NSManagedObjectContext>& insertInto)
    : m_record(detail::takeRecordToShow())
{
    if (m_record == nullptr) {
        if (entity == nullptr)
            fatalError("A stored object has an entity", "Platform/NSManagedObject", 22);
        m_record = insertInto
            ? insertInto->insertRecord(std::move(entity))
            : std::make_shared<ManagedRecord>(std::move(entity), detail::nextTemporaryKey(), nullptr);
        if (!insertInto)
            m_record->setDefaults();
    }
    if (m_record->registry)
        m_record->handle.store(this);
}

NSManagedObject::~NSManagedObject() = default;

void NSManagedObject::release() noexcept
{
    if (m_record->registry)
        m_record->registry->dropHandle(*m_record, this);
}

const Ref<const NSEntityDescription>& NSManagedObject::entity() const noexcept { return m_record->entity; }

NSManagedObjectID NSManagedObject::objectID() const { return {m_record->entity, m_record->key}; }

Ref<NSManagedObjectContext> NSManagedObject::managedObjectContext() const
{
    auto* const found = m_record->registry ? m_record->registry->context() : nullptr;
    return found != nullptr ? found->weak_from_this().lock() : nullptr;
}

bool NSManagedObject::isInserted() const noexcept { return m_record->isInserted; }
bool NSManagedObject::isDeleted() const noexcept { return m_record->isDeleted; }
bool NSManagedObject::isTracked() const noexcept { return m_record->isTracked; }
bool NSManagedObject::isFault() const noexcept { return m_record->isFault; }

bool NSManagedObject::isUpdated() const noexcept
{
    return m_record->isTracked && !m_record->isInserted && !m_record->isDeleted;
}

Any NSManagedObject::value(std::string_view key) const
{
    auto found = NSManagedObject::valueForUndefinedKey(key);
    if (!found)
        fatalError("A stored object has no such key", "Platform/NSManagedObject", 70);
    return *std::move(found);
}

void NSManagedObject::setValue(std::string_view key, Any value)
{
    const auto attribute = entity()->attributeIndex(key);
    if (attribute != NSEntityDescription::none)
        return setValueAt(attribute, std::move(value));
    auto object = value.object<NSManagedObject>();
    if (!value.isNull() && object == nullptr)
        fatalError("A relationship leads to a stored object", "Platform/NSManagedObject", 80);
    setObject(key, object);
}

const Any& NSManagedObject::valueAt(std::size_t slot) const
{
    if (m_record->isFault)
        context().fill(*m_record);
    return m_record->values[slot];
}

void NSManagedObject::setValueAt(std::size_t attribute, Any value)
{
    const auto& description = entity()->attributes()[attribute];
    if (!value.isNull() && !detail::isOfKind(value, description.kind))
        fatalError("A value is not of its attribute's kind", "Platform/NSManagedObject", 95);
    if (m_record->isFault)
        context().fill(*m_record);
    // An observer may drop the last reference.
    const auto self = shared_from_this();
    willChangeValue(description.name);
    if (m_record->values[attribute] != value) {
        if (auto* const found = m_record->registry ? m_record->registry->context() : nullptr)
            found->track(*m_record);
        m_record->values[attribute] = std::move(value);
    }
    didChangeValue(description.name);
}

Ref<NSManagedObject> NSManagedObject::object(std::string_view relationship) const
{
    const auto index = relationshipIndex(relationship, false);
    const auto& resolved = entity()->relationships()[index];
    const auto& key = valueAt(resolved.slot);
    return key.isNull()
        ? nullptr
        : detail::objectFor(context().record(*resolved.destination, *key.get<std::int64_t>()));
}

void NSManagedObject::setObject(std::string_view relationship, const Ref<NSManagedObject>& object)
{
    const auto index = relationshipIndex(relationship, false);
    context().connect(m_record, index, object ? recordOf(object, index) : nullptr);
}

std::vector<Ref<NSManagedObject>> NSManagedObject::objects(std::string_view relationship) const
{
    std::vector<Ref<NSManagedObject>> result;
    for (const auto& member : context().members(*m_record, relationshipIndex(relationship, true)))
        result.push_back(detail::objectFor(member));
    return result;
}

void NSManagedObject::addObject(std::string_view relationship, const Ref<NSManagedObject>& object)
{
    const auto index = relationshipIndex(relationship, true);
    context().addMember(m_record, index, recordOf(object, index));
}

void NSManagedObject::removeObject(std::string_view relationship, const Ref<NSManagedObject>& object)
{
    const auto index = relationshipIndex(relationship, true);
    context().removeMember(m_record, index, recordOf(object, index));
}

std::string NSManagedObject::description() const { return objectID().description(); }

std::optional<Any> NSManagedObject::valueForUndefinedKey(std::string_view key) const
{
    const auto attribute = entity()->attributeIndex(key);
    if (attribute != NSEntityDescription::none)
        return valueAt(attribute);
    const auto* const relationship = entity()->relationship(key);
    if (relationship == nullptr)
        return std::nullopt;
    if (!m_record->registry)
        return relationship->isToMany ? Any(NSSet()) : Any();
    if (!relationship->isToMany)
        return Any(object(key));
    const auto members = objects(key);
    return Any(NSSet(Array(members.begin(), members.end())));
}

NSManagedObjectContext& NSManagedObject::context() const
{
    auto* const found = m_record->registry ? m_record->registry->context() : nullptr;
    if (found == nullptr)
        fatalError("The object has no context, or outlived it", "Platform/NSManagedObject", 161);
    return *found;
}

Ref<ManagedRecord> NSManagedObject::recordOf(
    const Ref<NSManagedObject>& object, std::size_t relationship) const
{
    if (object == nullptr || object->m_record->registry != m_record->registry)
        fatalError("Related objects are of one context", "Platform/NSManagedObject", 168);
    if (object->entity().get() != entity()->relationships()[relationship].destination)
        fatalError("A relationship leads to objects of one entity", "Platform/NSManagedObject", 170);
    return object->m_record;
}

std::size_t NSManagedObject::relationshipIndex(std::string_view name, bool isToMany) const
{
    const auto index = entity()->relationshipIndex(name);
    if (index == NSEntityDescription::none
        || entity()->relationships()[index].description.isToMany != isToMany)
        fatalError("A stored object has no such relationship", "Platform/NSManagedObject", 178);
    return index;
}

} // namespace orrenby
