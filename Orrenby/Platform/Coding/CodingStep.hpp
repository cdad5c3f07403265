#pragma once

/// @file
/// Coding paths that cost nothing until somebody asks. Not in the umbrella header: part of the coders' own
/// workings.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The last step of a coding path, linked to those before it. Steps live on the stack of the coding
/// functions; the key's text lives as long as the step.
struct CodingStep {
    const CodingStep* parent = nullptr; ///< None for the first step.
    std::string_view key;
    std::int64_t index = -1; ///< The place in a list; negative for a member.
};

/// The path that ends with this step; empty for none.
ORRENBY_EXPORT std::vector<CodingKey> codingPath(const CodingStep* last);

} // namespace orrenby::inline ORRENBY_ABI::detail
