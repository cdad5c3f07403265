#pragma once

/// @file
/// The words of the coders' errors. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Export.hpp"
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

inline constexpr std::string_view notUTF8 = "Text that is not valid UTF-8";
inline constexpr std::string_view nestedTooDeep = "More than 512 nested values";

/// `The number 1e400 does not fit in Double`; long digits are cut.
std::string numberDoesNotFit(std::string_view text, std::string_view typeName);

/// `JSON has no number for inf`
std::string noNumberFor(double value);

} // namespace orrenby::inline ORRENBY_ABI::detail
