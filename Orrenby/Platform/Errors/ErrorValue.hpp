#pragma once

/// @file
/// How error values of all types become platform error objects.

#include "Orrenby/Platform/Errors/IsErrorValue.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <concepts>
#include <cstdint>
#include <exception>
#include <string>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Sees an exception by its dynamic type.
ORRENBY_EXPORT NSError bridgedException(const std::exception& exception);

template <class T> NSError bridged(const T& value)
{
    if constexpr (std::derived_from<T, std::exception>)
        return bridgedException(value);
    else if constexpr (std::is_enum_v<T>)
        return NSError(typeName<T>(), static_cast<std::int64_t>(value));
    else
        return NSError(typeName<T>(), 1, {{std::string(NSLocalizedDescriptionKey), describe(value)}});
}

} // namespace detail

/// Sees any error value as a platform error object. Never fails.
///
/// | value | domain | code | localised description |
/// |---|---|---|---|
/// | the library's error types | their own | their own | their own |
/// | `std::system_error` and its kin | name of the category | value of the code | `what()` |
/// | another `std::exception` | printed name of the dynamic type | 1 | `what()` |
/// | an enumeration that opted in | printed name of the type | the raw value | – |
/// | another value that opted in | printed name of the type | 1 | `describe(value)` |
template <ErrorValue E> NSError toNSError(const E& error) { return detail::bridged(error); }

} // namespace orrenby
