#include "ReportFolder.hpp"

#include "Descriptor.hpp"
#include "Text.hpp"
#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace fieldbook {

namespace {

namespace fs = std::filesystem;
using Outcome = orrenby::Result<Report, ReportProblem>;

std::string messageOf(int error) { return std::generic_category().message(error); }

/// Reads to the end or one byte beyond the limit. On failure `errno` tells why.
std::optional<std::string> readAll(int descriptor)
{
    std::string text;
    std::array<char, 16 * 1024> buffer;
    while (text.size() <= reportSizeLimit) {
        const auto length = ::read(descriptor, buffer.data(), buffer.size());
        if (length == 0)
            break;
        if (length > 0)
            text.append(buffer.data(), static_cast<std::size_t>(length));
        else if (errno != EINTR)
            return {};
    }
    return text;
}

} // namespace

bool isReportName(std::string_view file) { return file.ends_with(".report") && !file.starts_with('.'); }

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

std::optional<orrenby::Result<Report, ReportProblem>> readReport(const fs::path& path)
{
    // Not blocking, because opening a pipe would wait for its writer.
    const auto file = Descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        return errno == ENOENT ? std::nullopt : std::optional(Outcome::failure({0, messageOf(errno)}));
    struct stat status {};
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return Outcome::failure({0, "not a regular file"});
    const auto text = readAll(file.number());
    if (!text)
        return Outcome::failure({0, messageOf(errno)});
    if (text->size() > reportSizeLimit)
        return Outcome::failure({0, "larger than " + std::to_string(reportSizeLimit) + " bytes"});
    return parseReport(*text);
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
