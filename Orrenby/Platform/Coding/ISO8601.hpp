#pragma once

/// @file
/// Dates as text like `2026-11-21T10:00:00Z`. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Reads the form of RFC 3339 without fractions: four digits of year, `T`, a `Z` or an offset like `+02:00`.
/// Nothing for any other text and for days that do not exist.
std::optional<Date> dateFromISO8601(std::string_view text);

/// In UTC, rounded down to whole seconds; nothing outside the years 0 to 9999.
std::optional<std::string> iso8601Text(Date date);

} // namespace orrenby::inline ORRENBY_ABI::detail
