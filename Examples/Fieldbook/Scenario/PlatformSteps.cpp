#include "Scenario/Steps.hpp"

#include "Card/Caption.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Utilities/Streams/EngineChoice.hpp"
#include "Orrenby/Utilities/Streams/Future.hpp"
#include "Scenario/Stage.hpp"
#include <cstddef>
#include <unistd.h>

namespace fieldbook::steps {

namespace {

/// Escape sequences as they are typed.
std::string typed(std::string text)
{
    for (std::size_t place = 0; (place = text.find('\x1B', place)) != std::string::npos;)
        text.replace(place, 1, "\\e");
    return text;
}

} // namespace

StepProblem alive(Stage& stage, const std::string&)
{
    stage.say(describeLiveParts() + "  pending " + std::to_string(stage.world.pendingCount()));
    return {};
}

StepProblem engine(Stage& stage, const std::string& name)
{
    if (name != "Combine" && name != "Rx")
        return "it takes Combine or Rx";
    orrenby::Streams::set({.isCombineEnabledWhenAvailable = name == "Combine"});
    // What a future does before anybody subscribes is where the engines differ.
    bool hasBegun = false;
    const orrenby::Streams::Future<int, orrenby::Never> future([&hasBegun](const auto& promise) {
        hasBegun = true;
        promise(orrenby::Result<int, orrenby::Never>::success(1));
        return nullptr;
    });
    stage.say(hasBegun ? "a future begins at once" : "a future begins when somebody subscribes");
    return {};
}

StepProblem caption(Stage& stage, const std::string& text)
{
    stage.say(captioned(stage.terminal, text));
    stage.say(typed(captioned(Terminal(STDOUT_FILENO, true), text)));
    return {};
}

} // namespace fieldbook::steps
