#include "Folder/ReportFolder.hpp"

#include "Folder/SmallFile.hpp"
#include "Report/ReportDecoding.hpp"
#include "Terminal/Descriptor.hpp"
#include "Terminal/Text.hpp"
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace fieldbook {

namespace {

namespace fs = std::filesystem;

std::string messageOf(int error) { return std::generic_category().message(error); }

} // namespace

bool isReportName(std::string_view file) { return file.ends_with(".json") && !file.starts_with('.'); }

std::optional<std::vector<std::string>> listReports(const fs::path& folder)
{
    std::vector<std::string> files;
    std::error_code error;
    auto entry = fs::directory_iterator(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error))
        if (auto file = entry->path().filename().string(); isReportName(file))
            files.push_back(std::move(file));
    if (error)
        return {};
    std::sort(files.begin(), files.end());
    return files;
}

std::optional<orrenby::Result<Report, std::string>> readReport(const fs::path& path)
{
    const auto content = readFile(path);
    if (!content)
        return {};
    if (const auto problem = content->error())
        return orrenby::Result<Report, std::string>::failure(*problem);
    return decodedReport(content->unwrap());
}

std::optional<std::string> problemOfFolder(const fs::path& folder)
{
    const auto because = [&](const std::string& reason) {
        return "cannot watch the folder \"" + printable(folder.string()) + "\": " + reason;
    };
    const auto descriptor = Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor)
        return because(messageOf(errno));
    // Listing it needs the right to read, opening its files the right to search.
    if (::faccessat(descriptor.number(), ".", R_OK | X_OK, AT_EACCESS) != 0)
        return because(messageOf(errno));
    return {};
}

} // namespace fieldbook
