#pragma once

/// @file
/// What the objects of one kind consist of.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Store/AttributeDescription.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class NSEntityDescription;
class NSManagedObject;
class NSManagedObjectModel;

/// Makes an object of the class that an entity's objects have. See `managedObjectClass<T>`.
using ManagedObjectFactory = Ref<NSManagedObject> (*)(const Ref<const NSEntityDescription>& entity);

/// What an entity is declared with.
struct EntityOptions {
    /// ASCII letters, digits and underscores, a letter first. An entity without a name belongs to no model.
    std::optional<std::string> name = {};
    std::vector<AttributeDescription> attributes = {}; ///< In the order in which they are to be listed.
    /// Only in entities that are part of a model do they lead anywhere.
    std::vector<RelationshipDescription> relationships = {};
    /// The class of its objects: `managedObjectClass<Person>`. Without one it is `NSManagedObject`.
    ManagedObjectFactory objectClass = nullptr;
};

namespace detail {

/// Where the ends of a relationship are kept.
enum class RelationshipStorage : std::uint8_t {
    Column,        ///< In a column of the entity's own table.
    InverseColumn, ///< In a column of the other table.
    JoinTable      ///< In a table of pairs.
};

/// A relationship as its model understood it.
struct ResolvedRelationship {
    RelationshipDescription description;
    const NSEntityDescription* destination = nullptr; ///< Without a model none.
    std::optional<std::size_t> inverse = {};          ///< Its place among those of the destination.
    RelationshipStorage storage = RelationshipStorage::Column;
    std::size_t slot = 0; ///< To-one: the place among the values. To-many: the place among the sets.
    /// Of a table of pairs: its name and the columns of this and the other end.
    std::string joinTable = {};
    std::string ownColumn = {};
    std::string otherColumn = {};
    bool writesJoinTable = false; ///< One of both ends does.
};

} // namespace detail

/// Says what the objects of one kind consist of: their attributes and relationships.
///
/// @snippet Tests/Platform/Store/NSManagedObjectModelTests.cpp Declaring a model
///
/// Entities do not inherit from one another. An entity whose objects are to be stored is part of a model,
/// which checks it and ties its relationships; one that stands alone serves objects that are never stored,
/// and its relationships lead nowhere.
///
/// Never changes. Safe to use from several threads.
class ORRENBY_EXPORT NSEntityDescription {
public:
    /// An entity that stands alone.
    static Ref<const NSEntityDescription> make(EntityOptions options);

    /// Use `make`: entities are held by reference.
    explicit NSEntityDescription(EntityOptions options);
    NSEntityDescription(const NSEntityDescription&) = delete;
    NSEntityDescription& operator=(const NSEntityDescription&) = delete;

    /// Nothing for an entity that belongs to no model.
    const std::optional<std::string>& name() const noexcept { return m_name; }

    /// In the order in which they were declared.
    const std::vector<AttributeDescription>& attributes() const noexcept { return m_attributes; }

    /// The attribute's description, or `nullptr`. Linear in their number, as the next one.
    const AttributeDescription* attribute(std::string_view name) const noexcept;
    const RelationshipDescription* relationship(std::string_view name) const noexcept;

    /// `NSEntityDescription(Person)`
    std::string description() const;

    /// The place of a key among the attributes, the relationships; `none` when it is no such key.
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::size_t attributeIndex(std::string_view name) const noexcept;
    std::size_t relationshipIndex(std::string_view name) const noexcept;

    const std::vector<detail::ResolvedRelationship>& relationships() const noexcept
    {
        return m_relationships;
    }

    /// Attributes, then to-one relationships.
    std::size_t valueCount() const noexcept { return m_valueCount; }

    /// To-many relationships.
    std::size_t setCount() const noexcept { return m_setCount; }

    /// Never given to another entity of the process.
    std::uint32_t serialNumber() const noexcept { return m_serialNumber; }

    /// Makes its objects; `nullptr` where they are plain `NSManagedObject`.
    ManagedObjectFactory objectClass() const noexcept { return m_objectClass; }

private:
    friend class NSManagedObjectModel;

    std::optional<std::string> m_name;
    std::vector<AttributeDescription> m_attributes;
    std::vector<detail::ResolvedRelationship> m_relationships;
    ManagedObjectFactory m_objectClass;
    std::size_t m_valueCount;
    std::size_t m_setCount = 0;
    std::uint32_t m_serialNumber;
};

} // namespace orrenby
