#include "Report/SampleReports.hpp"

#include <cstddef>
#include <iterator>
#include <string>

namespace fieldbook {

namespace {

/// What may be found outside: the title stands behind a number where there is something to count.
struct Finding {
    const char* title;
    bool isCounted;
    Severity severity;
    const char* body;
};

constexpr Finding findings[] = {
    {"lapwings on the wet meadow", true, Severity::low, "Counted from the hide, within an hour."},
    {"trees across the path", true, Severity::medium, "Two people with a saw are enough."},
    {"Rail of the footbridge loose", false, Severity::high, "It holds nobody who leans on it."},
    {"Gate left open", false, Severity::low, "Closed it. No cattle outside."},
    {"hikers without a lamp", true, Severity::medium, "Walked them down to the car park."},
    {"Spring runs clear again", false, Severity::low, "Six buckets later it still did."},
    {"Slope sliding below the path", false, Severity::high, "Cracks as wide as a hand. Taped off."},
    {"Notice board unreadable", false, Severity::low, "The sun took the ink. It needs a new print."},
};

constexpr const char* places[] = {"Harrow Gate", "Weir Lane", "Colder Hill", "Chapel Bank",
    "Lower Marrow, ford", "Three Stones crossing", "Quarry Road, second bend"};

constexpr const char* observers[] = {
    "Ines Calder", "Jonas Brandt", "Marit Lindqvist", "Sunniva Øye", "Tomé Ferreira"};

/// A source of its own for each choice, so that a longer list of one does not change the others.
orrenby::SeededRandomNumberGenerator choiceOf(std::string_view what, std::string_view seed, std::size_t count)
{
    auto ownSeed = std::string(what);
    ownSeed.append("/").append(seed);
    return orrenby::SeededRandomNumberGenerator(ownSeed, {.max = static_cast<std::int64_t>(count) - 1});
}

} // namespace

SampleReports::SampleReports(std::string_view seed)
    : m_findings(choiceOf("finding", seed, std::size(findings)))
    , m_places(choiceOf("place", seed, std::size(places)))
    , m_observers(choiceOf("observer", seed, std::size(observers)))
    , m_counts(choiceOf("count", seed, 40))
{}

Report SampleReports::next()
{
    const auto& finding = findings[m_findings.next()];
    const auto count = m_counts.next() + 2;
    auto title = (finding.isCounted ? std::to_string(count) + ' ' : std::string()) + finding.title;
    return {std::move(title), places[m_places.next()], observers[m_observers.next()], finding.severity,
        Passage(finding.body)};
}

std::vector<Report> SampleReports::next(int count)
{
    std::vector<Report> reports;
    for (int number = 0; number < count; ++number)
        reports.push_back(next());
    return reports;
}

} // namespace fieldbook
