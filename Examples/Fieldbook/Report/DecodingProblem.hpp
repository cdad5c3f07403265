#pragma once

/// @file
/// Telling people why a text in JSON is not taken.

#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include <string>

namespace fieldbook {

/// What is wrong, and where, in one line that a terminal shows: `user > name, line 3, column 17: …`.
std::string explain(const orrenby::DecodingError& error);

} // namespace fieldbook
