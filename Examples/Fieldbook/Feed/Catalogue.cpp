#include "Feed/Catalogue.hpp"

#include <algorithm>

namespace fieldbook {

int Catalogue::numberOf(const std::string& file)
{
    const auto [entry, isNew] = m_numbers.try_emplace(file, m_latestNumber + 1);
    if (isNew)
        ++m_latestNumber;
    return entry->second;
}

void Catalogue::restore(const std::string& file, int number)
{
    m_numbers.insert_or_assign(file, number);
    m_latestNumber = std::max(m_latestNumber, number);
}

void Catalogue::put(const std::string& file, const Report& report)
{
    m_reports.insert_or_assign(numberOf(file), report);
}

void Catalogue::take(const std::string& file) { m_reports.erase(numberOf(file)); }

const Report* Catalogue::find(int number) const
{
    const auto entry = m_reports.find(number);
    return entry != m_reports.end() ? &entry->second : nullptr;
}

std::string Catalogue::fileOf(int number) const
{
    const auto entry = std::find_if(
        m_numbers.begin(), m_numbers.end(), [&](const auto& known) { return known.second == number; });
    return entry != m_numbers.end() ? entry->first : "";
}

std::vector<NumberedReport> Catalogue::sorted(SortOrder order) const
{
    std::vector<NumberedReport> result;
    for (const auto& [number, report] : m_reports)
        result.push_back({number, report});
    std::stable_sort(result.begin(), result.end(), [order](const auto& first, const auto& second) {
        switch (order) {
        case SortOrder::byNumber:
            return first.number < second.number;
        case SortOrder::bySeverity:
            return first.report.severity > second.report.severity; // the gravest first
        case SortOrder::byPlace:
            return first.report.place < second.report.place;
        }
        return false;
    });
    return result;
}

} // namespace fieldbook
