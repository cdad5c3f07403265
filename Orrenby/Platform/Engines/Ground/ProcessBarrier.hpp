#pragma once

/// @file
/// A memory barrier that one thread pays for all. Not in the umbrella header: part of the engines' own
/// workings.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Makes every running thread of the process pass a full memory barrier, so that the other side of a
/// store-then-load pattern needs none. Some microseconds.
///
/// @returns false where the kernel does not offer it; then nothing was ordered and the caller has to find
/// another way.
[[nodiscard]] bool processBarrier() noexcept;

} // namespace orrenby::detail
