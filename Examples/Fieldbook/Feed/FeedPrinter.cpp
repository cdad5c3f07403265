#include "Feed/FeedPrinter.hpp"

#include "Feed/Cases.hpp"
#include "Settings/Language.hpp"
#include "Terminal/Text.hpp"
#include <cstddef>
#include <string>
#include <variant>

namespace fieldbook {

Style styleOf(Severity severity)
{
    switch (severity) {
    case Severity::low:
        return Style::green;
    case Severity::medium:
        return Style::yellow;
    case Severity::high:
        return Style::red;
    }
    return Style::plain;
}

std::string padded(std::string_view text)
{
    constexpr std::size_t widthOfColumn = 8;
    auto result = std::string(text);
    result.resize(widthOfColumn, ' ');
    return result;
}

void FeedPrinter::show(const FeedNews& news)
{
    std::visit(
        Cases{
            [&](const Opened& it) {
                m_terminal.print(m_terminal.styled(Style::bold, "Feed of " + printable(it.folder)));
            },
            [&](const Recalled& it) {
                m_terminal.print(m_terminal.styled(
                    Style::faint, "= " + counted(it.reportCount, "report") + " from last time"));
            },
            [&](const Remembered& it) { printReport(Style::faint, '=', it.file, it.report); },
            [&](const Scanned& it) {
                m_terminal.print(
                    m_terminal.styled(Style::faint, "= " + counted(it.fileCount, "report file") + " so far"));
            },
            [&](const Added& it) { printReport(Style::green, '+', it.file, it.report); },
            [&](const Changed& it) { printReport(Style::cyan, '~', it.file, it.report); },
            [&](const Removed& it) {
                if (it.report)
                    printReport(Style::faint, '-', it.file, *it.report);
                else
                    printText(Style::faint, '-', "unreadable", it.file);
            },
            [&](const Unreadable& it) {
                printText(Style::red, '!', "unreadable", it.file + ": " + it.problem);
            },
            [&](const StationSays& it) { printText(Style::cyan, '@', "station", it.text); },
            [&](const StationGarbled& it) { printText(Style::red, '!', "station", it.problem); },
            [&](const ServiceSays& it) { printText(Style::cyan, '@', "service", it.text); },
            [&](const ServiceGarbled& it) { printText(Style::red, '!', "service", it.problem); },
            [&](const SignedIn& it) { printText(Style::cyan, '*', "signed in", it.address.stringValue()); },
            [&](const SignInRefused& it) { printText(Style::red, '!', "sign-in", it.problem); },
        },
        news);
}

void FeedPrinter::show(const FolderLost& failure)
{
    m_terminal.print(m_terminal.styled(Style::red, "! the folder is lost: " + printable(failure.reason)));
}

void FeedPrinter::printReport(Style style, char mark, const std::string& file, const Report& report)
{
    m_terminal.print(m_terminal.styled(style, std::string(1, mark)) + ' '
        + m_terminal.styled(styleOf(report.severity), padded(nameOf(report.severity))) + '#'
        + std::to_string(m_catalogue.numberOf(file)) + ' ' + m_terminal.styled(Style::bold, report.title.text)
        + ", " + report.place.text
        + m_terminal.styled(Style::faint,
            " (" + report.observer.text + (report.date ? ", " + shownDate(*report.date) : "") + ")"));
}

void FeedPrinter::printText(Style style, char mark, std::string_view what, std::string_view text)
{
    m_terminal.print(
        m_terminal.styled(style, std::string(1, mark) + ' ' + std::string(what)) + "  " + printable(text));
}

} // namespace fieldbook
