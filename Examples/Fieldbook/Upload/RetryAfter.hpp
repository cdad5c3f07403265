#pragma once

/// @file
/// When a service wants to be asked again.

#include "Upload/Transport.hpp"
#include <optional>

namespace fieldbook {

/// How many seconds the header field "Retry-After" asks to wait: a number of them, or the time to a date in
/// GMT, such as `Wed, 04 Mar 2026 11:40:00 GMT`, at least 0. Nothing where there is no such field or it says
/// something else.
std::optional<double> secondsToRetryAfter(const Answer& answer);

} // namespace fieldbook
