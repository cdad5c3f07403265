#pragma once

/// @file
/// Described classes seen as their stored properties. Not in the umbrella header: it includes Boost.Describe;
/// include it where such values are reflected.

#include "Orrenby/Platform/Coding/DescribedFields.hpp"
#include "Orrenby/Platform/Coding/Mirror.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A described class is reflected by its own fields in the order of their declaration, private ones included;
/// its first described base is the superclass. A field `m_name` has the label `name`.
///
/// @snippet Tests/Platform/Coding/MirrorTests.cpp Looking at a described class
template <detail::DescribedClass T> struct Reflected<T> {
    static void reflect(const T& value, Mirror& mirror)
    {
        auto addChild = [&](std::string_view label, const auto& field) { mirror.add(label, Any(field)); };
        detail::DescribedFields<T>::visit(value, addChild);
        detail::DescribedFields<T>::visitBases(value, [&](const auto& base) {
            if (mirror.superclassMirror() == nullptr)
                mirror.setSuperclass(Mirror(base));
        });
    }
};

} // namespace orrenby
