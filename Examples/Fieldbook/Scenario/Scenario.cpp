#include "Scenario/Scenario.hpp"

#include "Terminal/Text.hpp"
#include <algorithm>
#include <cstddef>
#include <utility>

namespace fieldbook {

namespace {

/// What stands before the first separator, and what behind it.
std::pair<std::string_view, std::string_view> divided(std::string_view text, char separator)
{
    const auto end = std::min(text.find(separator), text.size());
    return {trimmed(text.substr(0, end)), trimmed(text.substr(std::min(end + 1, text.size())))};
}

} // namespace

orrenby::Result<std::vector<Scene>, std::string> scenesIn(std::string_view text)
{
    using Outcome = orrenby::Result<std::vector<Scene>, std::string>;
    std::vector<Scene> scenes;
    for (int number = 1; !text.empty(); ++number) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        const auto complaint = [&](const std::string& problem) {
            return Outcome::failure("line " + std::to_string(number) + ": " + problem);
        };
        if (line.empty() || line.starts_with('#'))
            continue;
        const auto [verb, rest] = divided(line, ' ');
        if (verb != "scene") {
            if (scenes.empty())
                return complaint("a step before the first scene");
            scenes.back().steps.push_back({number, std::string(verb), std::string(rest)});
            continue;
        }
        const auto [name, title] = divided(rest, ':');
        if (name.empty() || title.empty() || name.find(' ') != std::string_view::npos)
            return complaint("a scene begins with \"scene NAME: TITLE\"");
        if (std::any_of(scenes.begin(), scenes.end(),
                [name = name](const Scene& scene) { return scene.name == name; }))
            return complaint("two scenes are called " + printable(name));
        scenes.push_back({std::string(name), std::string(title), {}});
    }
    return Outcome::success(std::move(scenes));
}

} // namespace fieldbook
