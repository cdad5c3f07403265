#pragma once

/// @file
/// The one line that stands for a platform error object.

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI::Log {

/// What to print for an error.
///
/// The text under `NSLocalizedDescriptionKey`; or else that under `NSLocalizedFailureErrorKey`, which becomes
/// `Error:FAILURE Reason:REASON` when there is a text under `NSLocalizedFailureReasonErrorKey` as well. What
/// the user information lacks is asked of the provider of the error's domain in the same order. Without any
/// of them it is `Domain: DOMAIN Code: CODE`.
///
/// An empty text counts as a text, a value of another kind does not. Calls the provider at most three times.
/// Safe to use from several threads.
ORRENBY_EXPORT std::string errorMessage(const NSError& error);

} // namespace orrenby::Log
