#pragma once

/// @file
/// What of the test kit has a `description()` is written to streams like the library's own values.
///
/// Not in the umbrella header: it comes with the types that it serves.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"

namespace orrenby::inline ORRENBY_ABI::testing {

// Lookup goes through a type's own namespace, not the one around it.
using orrenby::isOfOrrenby;
using orrenby::operator<<;

} // namespace orrenby::testing
