// Reading report files: no text is more than a report or a problem, and what was read can be read again.

#include "Examples/Fieldbook/ReportParser.hpp"
#include "Examples/Fieldbook/Text.hpp"
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace fieldbook;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// The report as a file.
std::string written(const Report& report)
{
    return "Title: " + report.title + "\nPlace: " + report.place + "\nObserver: " + report.observer
        + "\nSeverity: " + std::string(nameOf(report.severity)) + "\n\n" + report.body;
}

void requireHeader(const std::string& text)
{
    require(!text.empty() && text == trimmed(text) && text == printable(text));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto text = std::string_view(reinterpret_cast<const char*>(data), size);
    const auto outcome = parseReport(text);
    if (const auto problem = outcome.error()) {
        require(problem->line >= 0 && problem->line <= 1 + std::count(text.begin(), text.end(), '\n'));
        require((problem->line == 0) == (problem->message == "the file is empty"));
        require(!problem->message.empty());
        return 0;
    }
    const auto report = outcome.unwrap();
    requireHeader(report.title);
    requireHeader(report.place);
    requireHeader(report.observer);
    require(report.body.size() <= size + 1);
    require(parseReport(written(report)).value() == report);
    return 0;
}
