#pragma once

/// @file
/// From JSON text to the table of its values. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Coding/JSONTable.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Reads one JSON value with blanks around it; throws `JSONReadError` for anything else.
///
/// The grammar is that of RFC 8259, nothing more. Of members with the same key the last value stands at the
/// place of the first. Numbers are kept as their text. Linear.
JSONTable readJSON(std::string_view text);

} // namespace orrenby::inline ORRENBY_ABI::detail
