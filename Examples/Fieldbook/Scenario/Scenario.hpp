#pragma once

/// @file
/// What is to be played, as it stands in a file.

#include "Orrenby/Platform/Objects/Result.hpp"
#include <string>
#include <string_view>
#include <vector>

namespace fieldbook {

/// One line: a word, and what stands behind it.
struct ScenarioStep {
    int line = 0; ///< From 1.
    std::string verb;
    std::string rest; ///< Without blanks at both ends.

    /// As it stands in the file.
    std::string text() const { return rest.empty() ? verb : verb + ' ' + rest; }

    friend bool operator==(const ScenarioStep&, const ScenarioStep&) = default;
};

/// Steps that are played one after the other, on a stage of their own.
struct Scene {
    std::string name;  ///< One word, like no other scene's.
    std::string title; ///< What it shows.
    std::vector<ScenarioStep> steps;

    friend bool operator==(const Scene&, const Scene&) = default;
};

/// Reads a text such as
///
///     # Lines like this one, and blank ones, are passed over.
///     scene links: a link goes along the responder chain
///     write a.json {"title": "Rope frayed", …}
///     start
///     type fieldbook://report/1
///
/// The failure is a line for whoever wrote it, and names the line of the text.
orrenby::Result<std::vector<Scene>, std::string> scenesIn(std::string_view text);

} // namespace fieldbook
