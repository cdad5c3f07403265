#pragma once

/// @file
/// The whole library, floor by floor. Prefer the header of the type you use: it compiles faster.

#include "Orrenby/Foundation.hpp"
#include "Orrenby/Platform.hpp"
#include "Orrenby/Standard.hpp"
#include "Orrenby/Utilities.hpp"
