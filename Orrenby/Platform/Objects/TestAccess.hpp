#pragma once

/// @file
/// The one friend that private state has.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI::testing {

/// Reads and resets private state that is worth testing. Defined in the test kit, befriended by name here.
struct TestAccess;

} // namespace orrenby::testing
