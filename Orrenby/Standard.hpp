#pragma once

/// @file
/// Everything of the first floor: what the standard library's own value types lack.

#include "Orrenby/Standard/NestedError.hpp"
