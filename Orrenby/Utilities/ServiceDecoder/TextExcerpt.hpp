#pragma once

/// @file
/// What stands around a place in a text. Not in the umbrella header: part of the reports.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Up to 24 characters before the place and 40 from there on, in one line of valid UTF-8: characters that
/// are none become U+FFFD; blanks, line ends and control characters in a row one blank. "…" where the text
/// goes on. Takes constant time.
ORRENBY_EXPORT std::string textExcerpt(std::string_view text, std::size_t offset);

} // namespace orrenby::inline ORRENBY_ABI::detail
