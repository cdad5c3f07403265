#include "Terminal/Commands.hpp"

#include "Card/DeepLink.hpp"
#include "Settings/Language.hpp"

namespace fieldbook {

Command parseCommand(std::string_view line)
{
    if (line.starts_with(DeepLink::scheme))
        return Follow{std::string(line)};
    if (constexpr std::string_view signIn = "sign in "; line.starts_with(signIn))
        return SignIn{std::string(line.substr(signIn.size()))};
    if (constexpr std::string_view samples = "samples "; line.starts_with(samples)) {
        if (const auto request = sampleRequestIn(line.substr(samples.size())))
            return MakeSamples{*request};
        return Unknown{};
    }
    if (constexpr std::string_view language = "language "; line.starts_with(language)) {
        if (const auto named = languageNamed(line.substr(language.size())))
            return Speak{*named};
        return Unknown{};
    }
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
