#pragma once

/// @file
/// Text as the characters that people see.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The pieces of the text that people take for one character: a letter with its accents, a flag, a family of
/// emoji, the end of a line in two characters. Put together they are the text.
///
/// What is no UTF-8 counts as the U+FFFD that would stand for it.
///
/// @snippet Tests/Platform/Text/CharactersTests.cpp Taking a text apart
///
/// Linear; text that is all ASCII is taken apart without the tables of Unicode. The pieces are views of the
/// text. Safe to use from several threads.
ORRENBY_EXPORT std::vector<std::string_view> characters(std::string_view text);

/// How many there are.
ORRENBY_EXPORT std::size_t characterCount(std::string_view text);

} // namespace orrenby
