#pragma once

/// @file
/// The command line of fieldbook-script.

#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

struct ScriptOptions {
    std::string file;
    std::string scene; ///< Empty for all.
    bool isList = false;
    bool isManual = false;
    bool isProgress = false;
    bool isHelp = false;
    bool usesRx = false;
};

/// Nothing for wrong arguments.
std::optional<ScriptOptions> parseScriptOptions(int count, char** arguments);

/// The text of `--help`, with its last line end.
std::string_view scriptHelpText();

} // namespace fieldbook
