#pragma once

/// @file
/// Which types are errors.

#include "Orrenby/Platform/Export.hpp"
#include <exception>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

/// Whether values of a type are errors. True for everything derived from `std::exception`, the library's
/// error types included.
///
/// A plain enumeration or struct opts in: `template <> inline constexpr bool
/// orrenby::isErrorValue<LoadFailure> = true;`
template <class T> inline constexpr bool isErrorValue = std::is_base_of_v<std::exception, T>;

/// An error value of any type.
template <class T>
concept ErrorValue = isErrorValue<std::remove_cvref_t<T>>;

} // namespace orrenby
