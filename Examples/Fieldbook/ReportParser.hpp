#pragma once

/// @file
/// Reading report files.

#include "Orrenby/Platform/Objects/Result.hpp"
#include "Report.hpp"
#include <string>
#include <string_view>

namespace fieldbook {

/// Why a file is no report.
struct ReportProblem {
    /// Counted from 1; 0 where it is the file as a whole.
    int line = 0;
    std::string message;

    /// `line 4: …`, or the message alone.
    std::string description() const;

    friend bool operator==(const ReportProblem&, const ReportProblem&) = default;
};

/// Reads a report: four header lines, an empty line, and the body.
///
///     Title: Footbridge under water
///     Place: Lower Marrow, ford
///     Observer: Ines Calder
///     Severity: high
///
///     The stream came up over the planks before noon.
///
/// Strict: every header once, none unknown, none empty, valid UTF-8, no control characters. Kind: the headers
/// come in any order and letter case, with blanks around name and value; lines end with LF or CR LF; a
/// byte-order mark is skipped; the body may be empty, and then the empty line may be absent as well.
///
/// O(n). The first problem is the one that is told. Never throws for what the text holds.
orrenby::Result<Report, ReportProblem> parseReport(std::string_view text);

} // namespace fieldbook
