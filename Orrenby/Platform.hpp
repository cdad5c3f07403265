#pragma once

/// @file
/// Everything of the ground floor: counterparts of the platform's services.

#include "Orrenby/Platform/Export.hpp"
