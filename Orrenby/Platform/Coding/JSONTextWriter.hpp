#pragma once

/// @file
/// JSON documents as text again. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Coding/JSONDocument.hpp"
#include "Orrenby/Platform/Coding/JSONOutput.hpp"
#include "Orrenby/Platform/Coding/JSONTextBuffer.hpp"
#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Appends the whole document in the given form. Numbers keep their text. Linear, but for the sorting of
/// keys.
void writeJSON(const JSONDocument& document, JSONOutput output, JSONTextBuffer& text);

} // namespace orrenby::inline ORRENBY_ABI::detail
