#pragma once

/// @file
/// Names of the modes in which run loops run.

#include "Orrenby/Platform/Export.hpp"
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A mode is a text, and any text is a mode of its own. These are the ones that everybody knows.

/// The mode for everything that has no reason to be in another. A common mode.
inline constexpr std::string_view NSDefaultRunLoopMode = "kCFRunLoopDefaultMode";

/// The mode while something is dragged or scrolled: what is not in it has to wait until that is over. A
/// common mode.
inline constexpr std::string_view UITrackingRunLoopMode = "UITrackingRunLoopMode";

/// No mode, but the name of all common ones: what is added to it is added to each of them. A loop cannot run
/// in it.
inline constexpr std::string_view NSRunLoopCommonModes = "kCFRunLoopCommonModes";

} // namespace orrenby
