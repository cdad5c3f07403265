#pragma once

/// @file
/// Dates out of server timestamps.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <optional>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// The date of a server timestamp such as `2020-01-02T03:04:05.678Z`, as `DateFormatters::halvetServer`
/// reads it: strictly, and the whole text. Nothing for any other text.
///
/// A number may have a few digits more than in the format, and the year, the month, the hour and the fraction
/// may have fewer: "20-01-02T3:04:05.6Z" is a timestamp of the year 20.
///
/// @snippet Tests/Foundation/Dates/DateFromTextTests.cpp Reading a timestamp
///
/// Costs less than a tenth of a microsecond. Safe to use from several threads.
ORRENBY_EXPORT std::optional<Date> date(std::string_view text);

} // namespace orrenby
