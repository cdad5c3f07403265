#pragma once

/// @file
/// The hash of an object's keys. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Reads all of the key, and mixes in a number drawn once per process, so that nobody can send keys that
/// collide.
std::uint64_t jsonKeyHash(std::string_view key) noexcept;

} // namespace orrenby::inline ORRENBY_ABI::detail
