#pragma once

/// @file
/// Bytes as text in Base64. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Coding/JSONTextBuffer.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// RFC 4648 with padding; nothing for any other text, blanks included.
std::optional<Data> dataFromBase64(std::string_view text);

/// Appends the text without quotes.
void appendBase64(std::span<const std::byte> data, JSONTextBuffer& text);

} // namespace orrenby::inline ORRENBY_ABI::detail
