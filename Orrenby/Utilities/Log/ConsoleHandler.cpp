#include "Orrenby/Utilities/Log/ConsoleHandler.hpp"

#include "Orrenby/Utilities/Log/LineText.hpp"
#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace orrenby::inline ORRENBY_ABI::Log {

namespace {

bool isColoured(const ConsoleOptions& options)
{
    if (options.colour != ConsoleOptions::Colour::automatic)
        return options.colour == ConsoleOptions::Colour::always;
    const char* refusal = std::getenv("NO_COLOR");
    return (refusal == nullptr || *refusal == '\0') && ::isatty(options.descriptor) == 1;
}

/// The numbers of the terminal's colours.
std::string_view colourOf(Level level)
{
    switch (level) {
    case Level::debug:
        return "2"; // faint
    case Level::info:
        return "0";
    case Level::event:
        return "36"; // cyan
    case Level::warning:
        return "33"; // yellow
    case Level::error:
        return "31"; // red
    case Level::critical:
        return "1;31"; // bold red
    }
    return "0";
}

} // namespace

ConsoleHandler::ConsoleHandler(ConsoleOptions options)
    : m_descriptor(options.descriptor)
    , m_level(options.level)
    , m_isColoured(isColoured(options))
{}

void ConsoleHandler::operator()(Level level, const DeferredEvent& event) const
{
    if (level < m_level)
        return;
    const auto time = Date::now();
    detail::writeLine(m_descriptor, line(level, event(), time, m_isColoured));
}

std::string ConsoleHandler::line(Level level, const Event& event, Date time, bool isColoured)
{
    std::string line;
    if (isColoured)
        line.append("\x1B[").append(colourOf(level)).append("m");
    line += detail::timeOfDay(time);
    line += ' ';
    detail::appendVisible(line, event.description());
    if (isColoured)
        line += "\x1B[0m";
    line += '\n';
    return line;
}

} // namespace orrenby::Log
