#include "Scenario/Stage.hpp"

#include "Scenario/Steps.hpp"
#include "Terminal/Text.hpp"
#include <array>
#include <cstdio>

namespace fieldbook {

namespace {

StepProblem perform(Stage& stage, const ScenarioStep& step)
{
    for (const auto& verb : verbs())
        if (step.verb == verb.name)
            return verb.perform(stage, step.rest);
    return "there is no step \"" + printable(step.verb) + '"';
}

} // namespace

Stage::Stage(Terminal& terminalBelow)
    : terminal(terminalBelow)
    , trace(terminalBelow)
    , service(loop)
{}

Stage::~Stage()
{
    root.reset();
    loop.drain();
}

std::optional<std::string> Stage::play(const ScenarioStep& step)
{
    std::array<char, 32> time{};
    std::snprintf(time.data(), time.size(), "%.1f", world.elapsed());
    terminal.print("> " + std::string(time.data()) + " s: " + step.text());
    if (auto problem = perform(*this, step))
        return "line " + std::to_string(step.line) + ": " + *problem;
    world.advance(0.1);
    return {};
}

void Stage::say(const std::string& text) { terminal.print("= " + text); }

} // namespace fieldbook
