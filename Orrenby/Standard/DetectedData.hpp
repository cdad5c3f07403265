#pragma once

/// @file
/// Whether a text holds links, mail addresses, telephone numbers or postal addresses, and where.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/DataMatch.hpp"
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Whether there is a postal address in the text. This and its neighbours take linear time and see what
/// `DataDetector` sees.
ORRENBY_EXPORT bool containsAddress(std::string_view text);

/// Whether there is a telephone number in the text.
ORRENBY_EXPORT bool containsPhoneNumber(std::string_view text);

/// Whether there is a link in the text whose scheme is not "mailto". The spelling counts: "MAILTO:a@b.co" is
/// such a link.
ORRENBY_EXPORT bool containsURL(std::string_view text);

/// Whether there is a mail address or a "mailto" link in the text. It may be no `EmailAddress`, and most
/// texts with one are none: see `isValidEmail` for a text that is to be an address as a whole.
ORRENBY_EXPORT bool containsEmail(std::string_view text);

/// Whether there is any link in the text, mail addresses included.
ORRENBY_EXPORT bool containsHyperlink(std::string_view text);

/// Everything of all kinds in the text, from left to right, with its range and, for links, its URL.
///
/// @snippet Tests/Standard/DetectedDataTests.cpp Underlining what a text holds
[[nodiscard]] ORRENBY_EXPORT std::vector<DataMatch> detect(std::string_view text);

} // namespace orrenby
