#pragma once

/// @file
/// The one way in which a programming error ends the process.

#include "Orrenby/Platform/Export.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Ends the process because of a programming error.
///
/// Writes `Fatal error: MESSAGE: file FILE, line N` and a line end to standard error, then calls
/// `std::abort`. A `line` of 0 leaves out its part. Nothing is allocated, so it also works when memory is
/// what ran out.
///
/// Never reachable from outside input. Safe to use from several threads.
[[noreturn]] ORRENBY_EXPORT void fatalError(
    std::string_view message, std::string_view file, int line = 0) noexcept;

} // namespace orrenby
