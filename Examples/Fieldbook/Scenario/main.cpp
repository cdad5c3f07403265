// fieldbook-script: the application, played by a scenario under virtual time.

#include "Folder/SmallFile.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"
#include "Orrenby/Utilities/Streams/EngineChoice.hpp"
#include "Scenario/Playing.hpp"
#include "Scenario/Scenario.hpp"
#include "Scenario/ScriptOptions.hpp"
#include "Scenario/Steps.hpp"
#include "Terminal/Descriptor.hpp"
#include "Terminal/Terminal.hpp"
#include "Terminal/Text.hpp"
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace fieldbook {

namespace {

constexpr int failed = 1;
constexpr int wronglyCalled = 2;

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
    if (options->isHelp || options->isManual) {
        std::fputs(options->isHelp ? std::string(scriptHelpText()).c_str() : manual().c_str(), stdout);
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
