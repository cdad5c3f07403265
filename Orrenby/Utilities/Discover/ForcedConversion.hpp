#pragma once

/// @file
/// Conversions to an interface that must succeed at run time.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <memory>
#include <string_view>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Ends the process: a value does not have the type that it must have.
[[noreturn]] ORRENBY_EXPORT void failedConversion(std::string_view from, std::string_view to) noexcept;

/// `value` as an `Interface`. A value of another kind, or none at all, ends the process.
template <class Interface, class T> Ref<Interface> forcedConversion(const Ref<T>& value)
{
    Ref<Interface> result;
    if constexpr (std::is_convertible_v<T*, Interface*>)
        result = value;
    else if constexpr (std::is_polymorphic_v<T>)
        result = std::dynamic_pointer_cast<Interface>(value);
    if (!result)
        failedConversion(typeName(value), typeName<Interface>());
    return result;
}

} // namespace orrenby::detail
