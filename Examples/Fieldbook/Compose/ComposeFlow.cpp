#include "Compose/ComposeFlow.hpp"

#include "Folder/WholeFile.hpp"
#include "Report/ReportDecoding.hpp"
#include "Report/ReportEncoding.hpp"
#include "Terminal/Text.hpp"
#include <filesystem>
#include <system_error>

namespace fieldbook {

namespace {

/// The text behind the word, if the line begins with it.
std::optional<std::string> textBehind(std::string_view word, std::string_view line)
{
    if (!line.starts_with(word) || line.size() <= word.size() || line[word.size()] != ' ')
        return {};
    return std::string(trimmed(line.substr(word.size() + 1)));
}

/// The first name of this kind that no file of the folder has.
std::string freeName(const std::filesystem::path& folder)
{
    for (int number = 1;; ++number) {
        auto name = "report-" + std::to_string(number) + ".json";
        if (std::error_code error; !std::filesystem::exists(folder / name, error))
            return name;
    }
}

} // namespace

ComposeFlow::ComposeFlow(Session& session)
    : AbstractFlow(orrenby::make<ScreenContext>(session, "compose"), orrenby::Void())
    , m_session(session)
{}

ComposeFlow::~ComposeFlow() = default;

void ComposeFlow::didStart()
{
    say(Style::faint,
        "= a new report: title TEXT, place TEXT, severity low|medium|high, body TEXT; save, discard");
}

ComposeFlow::Outcome ComposeFlow::take(std::string_view line)
{
    if (line == "save")
        return save();
    if (line == "discard") {
        say(Style::faint, "= discarded");
        return Outcome::isOver;
    }
    if (auto title = textBehind("title", line))
        m_title = *std::move(title);
    else if (auto place = textBehind("place", line))
        m_place = *std::move(place);
    else if (auto body = textBehind("body", line))
        m_body = *std::move(body);
    else if (const auto name = textBehind("severity", line)) {
        for (const auto severity : orrenby::allCases<Severity>)
            if (nameOf(severity) == *name) {
                m_severity = severity;
                return Outcome::goesOn;
            }
        say(Style::red, "! a severity is low, medium or high");
    } else
        return Outcome::notTaken;
    return Outcome::goesOn;
}

ComposeFlow::Outcome ComposeFlow::save()
{
    const auto observer = m_session.user ? m_session.user->stringValue() : "nobody";
    auto report = Report{m_title, m_place, observer, m_severity, {}};
    if (!m_body.empty())
        report.body = Passage(m_body);
    // What was typed passes the same checks as what stands in files.
    auto text = std::string();
    try {
        text = encodedReport(report);
    } catch (const orrenby::EncodingError&) {
        say(Style::red, "! it is no text in UTF-8");
        return Outcome::goesOn;
    }
    const auto checked = decodedReport(text);
    if (const auto problem = checked.error()) {
        say(Style::red, "! " + *problem);
        return Outcome::goesOn;
    }
    const auto name = freeName(m_session.folder);
    if (const auto problem = writeWhole(m_session.folder / name, text)) {
        say(Style::red, "! " + name + ": " + *problem);
        return Outcome::goesOn;
    }
    say(Style::faint, "= saved as " + name);
    return Outcome::isOver;
}

void ComposeFlow::say(Style style, const std::string& text)
{
    m_session.terminal.print(m_session.terminal.styled(style, text));
}

} // namespace fieldbook
