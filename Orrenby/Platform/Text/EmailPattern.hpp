#pragma once

/// @file
/// The pattern of e-mail addresses.

#include "Orrenby/Platform/Export.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Whether the whole text is an e-mail address by `emailPattern()`. Upper and lower case differ; letters are
/// those of Unicode. Text that is no UTF-8 is no address.
///
/// The time is linear in the length, whatever the text. Safe to use from several threads.
ORRENBY_EXPORT bool matchesEmailPattern(std::string_view text);

/// The regular expression itself, for those who validate in another place.
ORRENBY_EXPORT std::string_view emailPattern() noexcept;

} // namespace orrenby
