#pragma once

/// @file
/// Text files that the build puts into a program. Not in the umbrella header: part of the detector's rules.

#include "Orrenby/Platform/Export.hpp"
#include <span>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A file that one reads and edits as text, and that a program has inside itself: the function
/// `orrenby_embed_texts` of the build makes a C++ function that gives all files of a folder.
struct EmbeddedText {
    /// The file's name without its ending.
    std::string_view name;
    std::string_view text;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
