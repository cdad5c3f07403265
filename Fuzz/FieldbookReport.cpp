// Reading report files: no text is more than a report or a problem, neither can steer a terminal, and what
// was read can be read again.

#include "Examples/Fieldbook/Report/ReportDecoding.hpp"
#include "Examples/Fieldbook/Terminal/Text.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using namespace fieldbook;

namespace {

std::string quoted(std::string_view text)
{
    std::string result = "\"";
    for (const auto byte : text) {
        if (byte == '"' || byte == '\\')
            result += '\\';
        if (byte == '\n')
            result += "\\n";
        else if (byte == '\t')
            result += "\\t";
        else
            result += byte;
    }
    return result + '"';
}

/// The report as a file.
std::string written(const Report& report)
{
    return "{\"title\":" + quoted(report.title.text) + ",\"place\":" + quoted(report.place.text)
        + ",\"observer\":" + quoted(report.observer.text) + ",\"severity\":" + quoted(nameOf(report.severity))
        + ",\"body\":" + (report.body ? quoted(report.body->text) : "null") + "}";
}

void requireLine(const std::string& text) { requireThat(!trimmed(text).empty() && text == printable(text)); }

void requirePassage(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char byte) { return byte == '\n' || byte == '\t'; }, ' ');
    requireLine(text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto outcome = decodedReport(std::string_view(reinterpret_cast<const char*>(data), size));
    if (const auto problem = outcome.error()) {
        requireLine(*problem);
        requireThat(problem->find("line ") != std::string::npos);
        requireThat(problem->find(", column ") != std::string::npos);
        return 0;
    }
    const auto report = outcome.unwrap();
    requireLine(report.title.text);
    requireLine(report.place.text);
    requireLine(report.observer.text);
    if (report.body)
        requirePassage(report.body->text);
    requireThat(decodedReport(written(report)).value() == report);
    return 0;
}
