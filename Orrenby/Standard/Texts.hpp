#pragma once

/// @file
/// What texts lack.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/NSRange.hpp"
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A number that a text always hashes to, on every machine and in every run: Bernstein's hash over scalar
/// values, 5381 for the empty text, then 33 times the number so far plus the value, wrapping around.
///
/// For keys of caches and files. Texts that hash alike are easily made.
///
/// @snippet Tests/Standard/TextsTests.cpp Hashing a text
///
/// What is no UTF-8 counts as U+FFFD. Linear. Safe to use from several threads.
ORRENBY_EXPORT std::int64_t djb2Hash(std::string_view text) noexcept;

/// The text unless it is empty. A blank is content.
ORRENBY_EXPORT std::optional<std::string> nonEmptyString(std::string_view text);

/// All of the text as a range of UTF-16 units. What is no UTF-8 counts as U+FFFD. Linear.
ORRENBY_EXPORT NSRange fullRange(std::string_view text) noexcept;

} // namespace orrenby
