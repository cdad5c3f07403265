#pragma once

/// @file
/// Reading the text of report files.

#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Report/Report.hpp"
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fieldbook {

/// The report that a text in JSON holds.
///
///     {
///         "title": "Footbridge under water",
///         "place": "Lower Marrow, ford",
///         "observer": "Ines Calder",
///         "severity": "high",
///         "body": "The stream came up over the planks before noon.",
///         "date": "2026-03-04T11:40:00.000Z"
///     }
///
/// Members stand in any order, and others are ignored. The failure is one line for whoever wrote the text,
/// and tells the first problem and where it is: `severity, line 5, column 17: …`.
///
/// Linear. Throws nothing for what the text holds.
orrenby::Result<Report, std::string> decodedReport(std::string_view text);

/// The reports of a list, each taken on its own.
struct DecodedReports {
    std::vector<std::optional<Report>> reports; ///< Nothing in the place of one that cannot be read.
    /// Everything that is wrong with those, in the order of the text: `Index 2 > severity, line 5, column 17:
    /// …`.
    std::vector<std::string> problems;

    friend bool operator==(const DecodedReports&, const DecodedReports&) = default;
};

/// The reports that a list in JSON holds. It fails only where the text is no list, with a line that says so.
///
/// @snippet Examples/Fieldbook/Tests/Report/ReportDecodingTests.cpp Taking what can be read of a list
///
/// Linear. Throws nothing for what the text holds.
orrenby::Result<DecodedReports, std::string> decodedReports(std::string_view text);

/// How dates stand in reports: as timestamps in GMT.
orrenby::JSONDecoder::DateDecodingStrategy datesOfReports();

} // namespace fieldbook
