#pragma once

/// @file
/// Dictionaries of the stored properties of values. Not in the umbrella header: it costs compile time;
/// include it where `json` is called. Described classes need DescribedMirror.hpp beside it.

#include "Orrenby/Platform/Coding/Mirror.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Standard/JSON/JSONSerializable.hpp"
#include "Orrenby/Standard/JSON/ReflectedValue.hpp"
#include <concepts>
#include <cstddef>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Defined in DescribedMirror.hpp's own headers.
template <class T> class DescribedFields;

template <class T>
concept HasDescribedFields = requires
{
    sizeof(DescribedFields<T>);
};

/// Puts the properties of a value into a dictionary, those of its bases after its own.
class JSONReflection {
public:
    template <class T> void add(const T& value)
    {
        if constexpr (PlainAggregate<T>) {
            m_result.reserve(m_result.size() + fieldCount<T>);
            std::size_t index = 0;
            withFields(value, [&](const auto&... field) { (addMember(fieldNames<T>[index++], field), ...); });
        } else if constexpr (DescribedClass<T>) {
            static_assert(HasDescribedFields<T>, "include DescribedMirror.hpp to reflect described classes");
            auto visit = [&](std::string_view label, const auto& field) { addMember(label, field); };
            DescribedFields<T>::visit(value, visit);
            DescribedFields<T>::visitBases(value, [&](const auto& base) { add(base); });
        } else {
            static_assert(HasReflection<T>,
                "only public aggregates and described classes (BOOST_DESCRIBE_CLASS) become dictionaries");
            addMirror(Mirror(value));
        }
    }

    Dictionary finished() { return std::move(m_result); }

private:
    template <class T> void addMember(std::string_view label, const T& value)
    {
        if (auto reflected = reflectedValue(value))
            m_result.set(label, *std::move(reflected));
    }

    void addMirror(const Mirror& whole)
    {
        for (const auto* mirror = &whole; mirror != nullptr; mirror = mirror->superclassMirror())
            for (const auto& child : mirror->children())
                if (child.label)
                    addMember(*child.label, child.value);
    }

    Dictionary m_result;
};

} // namespace detail

/// The stored properties of a value by name, whether or not its type is `JSONSerializable`; see `json` for
/// the rules. What an override of `JSONSerializableObject::json` returns.
template <class T> Dictionary reflectedJSON(const T& value)
{
    detail::JSONReflection reflection;
    reflection.add(value);
    return reflection.finished();
}

/// The stored properties of a value by name, in the order of their declaration, ready to be written as JSON
/// if they are.
///
/// - An empty optional or reference and the null marker give no member, nor does a
/// `JSONSerializationExclusion`.
/// - A `JSONSerializable` becomes its dictionary, a list of them a list of dictionaries; also in an optional
/// and behind a reference. In an `Any` only a `JSONSerializableObject` is known as such.
/// - Everything else stays what it is, also what JSON cannot hold.
/// - A described class is followed by its bases; a name that comes again takes the value of the base.
///
/// Recurses as deep as the values are nested; objects must not refer to each other in a circle. Not
/// synchronised.
template <ReflectedAsJSON T> Dictionary json(const T& value)
{
    if constexpr (std::derived_from<T, JSONSerializableObject>)
        return value.json();
    else
        return reflectedJSON(value);
}

} // namespace orrenby
