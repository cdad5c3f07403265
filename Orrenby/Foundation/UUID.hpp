#pragma once

/// @file
/// Identifiers in the form that fits into names.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT std::string lowercaseDigits(const UUID& uuid);

} // namespace detail

/// The 32 lower-case digits of an identifier's text, without its dashes.
///
/// @snippet Tests/Foundation/UUIDTests.cpp Writing an identifier into a name
inline constexpr auto lowercaseAlphanumericString = pipeable<const UUID&>(
    [](const UUID& uuid) { return detail::lowercaseDigits(uuid); });

} // namespace orrenby
