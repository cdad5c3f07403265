#pragma once

/// @file
/// The public test kit. Nothing of the library includes it.

#include "Orrenby/Testing/CountedUUIDs.hpp"
#include "Orrenby/Testing/SeededRandomSource.hpp"
#include "Orrenby/Testing/TestAccess.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
