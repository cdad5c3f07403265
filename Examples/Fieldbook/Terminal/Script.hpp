#pragma once

/// @file
/// What happens during a scripted run.

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace fieldbook {

/// One thing that somebody does with a file, or types.
struct ScriptStep {
    enum class Act {
        write,   ///< Writes the text into the file, in place.
        replace, ///< Writes the text elsewhere and moves it over the file.
        move,    ///< Gives the file the name that stands in `text`.
        remove,
        command, ///< Types what stands in `file`.
        await    ///< Waits until no report is on its way, and shows nothing.
    };

    Act act;
    std::string_view file = {};
    std::string_view text = {};

    /// `write owl-count.json`; for a command the command itself.
    std::string description() const;
};

/// The bundled script. It knows the bundled samples.
std::span<const ScriptStep> demoScript();

/// Does it, unless it is not for the folder. What the system refuses goes to the log.
void perform(const ScriptStep& step, const std::filesystem::path& folder);

} // namespace fieldbook
