#include "Folder/SampleFiles.hpp"

#include "Folder/WholeFile.hpp"
#include "Report/ReportEncoding.hpp"
#include "Report/SampleReports.hpp"
#include "Terminal/Text.hpp"

namespace fieldbook {

namespace {

namespace fs = std::filesystem;

bool isSeed(std::string_view text)
{
    constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-";
    constexpr std::size_t longest = 32;
    return !text.empty() && text.size() <= longest
        && text.find_first_not_of(allowed) == std::string_view::npos;
}

} // namespace

std::optional<SampleRequest> sampleRequestIn(std::string_view text, char separator)
{
    SampleRequest request;
    const auto end = text.find(separator);
    const auto count = numberIn(text.substr(0, end));
    if (!count || *count > SampleRequest::limit)
        return std::nullopt;
    request.count = *count;
    if (end != std::string_view::npos) {
        request.seed = text.substr(end + 1);
        if (!isSeed(request.seed))
            return std::nullopt;
    }
    return request;
}

orrenby::Result<std::size_t, std::string> writeSamples(const SampleRequest& request, const fs::path& folder)
{
    using Outcome = orrenby::Result<std::size_t, std::string>;
    auto reports = SampleReports(request.seed);
    for (int number = 1; number <= request.count; ++number) {
        const auto file = folder / ("sample-" + request.seed + '-' + std::to_string(number) + ".json");
        if (const auto problem = writeWhole(file, encodedReport(reports.next())))
            return Outcome::failure("no samples: " + printable(file.string()) + ": " + *problem);
    }
    return Outcome::success(static_cast<std::size_t>(request.count));
}

} // namespace fieldbook
