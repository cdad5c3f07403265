#pragma once

/// @file
/// What an address and its rules take apart. Not in the umbrella header: part of the validator's sources.

#include "Orrenby/Platform/Export.hpp"
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The pieces between the separators, without empty ones. They point into the text.
ORRENBY_EXPORT std::vector<std::string_view> nonEmptyPieces(std::string_view text, char separator);

} // namespace orrenby::inline ORRENBY_ABI::detail
