#pragma once

/// @file
/// Bytes as hexadecimal text.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Two lower-case digits per byte, nothing between them; no bytes give the empty text.
///
/// @snippet Tests/Platform/Text/HexadecimalTests.cpp Writing bytes as digits
///
/// Linear, with one allocation. Safe to use from several threads.
ORRENBY_EXPORT std::string hexadecimalText(std::span<const std::byte> bytes);

/// The bytes that such a text stands for, digits of either case; nothing for an odd number of digits and for
/// any other character. Linear.
ORRENBY_EXPORT std::optional<Data> bytesFromHexadecimal(std::string_view text);

} // namespace orrenby
