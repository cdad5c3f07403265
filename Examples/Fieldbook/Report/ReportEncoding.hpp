#pragma once

/// @file
/// Writing the text of report files.

#include "Report/Report.hpp"
#include <string>
#include <vector>

namespace fieldbook {

/// The text from which `decodedReport` makes this report: one member a line, in the order of the struct. A
/// body that is missing is left out. Ends with a line end.
///
/// @throws orrenby::EncodingError  if a text of the report is not valid UTF-8.
std::string encodedReport(const Report& report);

/// The same for a list of them.
std::string encodedReports(const std::vector<Report>& reports);

} // namespace fieldbook
