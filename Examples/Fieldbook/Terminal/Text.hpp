#pragma once

/// @file
/// Texts from outside, before they reach a terminal.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

/// Takes the first character off `rest`, which is not empty. Nothing where `rest` does not begin with
/// well-formed UTF-8; then one byte is taken.
std::optional<char32_t> takeCharacter(std::string_view& rest);

/// Whether a terminal shows the character instead of obeying it: no control character, no line end, no mark
/// of writing direction.
bool isPrintable(char32_t character);

/// The text with a question mark in place of everything that is not printable UTF-8. File names may hold any
/// bytes.
std::string printable(std::string_view text);

/// The positive number that the text is in decimal digits, and nothing else.
std::optional<int> numberIn(std::string_view text);

/// `1 report`, `2 reports`.
std::string counted(std::size_t count, std::string_view thing);

/// Without blanks and tabs at both ends.
std::string_view trimmed(std::string_view text);

} // namespace fieldbook
