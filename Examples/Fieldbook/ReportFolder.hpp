#pragma once

/// @file
/// Reading the report files of a folder.

#include "ReportParser.hpp"
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fieldbook {

/// Whether a file of this name ought to be a report: it ends in `.report` and is not hidden.
bool isReportName(std::string_view file);

/// The names of all report files in the folder, sorted by their bytes. Nothing if the folder cannot be
/// listed.
std::optional<std::vector<std::string>> listReports(const std::filesystem::path& folder);

/// Files above this size, in bytes, are no reports.
inline constexpr std::size_t reportSizeLimit = 1024 * 1024;

/// What the file says, or nothing if there is no such file any more. Never waits: what is no regular file is
/// a problem.
std::optional<orrenby::Result<Report, ReportProblem>> readReport(const std::filesystem::path& path);

/// Why this cannot be the folder to watch, as a sentence without a full stop; nothing if it can.
std::optional<std::string> problemOfFolder(const std::filesystem::path& folder);

} // namespace fieldbook
