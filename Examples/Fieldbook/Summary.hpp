#pragma once

/// @file
/// The last words of a session.

#include "Tally.hpp"
#include "Terminal.hpp"

namespace fieldbook {

/// Prints the figures of the tally, and what of the tree is still alive, which ought to be nothing.
void printSummary(const Tally& tally, Terminal& terminal);

} // namespace fieldbook
