#pragma once

/// @file
/// Names that platform error objects agree on: keys of the user information, and a domain.

#include "Orrenby/Platform/Export.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Key of a text that can be shown to people: what went wrong, as a whole sentence.
inline constexpr std::string_view NSLocalizedDescriptionKey = "NSLocalizedDescription";

/// Key of a text that names what was tried and failed, without the reason.
inline constexpr std::string_view NSLocalizedFailureErrorKey = "NSLocalizedFailure";

/// Key of a text that names the reason, without what was tried.
inline constexpr std::string_view NSLocalizedFailureReasonErrorKey = "NSLocalizedFailureReason";

/// Key of the `NSError` that caused this one.
inline constexpr std::string_view NSUnderlyingErrorKey = "NSUnderlyingError";

/// Domain of failed URL loads.
inline constexpr std::string_view NSURLErrorDomain = "NSURLErrorDomain";

} // namespace orrenby
