#pragma once

/// @file
/// Texts in which one sees what can be followed, called or visited.

#include "Terminal.hpp"
#include <string>
#include <string_view>

namespace fieldbook {

/// The text in that style, with links, mail addresses, telephone numbers and postal addresses underlined
/// instead, if the terminal takes styles; the text as it is otherwise.
///
/// No style goes beyond a line end: the lines of the result can be printed one by one. Linear.
std::string marked(const Terminal& terminal, std::string_view text, Style style = Style::plain);

} // namespace fieldbook
