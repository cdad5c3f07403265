#pragma once

/// @file
/// Optionals seen as untyped values.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <optional>

namespace orrenby::inline ORRENBY_ABI {

/// What the optional holds as a value of any kind, or nothing.
///
/// Code that handles properties of every type sees through optionals with it. Of an optional in an optional
/// only the outer one is opened: an inner empty one is null.
template <detail::AnyOptional T> std::optional<Any> getValue(const T& optional)
{
    return optional.has_value() ? std::optional<Any>(Any(*optional)) : std::nullopt;
}

} // namespace orrenby
