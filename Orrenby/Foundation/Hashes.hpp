#pragma once

/// @file
/// Digests of text and bytes, and bytes as digits.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// The SHA-1 digest of the text's UTF-8 bytes as 40 lower-case hexadecimal digits; nothing for text that is
/// no UTF-8.
///
/// @snippet Tests/Foundation/HashesTests.cpp Hashing text and bytes
///
/// Linear. See `sha1` for what the digest is good for. Safe to use from several threads.
ORRENBY_EXPORT std::optional<std::string> sha1Hash(std::string_view text);

/// The 20 bytes of the SHA-1 digest; nothing for more than 4,294,967,295 bytes.
ORRENBY_EXPORT std::optional<Data> sha1Hash(std::span<const std::byte> data);

/// Two lower-case hexadecimal digits per byte, nothing between them.
ORRENBY_EXPORT std::string hexString(std::span<const std::byte> data);

} // namespace orrenby
