#pragma once

/// @file
/// A value seen as its stored properties. Not in the umbrella header: it costs compile time; include it where
/// values are reflected. Described classes need DescribedMirror.hpp beside it.

#include "Orrenby/Platform/Coding/AggregateFields.hpp"
#include "Orrenby/Platform/Coding/CodableKinds.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class Mirror;

/// Customisation point: `static void reflect(const T&, Mirror&)` adds the children and the superclass of a
/// value.
template <class T> struct Reflected {};

namespace detail {

template <class T>
concept HasReflection = requires(const T& value, Mirror& mirror)
{
    Reflected<T>::reflect(value, mirror);
};

} // namespace detail

/// The stored properties of a value by name, and those of its superclass.
///
/// Public aggregates are reflected by their fields, described classes by their description; every other type
/// has no children. The values are copies.
///
/// @snippet Tests/Platform/Coding/MirrorTests.cpp Looking at stored properties
///
/// A plain value. Not synchronised.
class Mirror {
public:
    /// One stored property.
    struct Child {
        std::optional<std::string> label; ///< Its name; nothing where it has none.
        Any value;                        ///< A copy of its value.

        friend bool operator==(const Child&, const Child&) = default;
    };

    /// Reflects the value once; later changes to it do not show.
    template <detail::OtherThan<Mirror> T>
    explicit Mirror(const T& subject)
        : m_subjectTypeName(typeName<T>())
    {
        static_assert(!detail::DescribedClass<T> || detail::HasReflection<T>,
            "include DescribedMirror.hpp to reflect described classes");
        if constexpr (detail::HasReflection<T>)
            Reflected<T>::reflect(subject, *this);
    }

    /// In the order of declaration.
    const std::vector<Child>& children() const noexcept { return m_children; }

    /// The value as its first base class, or nothing.
    const Mirror* superclassMirror() const noexcept { return m_superclass.get(); }

    /// The printed name of the type that was reflected.
    const std::string& subjectTypeName() const noexcept { return m_subjectTypeName; }

    /// For reflections: one more child, and the superclass.
    void add(std::string_view label, Any value)
    {
        m_children.push_back({std::string(label), std::move(value)});
    }
    void setSuperclass(Mirror superclass)
    {
        m_superclass = std::make_shared<const Mirror>(std::move(superclass));
    }

private:
    std::string m_subjectTypeName;
    std::vector<Child> m_children;
    std::shared_ptr<const Mirror> m_superclass;
};

template <detail::PlainAggregate T> struct Reflected<T> {
    static void reflect(const T& value, Mirror& mirror)
    {
        std::size_t index = 0;
        detail::withFields(value,
            [&](const auto&... field) { (mirror.add(detail::fieldNames<T>[index++], Any(field)), ...); });
    }
};

} // namespace orrenby
