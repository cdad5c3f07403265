#pragma once

/// @file
/// What stands behind the verb of a step, word by word.

#include <string>
#include <string_view>
#include <vector>

namespace fieldbook {

/// The words between blanks.
std::vector<std::string> wordsOf(std::string_view text);

/// The words as a program gets its arguments. Good as long as the words are.
std::vector<const char*> pointersTo(const std::vector<std::string>& words);

} // namespace fieldbook
