#include "Commands.hpp"

#include "DeepLink.hpp"

namespace fieldbook {

Command parseCommand(std::string_view line)
{
    if (line.starts_with(DeepLink::scheme))
        return Follow{std::string(line)};
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
    return "sort number|severity|place, details on|off, fieldbook://report/NUMBER, upload, end";
}

} // namespace fieldbook
