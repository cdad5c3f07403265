#pragma once

/// @file
/// Between JSON and values of any kind. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Coding/CodingStep.hpp"
#include "Orrenby/Platform/Coding/JSONDocument.hpp"
#include "Orrenby/Platform/Coding/JSONTextBuffer.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <cstddef>

namespace orrenby::inline ORRENBY_ABI::detail {

/// How deep written values may be nested: as deep as they can be read again.
inline constexpr std::size_t deepestJSON = 512;

/// The value at `node`, numbers as `NSJSONSerialization` gives them. Throws `DecodingError` for a number that
/// is too large.
Any anyFromJSON(const JSONDocument& document, JSONDocument::Node node, const CodingStep* path = nullptr);

/// Appends the value as compact JSON. Throws `EncodingError` for what JSON cannot hold.
void writeAnyAsJSON(
    const Any& value, JSONTextBuffer& text, const CodingStep* path = nullptr, std::size_t depth = 0);

} // namespace orrenby::inline ORRENBY_ABI::detail
