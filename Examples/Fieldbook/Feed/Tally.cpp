#include "Feed/Tally.hpp"

namespace fieldbook {

namespace {

void takeOne(std::map<std::string, std::size_t>& counts, const std::string& key)
{
    const auto entry = counts.find(key);
    if (entry != counts.end() && --entry->second == 0)
        counts.erase(entry);
}

} // namespace

void Tally::put(const Report& report)
{
    ++bySeverity[static_cast<std::size_t>(report.severity)];
    ++byObserver[report.observer.text];
    ++byPlace[report.place.text];
}

void Tally::take(const Report& report)
{
    --bySeverity[static_cast<std::size_t>(report.severity)];
    takeOne(byObserver, report.observer.text);
    takeOne(byPlace, report.place.text);
}

} // namespace fieldbook
