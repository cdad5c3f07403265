#pragma once

/// @file
/// Text with "%" and two digits in place of some characters.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Text/CharacterSet.hpp"
#include "Orrenby/Platform/Text/PercentDecodingError.hpp"
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// The text with each byte of every character that is not allowed as "%" and two upper-case digits. Beyond
/// ASCII nothing is allowed, whatever the set holds.
///
/// "%" itself is escaped unless it is allowed, so that a text can be encoded twice. Nothing for text that is
/// no UTF-8.
///
/// @snippet Tests/Platform/Text/PercentEncodingTests.cpp Escaping and back
///
/// Linear. Safe to use from several threads.
ORRENBY_EXPORT std::optional<std::string> addingPercentEncoding(
    std::string_view text, const CharacterSet& allowed);

/// The other way round: escapes the members of the set and nothing else, so that text beyond ASCII may stay.
/// Nothing for text that is no UTF-8.
ORRENBY_EXPORT std::optional<std::string> addingPercentEscapes(
    std::string_view text, const CharacterSet& escaped);

/// The text that an encoded one stands for, or nothing when it is no percent-encoding of UTF-8. Digits of
/// either case do, and "+" is a plus. Linear.
ORRENBY_EXPORT std::optional<std::string> removingPercentEncoding(std::string_view text);

/// The same, telling what is wrong.
ORRENBY_EXPORT Result<std::string, PercentDecodingError> tryRemovingPercentEncoding(std::string_view text);

} // namespace orrenby
