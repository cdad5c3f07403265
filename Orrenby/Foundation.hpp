#pragma once

/// @file
/// Everything of the third floor: operations added to platform types.

#include "Orrenby/Foundation/NSError.hpp"
