#include "Application/Summary.hpp"

#include "Application/LifeTrace.hpp"
#include "Feed/FeedPrinter.hpp"
#include "Terminal/Text.hpp"
#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace fieldbook {

namespace {

/// `  severity    high 2; medium 3; low 1`
void printLine(Terminal& terminal, std::string_view title, std::string_view text)
{
    constexpr std::size_t widthOfColumn = 12;
    auto line = std::string(title);
    line.resize(widthOfColumn, ' ');
    terminal.print("  " + terminal.styled(Style::faint, line) + std::string(text));
}

void append(std::string& list, std::string_view item)
{
    if (!list.empty())
        list += "; "; // places have commas
    list += item;
}

template <class Number> std::string listOf(const std::map<std::string, Number>& counts)
{
    std::string list;
    for (const auto& [name, count] : counts)
        append(list, name + " " + std::to_string(count));
    return list;
}

std::string severitiesOf(const Tally& tally, const Terminal& terminal)
{
    std::string list;
    for (const auto severity : {Severity::high, Severity::medium, Severity::low}) {
        const auto count = tally.bySeverity[static_cast<std::size_t>(severity)];
        append(list,
            terminal.styled(styleOf(severity), std::string(nameOf(severity)) + " " + std::to_string(count)));
    }
    return list;
}

std::string eventsOf(const Tally& tally)
{
    return "added " + std::to_string(tally.added) + "; changed " + std::to_string(tally.changed)
        + "; removed " + std::to_string(tally.removed) + "; unreadable " + std::to_string(tally.unreadable);
}

std::string uploadsOf(const Session& session)
{
    const auto& [sent, givenUp, waiting] = session.uploads;
    const auto counts = "sent " + std::to_string(sent) + "; given up " + std::to_string(givenUp);
    return session.isMemoryKept && waiting > 0
        ? counts + "; left for the next start " + std::to_string(waiting)
        : counts;
}

} // namespace

void printSummary(const Session& session, Terminal& terminal)
{
    const auto tally = session.tally.value();
    terminal.print(terminal.styled(Style::bold, "Summary"));
    printLine(terminal, "events", eventsOf(tally));
    printLine(terminal, "severity", severitiesOf(tally, terminal));
    printLine(terminal, "observers", listOf(tally.byObserver));
    printLine(terminal, "places", listOf(tally.byPlace));
    std::string unreadable;
    for (const auto& file : tally.unreadableFiles)
        append(unreadable, printable(file));
    printLine(terminal, "unreadable", unreadable.empty() ? "none" : unreadable);
    const auto screens = listOf(session.screens);
    printLine(terminal, "screens", screens.empty() ? "none" : screens);
    printLine(terminal, "opened", std::to_string(session.openedCount));
    printLine(terminal, "uploads", uploadsOf(session));
    printLine(terminal, "alive", describeLiveParts());
}

} // namespace fieldbook
