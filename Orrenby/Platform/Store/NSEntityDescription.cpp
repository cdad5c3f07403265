#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectID.hpp"
#include <atomic>
#include <memory>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

std::uint32_t nextSerialNumber()
{
    static constinit std::atomic<std::uint32_t> latest = 0;
    return latest.fetch_add(1, std::memory_order_relaxed) + 1;
}

} // namespace

Ref<const NSEntityDescription> NSEntityDescription::make(EntityOptions options)
{
    return std::make_shared<const NSEntityDescription>(std::move(options));
}

NSEntityDescription::NSEntityDescription(EntityOptions options)
    : m_name(std::move(options.name))
    , m_attributes(std::move(options.attributes))
    , m_objectClass(options.objectClass)
    , m_valueCount(m_attributes.size())
    , m_serialNumber(nextSerialNumber())
{
    for (auto& relationship : options.relationships) {
        const bool isToMany = relationship.isToMany;
        m_relationships.push_back({.description = std::move(relationship),
            .storage = isToMany ? detail::RelationshipStorage::JoinTable
                                : detail::RelationshipStorage::Column,
            .slot = isToMany ? m_setCount++ : m_valueCount++});
    }
}

const AttributeDescription* NSEntityDescription::attribute(std::string_view name) const noexcept
{
    const auto index = attributeIndex(name);
    return index != none ? &m_attributes[index] : nullptr;
}

const RelationshipDescription* NSEntityDescription::relationship(std::string_view name) const noexcept
{
    const auto index = relationshipIndex(name);
    return index != none ? &m_relationships[index].description : nullptr;
}

std::string NSEntityDescription::description() const
{
    return "NSEntityDescription(" + m_name.value_or("") + ")";
}

std::size_t NSEntityDescription::attributeIndex(std::string_view name) const noexcept
{
    for (std::size_t index = 0; index < m_attributes.size(); ++index)
        if (m_attributes[index].name == name)
            return index;
    return none;
}

std::size_t NSEntityDescription::relationshipIndex(std::string_view name) const noexcept
{
    for (std::size_t index = 0; index < m_relationships.size(); ++index)
        if (m_relationships[index].description.name == name)
            return index;
    return none;
}

std::string NSManagedObjectID::description() const
{
    const auto number = isTemporaryID() ? "t" + std::to_string(-m_key) : "p" + std::to_string(m_key);
    return (m_entity ? m_entity->name().value_or("") : "") + "/" + number;
}

} // namespace orrenby
