#include "Scenario/Playing.hpp"

#include "Scenario/Progress.hpp"
#include "Scenario/Stage.hpp"
#include <algorithm>
#include <optional>
#include <unistd.h>

namespace fieldbook {

namespace {

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
        seconds = stage.world.elapsed();
    }
    if (isNothingLive())
        return seconds;
    complain("something is left of the scene " + scene.name + ": " + describeLiveParts());
    return {};
}

} // namespace

void complain(const std::string& message)
{
    Terminal(STDERR_FILENO, false).print("fieldbook-script: " + message);
}

bool playAll(const std::vector<Scene>& scenes, Terminal& terminal)
{
    return std::all_of(
        scenes.begin(), scenes.end(), [&](const Scene& scene) { return play(scene, terminal).has_value(); });
}

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

} // namespace fieldbook
