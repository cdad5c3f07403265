#pragma once

/// @file
/// Everything of the third floor: operations added to platform types.

#include "Orrenby/Platform/Export.hpp"
