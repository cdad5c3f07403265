#pragma once

/// @file
/// The forms of written JSON.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// How JSON is laid out. Without any of these it is compact, with members in the order in which they were
/// written.
///
/// A plain value. Not synchronised.
struct JSONOutput {
    /// One value on each line, indented by two blanks for each list or object around it; `"key" : value`.
    bool prettyPrinted = false;
    /// The members of each object in the order of their keys' bytes.
    bool sortedKeys = false;

    friend bool operator==(JSONOutput, JSONOutput) = default;
};

} // namespace orrenby
