#pragma once

/// @file
/// Reports that outlive the service that took them.

#include "Service/ReportService.hpp"
#include <filesystem>
#include <optional>
#include <string>

namespace fieldbook {

/// Writes the bytes that arrived into the folder: the report into `4.json`, its photo into `4.png` or
/// `4.jpg`, or `4.photo` for another kind of image. What was there under that number before is replaced, and
/// each file shows up whole.
///
/// @returns Why that could not be done, or nothing.
std::optional<std::string> keepReport(const ReceivedReport& report, const std::filesystem::path& folder);

} // namespace fieldbook
