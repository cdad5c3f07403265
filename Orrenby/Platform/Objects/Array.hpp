#pragma once

/// @file
/// Lists of values of any kind.

#include "Orrenby/Platform/Objects/Any.hpp"
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A list of values of any kind: `Array{1, "two", 3.0}` prints `[1, "two", 3.0]`.
///
/// Copying it copies 16 bytes per element; what the elements hold is shared. A list held in an `Any` is
/// shared as a whole. Braces around one list make a list in a list; use `Array(other)` for a copy.
using Array = std::vector<Any>;

} // namespace orrenby
