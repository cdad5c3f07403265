#pragma once

/// @file
/// Reading the report files of a folder.

#include "Orrenby/Platform/Objects/Result.hpp"
#include "Report/Report.hpp"
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fieldbook {

/// Whether a file of this name ought to be a report: it ends in `.json` and is not hidden.
bool isReportName(std::string_view file);

/// The names of all report files in the folder, sorted by their bytes. Nothing if the folder cannot be
/// listed.
std::optional<std::vector<std::string>> listReports(const std::filesystem::path& folder);

/// What the file says, or why it is no report, in one line; nothing if there is no such file any more.
std::optional<orrenby::Result<Report, std::string>> readReport(const std::filesystem::path& path);

/// Why this cannot be the folder to watch, as a sentence without a full stop; nothing if it can.
std::optional<std::string> problemOfFolder(const std::filesystem::path& folder);

} // namespace fieldbook
