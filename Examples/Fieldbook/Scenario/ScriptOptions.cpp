#include "Scenario/ScriptOptions.hpp"

namespace fieldbook {

namespace {

/// Sets the option of this name; gives whether there is one.
bool setOption(std::string_view name, ScriptOptions& options)
{
    if (name == "--help" || name == "-h")
        options.isHelp = true;
    else if (name == "--steps")
        options.isManual = true;
    else if (name == "--rx")
        options.usesRx = true;
    else if (name == "--list")
        options.isList = true;
    else if (name == "--progress")
        options.isProgress = true;
    else if (constexpr std::string_view scene = "--scene="; name.starts_with(scene))
        options.scene = name.substr(scene.size());
    else
        return false;
    return true;
}

} // namespace

std::optional<ScriptOptions> parseScriptOptions(int count, char** arguments)
{
    ScriptOptions options;
    for (int index = 1; index < count; ++index) {
        const auto argument = std::string_view(arguments[index]);
        if (setOption(argument, options))
            continue;
        if (argument.starts_with('-') || !options.file.empty())
            return {};
        options.file = argument;
    }
    const bool isEnough = options.isHelp || options.isManual || !options.file.empty();
    return isEnough ? std::optional(options) : std::nullopt;
}

std::string_view scriptHelpText()
{
    return R"(fieldbook-script [OPTION...] SCENARIO

Plays the scenes of the file SCENARIO with the application and its service, in a world without threads, sockets
and pauses. What it prints is the same in every run.

  --scene=NAME  play this scene only
  --list        print the names of the scenes
  --progress    print a line for each scene and a table at the end, instead of what is said in them
  --rx          run on the second of the two stream engines
  --steps       print what a scene may be made of
  -h --help     print this text

Exit status: 0 when everything was played and nothing of a tree was left; 1 when a step could not be done; 2 for
wrong arguments.
)";
}

} // namespace fieldbook
