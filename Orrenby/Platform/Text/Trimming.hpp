#pragma once

/// @file
/// Cutting off what surrounds a text.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/CharacterSet.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// The piece of the text without the members of the set at its front and at its end. What is no UTF-8 stays.
///
/// @snippet Tests/Platform/Text/TrimmingTests.cpp Cutting off characters
///
/// Reads what is cut off and one scalar value more at each end; copies nothing. Safe to use from several
/// threads.
ORRENBY_EXPORT std::string_view trimmingCharacters(std::string_view text, const CharacterSet& set) noexcept;

} // namespace orrenby
