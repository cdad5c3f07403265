// fieldbook-script: the application, played by a scenario under virtual time.

#include "Folder/SmallFile.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"
#include "Orrenby/Utilities/Streams/EngineChoice.hpp"
#include "Scenario/Progress.hpp"
#include "Scenario/Scenario.hpp"
#include "Scenario/Stage.hpp"
#include "Terminal/Descriptor.hpp"
#include "Terminal/Terminal.hpp"
#include "Terminal/Text.hpp"
#include <algorithm>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

namespace fieldbook {

namespace {

constexpr int failed = 1;
constexpr int wronglyCalled = 2;

constexpr std::string_view help = R"(fieldbook-script [OPTION...] SCENARIO

Plays the scenes of the file SCENARIO with the application and its service, in a world without threads, sockets
and pauses. What it prints is the same in every run.

  --scene=NAME  play this scene only
  --list        print the names of the scenes
  --progress    print a line for each scene and a table at the end, instead of what is said in them
  --rx          run on the second of the two stream engines
  -h --help     print this text

Exit status: 0 when everything was played and nothing of a tree was left; 1 when a step could not be done; 2 for
wrong arguments.
)";

struct ScriptOptions {
    std::string file;
    std::string scene; ///< Empty for all.
    bool isList = false;
    bool isProgress = false;
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
        else if (argument == "--progress")
            options.isProgress = true;
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

/// Gives how much time passed in the scene, in seconds; nothing when it could not be played to its end.
std::optional<double> play(const Scene& scene, Terminal& terminal)
{
    terminal.print("== " + scene.name + ": " + scene.title);
    double seconds = 0;
    {
        auto stage = Stage(terminal);
        for (const auto& step : scene.steps)
            if (const auto problem = stage.play(step)) {
                complain(*problem);
                return {};
            }
        seconds = stage.seconds();
    }
    if (isNothingLive())
        return seconds;
    complain("something is left of the scene " + scene.name + ": " + describeLiveParts());
    return {};
}

/// The scenes of that name, or all without one. The failure is a line for people.
orrenby::Result<std::vector<Scene>, std::string> chosenScenes(const ScriptOptions& options)
{
    using Outcome = orrenby::Result<std::vector<Scene>, std::string>;
    const auto text = readFile(options.file);
    if (const auto problem = text ? text->error() : "no such file")
        return Outcome::failure(printable(options.file) + ": " + *problem);
    auto outcome = scenesIn(text->unwrap());
    if (outcome.isFailure() || options.scene.empty())
        return outcome;
    auto scenes = std::move(outcome).unwrap();
    std::erase_if(scenes, [&](const Scene& scene) { return scene.name != options.scene; });
    if (scenes.empty())
        return Outcome::failure("there is no scene " + printable(options.scene));
    return Outcome::success(std::move(scenes));
}

bool playAll(const std::vector<Scene>& scenes, Terminal& terminal)
{
    return std::all_of(
        scenes.begin(), scenes.end(), [&](const Scene& scene) { return play(scene, terminal).has_value(); });
}

/// Nobody sees what is said in the scenes.
bool showProgress(const std::vector<Scene>& scenes, Terminal& terminal, Terminal& unseen)
{
    auto progress = Progress(terminal, scenes.size());
    for (const auto& scene : scenes) {
        progress.begin(scene);
        const auto seconds = play(scene, unseen);
        if (!seconds)
            return false;
        progress.end(scene, *seconds);
    }
    progress.finish();
    return true;
}

int run(const ScriptOptions& options)
{
    const auto scenes = chosenScenes(options);
    if (const auto problem = scenes.error()) {
        complain(*problem);
        return failed;
    }
    auto terminal = options.isProgress ? Terminal(STDOUT_FILENO) : Terminal(STDOUT_FILENO, false);
    if (options.isList) {
        for (const auto& scene : scenes.unwrap())
            terminal.print(scene.name);
        return terminal.isIntact() ? 0 : failed;
    }
    // Where what is said in the scenes goes when only their progress is of interest.
    const auto nowhere = Descriptor(open("/dev/null", O_WRONLY | O_CLOEXEC));
    auto unseen = Terminal(nowhere.number(), false);
    setUp(options, options.isProgress ? unseen : terminal);
    const bool isPlayed = options.isProgress ? showProgress(scenes.unwrap(), terminal, unseen)
                                             : playAll(scenes.unwrap(), terminal);
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
