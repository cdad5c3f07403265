#pragma once

/// @file
/// The last words of a session.

#include "Application/Session.hpp"
#include "Terminal/Terminal.hpp"

namespace fieldbook {

/// Prints the figures of the session, and what of the tree is still alive, which ought to be nothing.
void printSummary(const Session& session, Terminal& terminal);

} // namespace fieldbook
