#pragma once

/// @file
/// The names of key paths, for headers that only pass them on.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI {

template <typename Root, typename Value> class KeyPath;
template <typename Root, typename Value> class WritableKeyPath;

} // namespace orrenby
