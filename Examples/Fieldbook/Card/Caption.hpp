#pragma once

/// @file
/// Texts in which people have marked what matters.

#include "Terminal/Terminal.hpp"
#include <string>
#include <string_view>

namespace fieldbook {

/// The text with what stands in square brackets in bold, and without the brackets: `[no] entry`. Links, mail
/// addresses, telephone numbers and postal addresses outside of them are underlined, see MarkedText.hpp.
/// Where the terminal takes no styles the brackets go as well.
///
/// "%%" becomes "%". What is no UTF-8 becomes U+FFFD. Linear.
std::string captioned(const Terminal& terminal, std::string_view text);

} // namespace fieldbook
