#pragma once

/// @file
/// Colours as terminals know them. Not in the umbrella header: part of the terminal text's workings.

#include "Orrenby/Platform/Drawing/Color.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/ANSIText.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The parameter that switches to a colour of letters, or of what is behind them: `31`, `48;5;196`,
/// `38;2;255;0;0`. Empty when there are no colours.
std::string ansiColor(Color color, ANSIColors colors, bool isBackground);

} // namespace orrenby::inline ORRENBY_ABI::detail
