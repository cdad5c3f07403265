#pragma once

/// @file
/// Everything of the second floor: the library's own types.

#include "Orrenby/Platform/Export.hpp"
