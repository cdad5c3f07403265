#pragma once

/// @file
/// What can be wrong with entities. Not in the umbrella header: models ask for it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Store/AttributeDescription.hpp"
#include <span>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

struct EntityOptions;

namespace detail {

[[noreturn]] void throwInvalidModel(std::string message);

/// Throws when a name, a default value or a number of columns will not do.
void checkEntities(std::span<const EntityOptions> entities);

/// Whether the value is what an attribute of that kind holds. Null is not.
ORRENBY_EXPORT bool isOfKind(const Any& value, AttributeKind kind);

} // namespace detail

} // namespace orrenby
