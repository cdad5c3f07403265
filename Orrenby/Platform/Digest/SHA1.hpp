#pragma once

/// @file
/// SHA-1, the digest that names things.

#include "Orrenby/Platform/Export.hpp"
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// 160 bits, the most significant byte first.
using SHA1Digest = std::array<std::byte, 20>;

/// The SHA-1 digest (FIPS 180-4) of the bytes.
///
/// Good for naming and comparing what nobody forges. It keeps no secret and proves no origin: different bytes
/// with the same digest can be made.
///
/// @snippet Tests/Platform/Digest/SHA1Tests.cpp Naming bytes by their digest
///
/// Linear; the first call of a thread allocates, further ones do not. It needs a system whose cryptographic
/// library offers SHA-1, and ends the process on any other. Safe to use from several threads.
ORRENBY_EXPORT SHA1Digest sha1(std::span<const std::byte> bytes);

/// Of the text's bytes as they are.
ORRENBY_EXPORT SHA1Digest sha1(std::string_view text);

} // namespace orrenby
