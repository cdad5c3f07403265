#include "ReportParser.hpp"

#include "Text.hpp"
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace fieldbook {

namespace {

using Outcome = orrenby::Result<Report, ReportProblem>;

constexpr std::array<std::string_view, 4> headerNames = {"Title", "Place", "Observer", "Severity"};
using HeaderValues = std::array<std::optional<std::string_view>, headerNames.size()>;

/// Hands out lines one by one and counts them.
class Lines {
public:
    explicit Lines(std::string_view text)
        : m_rest(text)
    {}

    bool isAtEnd() const { return m_rest.empty(); }
    int number() const { return m_number; }
    std::string_view rest() const { return m_rest; }

    std::string_view next()
    {
        const auto end = m_rest.find('\n');
        auto line = m_rest.substr(0, end);
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        ++m_number;
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        return line;
    }

private:
    std::string_view m_rest;
    int m_number = 0;
};

char lowercase(char letter)
{
    return 'A' <= letter && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isSameName(std::string_view first, std::string_view second)
{
    if (first.size() != second.size())
        return false;
    for (std::size_t index = 0; index < first.size(); ++index)
        if (lowercase(first[index]) != lowercase(second[index]))
            return false;
    return true;
}

std::optional<std::size_t> headerNamed(std::string_view name)
{
    for (std::size_t index = 0; index < headerNames.size(); ++index)
        if (isSameName(name, headerNames[index]))
            return index;
    return {};
}

std::optional<Severity> severityNamed(std::string_view name)
{
    for (const auto severity : {Severity::low, Severity::medium, Severity::high})
        if (isSameName(name, nameOf(severity)))
            return severity;
    return {};
}

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

/// What is wrong with the characters of a line, whatever it says.
std::optional<std::string> problemInCharacters(std::string_view line)
{
    while (!line.empty()) {
        const auto character = takeCharacter(line);
        if (!character)
            return "not valid UTF-8";
        if (*character != '\t' && !isPrintable(*character))
            return "a control character";
    }
    return {};
}

/// Files one header line into `values`, or tells what is wrong with it.
std::optional<std::string> readHeader(std::string_view line, HeaderValues& values)
{
    const auto colon = line.find(':');
    if (colon == std::string_view::npos)
        return "neither a header nor an empty line";
    const auto name = trimmed(line.substr(0, colon));
    const auto value = trimmed(line.substr(colon + 1));
    const auto index = headerNamed(name);
    if (!index)
        return "unknown header " + quoted(name);
    if (values[*index])
        return "a second " + quoted(headerNames[*index]);
    if (value.empty())
        return quoted(headerNames[*index]) + " is empty";
    if (value.find('\t') != std::string_view::npos)
        return "a tab within " + quoted(headerNames[*index]);
    if (headerNames[*index] == "Severity" && !severityNamed(value))
        return "unknown severity " + quoted(value) + ": low, medium or high";
    values[*index] = value;
    return {};
}

/// Reads the header lines and the empty line after them.
std::optional<std::string> readHeaders(Lines& lines, HeaderValues& values)
{
    while (!lines.isAtEnd()) {
        const auto line = lines.next();
        if (trimmed(line).empty())
            break;
        if (auto problem = problemInCharacters(line))
            return problem;
        if (auto problem = readHeader(line, values))
            return problem;
    }
    for (std::size_t index = 0; index < headerNames.size(); ++index)
        if (!values[index])
            return quoted(headerNames[index]) + " is missing";
    return {};
}

/// Appends the body with plain line ends.
std::optional<std::string> readBody(Lines& lines, std::string& body)
{
    body.reserve(lines.rest().size());
    while (!lines.isAtEnd()) {
        const auto line = lines.next();
        if (auto problem = problemInCharacters(line))
            return problem;
        body.append(line).push_back('\n');
    }
    return {};
}

} // namespace

std::string ReportProblem::description() const
{
    return line > 0 ? "line " + std::to_string(line) + ": " + message : message;
}

orrenby::Result<Report, ReportProblem> parseReport(std::string_view text)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    if (text.empty())
        return Outcome::failure({0, "the file is empty"});

    auto lines = Lines(text);
    HeaderValues values;
    if (auto problem = readHeaders(lines, values))
        return Outcome::failure({lines.number(), std::move(*problem)});

    auto report = Report{std::string(*values[0]), std::string(*values[1]), std::string(*values[2]),
        *severityNamed(*values[3]), ""};
    if (auto problem = readBody(lines, report.body))
        return Outcome::failure({lines.number(), std::move(*problem)});
    return Outcome::success(std::move(report));
}

} // namespace fieldbook
