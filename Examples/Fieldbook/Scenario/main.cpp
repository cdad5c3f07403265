// fieldbook-script: the application, played by a scenario under virtual time.

#include "Orrenby/Utilities/Log/Settings.hpp"
#include "Orrenby/Utilities/Streams/EngineChoice.hpp"
#include "Scenario/Scenario.hpp"
#include "Scenario/Stage.hpp"
#include "SmallFile.hpp"
#include "Terminal.hpp"
#include "Text.hpp"
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <unistd.h>

namespace fieldbook {

namespace {

constexpr int failed = 1;
constexpr int wronglyCalled = 2;

constexpr std::string_view help = R"(fieldbook-script [OPTION...] SCENARIO

Plays the scenes of the file SCENARIO with the application and its service, in a world without threads, sockets
and pauses. What it prints is the same in every run.

  --scene=NAME  play this scene only
  --list        print the names of the scenes
  --rx          run on the second of the two stream engines
  -h --help     print this text

Exit status: 0 when everything was played and nothing of a tree was left; 1 when a step could not be done; 2 for
wrong arguments.
)";

struct ScriptOptions {
    std::string file;
    std::string scene; ///< Empty for all.
    bool isList = false;
    bool isHelp = false;
    bool usesRx = false;
};

void complain(const std::string& message)
{
    Terminal(STDERR_FILENO, false).print("fieldbook-script: " + message);
}

/// Nothing for wrong arguments.
std::optional<ScriptOptions> parseScriptOptions(int count, char** arguments)
{
    ScriptOptions options;
    for (int index = 1; index < count; ++index) {
        const auto argument = std::string_view(arguments[index]);
        constexpr std::string_view scene = "--scene=";
        if (argument == "--help" || argument == "-h")
            options.isHelp = true;
        else if (argument == "--rx")
            options.usesRx = true;
        else if (argument == "--list")
            options.isList = true;
        else if (argument.starts_with(scene))
            options.scene = argument.substr(scene.size());
        else if (argument.starts_with('-') || !options.file.empty())
            return {};
        else
            options.file = argument;
    }
    return options.isHelp || !options.file.empty() ? std::optional(options) : std::nullopt;
}

/// Entries of the log stand where they are made, without their time and place.
void setUp(const ScriptOptions& options, Terminal& terminal)
{
    orrenby::Log::setUseEmoji(false);
    orrenby::Log::setLevel(orrenby::Log::Level::info);
    orrenby::Log::onEvent([&terminal](orrenby::Log::Level level, const orrenby::Log::DeferredEvent& event) {
        terminal.print("  log " + std::string(level.description()) + ": " + event().message());
    });
    orrenby::Streams::set({.isCombineEnabledWhenAvailable = !options.usesRx});
}

bool play(const Scene& scene, Terminal& terminal)
{
    terminal.print("== " + scene.name + ": " + scene.title);
    auto stage = Stage(terminal);
    for (const auto& step : scene.steps)
        if (const auto problem = stage.play(step)) {
            complain(*problem);
            return false;
        }
    return true;
}

int run(const ScriptOptions& options)
{
    const auto text = readFile(options.file);
    const auto problem = text ? text->error() : "no such file";
    if (problem) {
        complain(printable(options.file) + ": " + *problem);
        return failed;
    }
    const auto scenes = scenesIn(text->unwrap());
    if (const auto mistake = scenes.error()) {
        complain(*mistake);
        return failed;
    }
    auto terminal = Terminal(STDOUT_FILENO, false);
    setUp(options, terminal);
    bool isPlayed = options.scene.empty();
    const auto all = scenes.unwrap();
    for (const auto& scene : all) {
        if (!options.scene.empty() && options.scene != scene.name)
            continue;
        isPlayed = true;
        if (options.isList)
            terminal.print(scene.name);
        else if (!play(scene, terminal))
            return failed;
        else if (!isNothingLive()) {
            complain("something is left of the scene " + scene.name + ": " + describeLiveParts());
            return failed;
        }
    }
    if (!isPlayed)
        complain("there is no scene " + printable(options.scene));
    return isPlayed && terminal.isIntact() ? 0 : failed;
}

} // namespace

} // namespace fieldbook

int main(int argumentCount, char** arguments)
{
    using namespace fieldbook;
    const auto options = parseScriptOptions(argumentCount, arguments);
    if (!options) {
        complain("it takes one scenario\nTry --help.");
        return wronglyCalled;
    }
    if (options->isHelp) {
        std::fputs(help.data(), stdout);
        return std::fflush(stdout) == 0 ? 0 : failed;
    }
    // Nobody types: what is asked of the application stands in the scenario.
    if (std::freopen("/dev/null", "r", stdin) == nullptr)
        return failed;
    try {
        return run(*options);
    } catch (const std::exception& error) {
        complain(error.what());
        return failed;
    }
}
