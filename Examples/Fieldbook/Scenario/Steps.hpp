#pragma once

/// @file
/// What the steps of a scenario do.

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace fieldbook {

struct Stage;

/// Why a step cannot be done, as a line for whoever wrote it, or nothing.
using StepProblem = std::optional<std::string>;

/// A step that scenarios may take.
struct Verb {
    std::string_view name;
    std::string_view arguments; ///< What stands behind it.
    std::string_view meaning;
    /// @param rest  What stood behind it, without blanks at both ends.
    StepProblem (*perform)(Stage& stage, const std::string& rest);
};

/// All of them, in the order in which they are explained.
std::span<const Verb> verbs();

/// What each verb does, a line for each, with its last line end.
std::string manual();

/// What the verbs perform; each is explained where verbs() has it.
namespace steps {

// ApplicationSteps.cpp
StepProblem start(Stage& stage, const std::string& arguments);
StepProblem type(Stage& stage, const std::string& line);
StepProblem leave(Stage& stage, const std::string& nothing);
StepProblem wait(Stage& stage, const std::string& seconds);

// FolderSteps.cpp
StepProblem write(Stage& stage, const std::string& fileAndText);
StepProblem remove(Stage& stage, const std::string& file);
StepProblem move(Stage& stage, const std::string& files);
StepProblem photo(Stage& stage, const std::string& fileAndSize);

// ServiceSteps.cpp
StepProblem serve(Stage& stage, const std::string& arguments);
StepProblem kill(Stage& stage, const std::string& nothing);
StepProblem forget(Stage& stage, const std::string& nothing);
StepProblem received(Stage& stage, const std::string& nothing);
StepProblem compare(Stage& stage, const std::string& numberAndFile);
StepProblem rush(Stage& stage, const std::string& count);

// StoreSteps.cpp
StepProblem firstVersion(Stage& stage, const std::string& file);
StepProblem stored(Stage& stage, const std::string& file);
StepProblem transaction(Stage& stage, const std::string& file);
StepProblem damage(Stage& stage, const std::string& file);

// PlatformSteps.cpp
StepProblem alive(Stage& stage, const std::string& nothing);
StepProblem engine(Stage& stage, const std::string& name);
StepProblem caption(Stage& stage, const std::string& text);

} // namespace steps

} // namespace fieldbook
