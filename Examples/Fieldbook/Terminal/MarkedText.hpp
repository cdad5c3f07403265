#pragma once

/// @file
/// Texts in which one sees what can be followed, called or visited.

#include "Orrenby/Platform/Text/TextAttributes.hpp"
#include "Terminal/Terminal.hpp"
#include <string>
#include <string_view>

namespace fieldbook {

/// The text with those attributes, but with links, mail addresses, telephone numbers and postal addresses
/// underlined instead; without any where the terminal takes no styles.
///
/// No style goes beyond a line end: the lines of the result can be printed one by one. Linear.
std::string marked(
    const Terminal& terminal, std::string_view text, const orrenby::TextAttributes& attributes = {});

} // namespace fieldbook
