#include "SampleFiles.hpp"

#include "ReportEncoding.hpp"
#include "SampleReports.hpp"
#include "Text.hpp"
#include <cerrno>
#include <fstream>
#include <system_error>

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

/// Writes under a name that is no report's, and moves the whole.
void write(const fs::path& path, std::string_view text)
{
    const auto draft = path.parent_path() / ".sample";
    errno = 0;
    auto file = std::ofstream(draft, std::ios::binary);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file) // streams tell no reasons of their own
        throw fs::filesystem_error(
            "cannot write", path, std::error_code(errno != 0 ? errno : EIO, std::generic_category()));
    fs::rename(draft, path);
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
    try {
        for (int number = 1; number <= request.count; ++number)
            write(folder / ("sample-" + request.seed + '-' + std::to_string(number) + ".json"),
                encodedReport(reports.next()));
    } catch (const fs::filesystem_error& error) {
        return Outcome::failure(
            "no samples: " + printable(error.path1().string()) + ": " + error.code().message());
    }
    return Outcome::success(static_cast<std::size_t>(request.count));
}

} // namespace fieldbook
