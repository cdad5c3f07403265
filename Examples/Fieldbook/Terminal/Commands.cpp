#include "Terminal/Commands.hpp"

#include "Card/DeepLink.hpp"
#include "Settings/Language.hpp"
#include <optional>

namespace fieldbook {

namespace {

std::optional<std::string_view> restAfter(std::string_view words, std::string_view line)
{
    return line.starts_with(words) ? std::optional(line.substr(words.size())) : std::nullopt;
}

} // namespace

Command parseCommand(std::string_view line)
{
    if (line.starts_with(DeepLink::scheme))
        return Follow{std::string(line)};
    if (const auto address = restAfter("sign in ", line))
        return SignIn{std::string(*address)};
    if (const auto rest = restAfter("samples ", line))
        if (const auto request = sampleRequestIn(*rest))
            return MakeSamples{*request};
    if (const auto rest = restAfter("language ", line))
        if (const auto language = languageNamed(*rest))
            return Speak{*language};
    if (line == "guest")
        return EnterAsGuest{};
    if (line == "sign out")
        return SignOut{};
    if (line == "compose")
        return Compose{};
    if (line == "settings")
        return ShowSettings{};
    if (line == "refresh")
        return Refresh{};
    if (line == "upload")
        return Upload{};
    if (line == "end")
        return End{};
    if (line == "details on" || line == "details off")
        return ShowDetails{line == "details on"};
    for (const auto order : orrenby::allCases<SortOrder>)
        if (line == "sort " + std::string(nameOf(order)))
            return Sort{order};
    return Unknown{};
}

std::string_view commandHelp()
{
    return "sort number|severity|place, details on|off, fieldbook://report/NUMBER, sign in ADDRESS, "
           "sign out, compose, settings, samples NUMBER [SEED], language CODE, refresh, upload, end";
}

} // namespace fieldbook
