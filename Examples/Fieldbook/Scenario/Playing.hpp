#pragma once

/// @file
/// Playing scenes one after the other.

#include "Scenario/Scenario.hpp"
#include "Terminal/Terminal.hpp"
#include <string>
#include <vector>

namespace fieldbook {

/// Prints a line for whoever wrote the scenario to the standard error.
void complain(const std::string& message);

/// Plays all, with what is said in them on the terminal. Gives whether each could be played to its end and
/// left nothing alive; after the first that did not, there is a complaint and nothing more is played.
bool playAll(const std::vector<Scene>& scenes, Terminal& terminal);

/// The same, with a line for each scene on the terminal; what is said in them goes to `unseen`.
bool showProgress(const std::vector<Scene>& scenes, Terminal& terminal, Terminal& unseen);

} // namespace fieldbook
