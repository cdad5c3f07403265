#pragma once

/// @file
/// Texts of any content made fit for one line of output. Not in the umbrella header: part of the log's
/// sources.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Appends a text so that it stays on its line and cannot steer a terminal: `\n`, `\t`, `\r`, and `\u{001B}`
/// for the other control characters, line ends and marks of writing direction. What is no UTF-8 becomes
/// U+FFFD.
ORRENBY_EXPORT void appendVisible(std::string& line, std::string_view text);

/// Appends a text as a JSON string with its quotes. What is no UTF-8 becomes U+FFFD.
ORRENBY_EXPORT void appendJSONText(std::string& line, std::string_view text);

/// The moment in UTC, rounded to milliseconds: `2026-11-21T10:00:00.125Z`. The end of time is `inf`.
ORRENBY_EXPORT std::string timestamp(Date time);

/// The time of day alone: `10:00:00.125`.
ORRENBY_EXPORT std::string timeOfDay(Date time);

/// Writes a line in one call, where the system takes it in one. Failures are ignored, `errno` stays as it is.
ORRENBY_EXPORT void writeLine(int descriptor, std::string_view line) noexcept;

} // namespace orrenby::inline ORRENBY_ABI::detail
