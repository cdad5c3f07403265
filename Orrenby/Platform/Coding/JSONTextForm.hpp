#pragma once

/// @file
/// The encoding of JSON texts. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The bytes as UTF-8 without a byte-order mark.
///
/// The encoding is told by the byte-order mark, or else by where the zeros are among the first four bytes:
/// JSON begins with two ASCII characters, or is one. UTF-8 is not copied and not checked; UTF-16 and UTF-32
/// are converted into `storage`. Throws `JSONReadError` for what is no character in those.
ORRENBY_EXPORT std::string_view jsonTextAsUTF8(std::span<const std::byte> data, std::string& storage);

} // namespace orrenby::inline ORRENBY_ABI::detail
