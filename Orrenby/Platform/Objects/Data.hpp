#pragma once

/// @file
/// Byte buffers.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A byte buffer. A plain value; copying it copies the bytes.
using Data = std::vector<std::byte>;

/// The bytes of a text, as they are.
ORRENBY_EXPORT Data dataFromText(std::string_view text);

/// The bytes read as UTF-8, or nothing when they are not valid UTF-8. A leading byte-order mark is kept as
/// U+FEFF. Linear.
ORRENBY_EXPORT std::optional<std::string> textFromData(std::span<const std::byte> data);

/// Whether the text is valid UTF-8: neither overlong forms, surrogates, values above U+10FFFF nor cut
/// sequences. The empty text is valid. Linear.
ORRENBY_EXPORT bool isValidUTF8(std::string_view text) noexcept;

namespace detail {

/// The bytes of a text, where they are. Safe to use from several threads.
ORRENBY_EXPORT std::span<const std::byte> bytesOf(std::string_view text) noexcept;

} // namespace detail

} // namespace orrenby
