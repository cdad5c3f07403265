#pragma once

/// @file
/// Marks for types that become dictionaries by their stored properties.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <concepts>

namespace orrenby::inline ORRENBY_ABI {

/// Base of a type that `json(value)` turns into a dictionary of its stored properties.
///
/// A type declares nothing else: public aggregates are reflected by their fields, described classes by their
/// description. Include JSONReflection.hpp where `json` is called.
///
/// @snippet Tests/Standard/JSON/JSONReflectionTests.cpp Turning values into dictionaries
///
/// Aggregates stay aggregates, with the base first among their initialisers. Where they are made with
/// designators, g++ warns of a missing one; `isJSONSerializable` marks such a type instead. Without state.
/// Not synchronised.
class JSONSerializable {
public:
    /// Lets a type default its comparison. Whole values compare only by what their type says.
    template <std::same_as<JSONSerializable> Base> friend bool operator==(const Base&, const Base&) noexcept
    {
        return true;
    }
};

/// Customisation point for types that cannot or should not derive from `JSONSerializable`: `template <>
/// inline constexpr bool orrenby::isJSONSerializable<Address> = true;`, right behind the type.
template <class T> inline constexpr bool isJSONSerializable = std::derived_from<T, JSONSerializable>;

/// A type that `json(value)` reflects.
template <class T>
concept ReflectedAsJSON = isJSONSerializable<T>;

/// Base of a class of objects that are seen as one of their base classes, or kept as `Any`, when they are
/// turned into dictionaries.
///
/// Such a class overrides `json()`, usually with `return reflectedJSON(*this);`, and so does each class that
/// derives from it and has properties of its own.
///
/// @snippet Tests/Standard/JSON/JSONReflectionTests.cpp Objects seen as their base class
///
/// Without state. Not synchronised.
class ORRENBY_EXPORT JSONSerializableObject : public JSONSerializable {
public:
    virtual ~JSONSerializableObject();

    /// The object as a dictionary, with the members of its most derived class.
    virtual Dictionary json() const = 0;

protected:
    JSONSerializableObject() noexcept = default;
    JSONSerializableObject(const JSONSerializableObject&) noexcept = default;
    JSONSerializableObject& operator=(const JSONSerializableObject&) noexcept = default;
};

/// Base of a type whose values are left out of `json(value)`: secrets, caches, what cannot be written.
///
/// It also holds for such a value in an optional, behind a reference and in an `Any`; not for the elements of
/// a list. Without state.
class JSONSerializationExclusion {
public:
    /// As for `JSONSerializable`.
    template <std::same_as<JSONSerializationExclusion> Base>
    friend bool operator==(const Base&, const Base&) noexcept
    {
        return true;
    }
};

} // namespace orrenby
