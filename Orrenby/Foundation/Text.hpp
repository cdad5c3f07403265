#pragma once

/// @file
/// Small operations on texts: trimming, escaping, prefixes.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT std::string trimmed(std::string_view text);
ORRENBY_EXPORT std::optional<std::string> urlEncoded(std::string_view text);

} // namespace detail

/// The text without the white space and line breaks around it. U+200B, which has no width, is none; inside,
/// everything stays.
///
/// @snippet Tests/Foundation/TextTests.cpp Cleaning a text
///
/// Safe to use from several threads.
inline constexpr auto trim = pipeable<std::string_view>(
    [](std::string_view text) { return detail::trimmed(text); });

/// The text with "%" and two digits in place of a blank, a line feed and each of `!*'();:@&=+$,/?%#[]`, so
/// that it can stand between the delimiters of a URL. Everything else stays, text beyond ASCII included.
/// Nothing for text that is no UTF-8.
///
/// @snippet Tests/Foundation/TextTests.cpp Cleaning a text
///
/// Linear. Safe to use from several threads.
inline constexpr auto urlencode = pipeable<std::string_view>(
    [](std::string_view text) { return detail::urlEncoded(text); });

/// Whether the text begins with any of the texts in the set; members that are no text are passed over.
///
/// Every text begins with the empty text. Compares bytes, hence with regard to case.
///
/// @snippet Tests/Foundation/TextTests.cpp Looking for prefixes
ORRENBY_EXPORT bool hasAnyPrefixFrom(std::string_view text, const NSSet& prefixes);

/// The text itself: marks a text as one that is deliberately the same in every language.
ORRENBY_EXPORT std::string nonLocalized(std::string_view text);

} // namespace orrenby
