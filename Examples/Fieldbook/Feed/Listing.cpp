#include "Feed/Listing.hpp"

#include "Feed/FeedPrinter.hpp"
#include <cstddef>
#include <cstdint>
#include <utility>

namespace fieldbook {

namespace {

/// People count rows from 1.
std::string rowAt(std::int64_t position) { return std::to_string(position + 1); }

/// `  row 2 → 5   `: as wide for all of them, up to 99 rows.
std::string rowNote(const std::string& what, std::size_t width)
{
    constexpr std::size_t widthOfColumn = 8;
    return "  row " + what + std::string(width < widthOfColumn ? widthOfColumn - width : 1, ' ');
}

std::string movedRow(std::int64_t from, std::int64_t to)
{
    const auto first = rowAt(from);
    const auto second = rowAt(to);
    return rowNote(first + " → " + second, first.size() + 3 + second.size());
}

std::string rowThat(std::int64_t position, const char* cameOrWent)
{
    const auto what = rowAt(position) + cameOrWent;
    return rowNote(what, what.size());
}

} // namespace

std::vector<std::string> Listing::all(SortOrder order)
{
    m_order = order;
    m_rows = rowsNow();
    std::vector<std::string> lines;
    for (const auto number : *m_rows)
        lines.push_back("  " + text(number));
    return lines;
}

std::vector<std::string> Listing::sorted(SortOrder order)
{
    if (!isShown())
        return all(order);
    m_order = order;
    return changes(true);
}

std::vector<std::string> Listing::news() { return isShown() ? changes(false) : std::vector<std::string>(); }

Listing::Rows Listing::rowsNow() const
{
    Rows rows;
    for (const auto& [number, report] : m_catalogue.sorted(m_order))
        rows.append(number);
    return rows;
}

/// @param hasTexts  Whether the reports are told, too, and not their numbers alone.
std::vector<std::string> Listing::changes(bool hasTexts)
{
    const auto before = std::exchange(m_rows, rowsNow()).value();
    const auto& now = std::as_const(*m_rows);
    std::vector<std::string> lines;
    const auto diff = before.comparedWithFewestMoves(now);
    if (!diff)
        return lines;
    for (const auto position : diff->deletes)
        lines.push_back(rowThat(position, " out") + number(before[position]));
    for (const auto& [from, to] : diff->moves)
        if (from != to) // the others may have moved around it
            lines.push_back(movedRow(from, to) + (hasTexts ? text(now[to]) : number(now[to])));
    for (const auto position : diff->inserts)
        lines.push_back(rowThat(position, " in") + (hasTexts ? text(now[position]) : number(now[position])));
    return lines;
}

std::string Listing::number(int number) const { return '#' + std::to_string(number); }

std::string Listing::text(int number) const
{
    const auto* const report = m_catalogue.find(number);
    return this->number(number) + ' '
        + m_terminal.styled(styleOf(report->severity), padded(nameOf(report->severity))) + report->title.text
        + ", " + report->place.text;
}

} // namespace fieldbook
