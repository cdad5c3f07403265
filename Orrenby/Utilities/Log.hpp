#pragma once

/// @file
/// The log with its settings, its values and its handlers.

#include "Orrenby/Utilities/Log/AnyLoggable.hpp"
#include "Orrenby/Utilities/Log/Append.hpp"
#include "Orrenby/Utilities/Log/Bridge.hpp"
#include "Orrenby/Utilities/Log/CaptureHandler.hpp"
#include "Orrenby/Utilities/Log/ConsoleHandler.hpp"
#include "Orrenby/Utilities/Log/DeferredEvent.hpp"
#include "Orrenby/Utilities/Log/Entries.hpp"
#include "Orrenby/Utilities/Log/ErrorInfo.hpp"
#include "Orrenby/Utilities/Log/ErrorMessage.hpp"
#include "Orrenby/Utilities/Log/Event.hpp"
#include "Orrenby/Utilities/Log/JSONLinesHandler.hpp"
#include "Orrenby/Utilities/Log/Level.hpp"
#include "Orrenby/Utilities/Log/Loggable.hpp"
#include "Orrenby/Utilities/Log/Queue.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"
#include "Orrenby/Utilities/Log/TeeHandler.hpp"
