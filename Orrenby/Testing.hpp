#pragma once

/// @file
/// The public test kit. Nothing of the library includes it.

#include "Orrenby/Testing/TestAccess.hpp"
