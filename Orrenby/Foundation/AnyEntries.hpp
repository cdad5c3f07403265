#pragma once

/// @file
/// Dictionaries whose keys are values of any kind.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The entries of a dictionary whose keys are values of any kind, in order: the form for what `Dictionary`,
/// whose keys are texts, cannot hold.
///
/// A plain list. Nothing keeps a key from standing in it twice.
using AnyEntries = std::vector<std::pair<Any, Any>>;

} // namespace orrenby
