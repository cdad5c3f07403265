#pragma once

/// @file
/// The attributes and relationships of stored objects, as they are declared.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <cstdint>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// What an attribute holds.
enum class AttributeKind : std::uint8_t {
    Int,    ///< `std::int64_t`
    Double, ///< `double`; what is no number cannot be stored, −0 is kept as 0
    Bool,
    Text,
    Bytes, ///< `Data`
    Date,
    UUID
};

/// A value of an entity's objects.
struct AttributeDescription {
    /// ASCII letters, digits and underscores, a letter first.
    std::string name = {};
    AttributeKind kind = AttributeKind::Text; ///< Which values it takes; others are refused.
    /// Whether it may be empty when it is saved.
    bool isOptional = false;
    /// What a new object begins with; of the attribute's kind, or null.
    Any defaultValue = {};
};

/// What becomes of the objects at the other end when an object is deleted.
enum class DeleteRule : std::uint8_t {
    Nullify, ///< They lose their reference to it.
    Cascade, ///< They are deleted as well.
    Deny,    ///< As long as there is one, the deletion cannot be saved.
    NoAction ///< Nothing. What still refers to the deleted object makes the save fail.
};

/// A reference from an entity's objects to others.
struct RelationshipDescription {
    /// ASCII letters, digits and underscores, a letter first.
    std::string name = {};
    /// The entity at the other end.
    std::string destination = {};
    /// The relationship that leads back, which names this one as its inverse. Both are kept in step. Without
    /// one, a deleted object that is still referred to makes the save fail.
    std::string inverse = {};
    bool isToMany = false; ///< Many objects at the other end, or at most one.
    /// Of this entity's objects: what follows from their deletion.
    DeleteRule deleteRule = DeleteRule::Nullify;
    /// Whether a to-one relationship may be empty when it is saved.
    bool isOptional = true;
};

} // namespace orrenby
