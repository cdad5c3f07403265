#pragma once

/// @file
/// The public test kit. Nothing of the library includes it.

#include "Orrenby/Testing/CountedUUIDs.hpp"
#include "Orrenby/Testing/LocaleOverride.hpp"
#include "Orrenby/Testing/LogCapture.hpp"
#include "Orrenby/Testing/MarbleLegend.hpp"
#include "Orrenby/Testing/MarbleScript.hpp"
#include "Orrenby/Testing/MarbleSource.hpp"
#include "Orrenby/Testing/Recorder.hpp"
#include "Orrenby/Testing/SeededRandomSource.hpp"
#include "Orrenby/Testing/TestAccess.hpp"
#include "Orrenby/Testing/VirtualWorld.hpp"
