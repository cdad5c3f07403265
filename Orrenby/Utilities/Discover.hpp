#pragma once

/// @file
/// Flows, contexts, workers, plugins and builders: the skeleton in which features are written.

#include "Orrenby/Utilities/Discover/AbstractContext.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"
#include "Orrenby/Utilities/Discover/AbstractPresentableContext.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Orrenby/Utilities/Discover/Builder.hpp"
#include "Orrenby/Utilities/Discover/Context.hpp"
#include "Orrenby/Utilities/Discover/Flow.hpp"
#include "Orrenby/Utilities/Discover/FlowController.hpp"
#include "Orrenby/Utilities/Discover/FlowRetaining.hpp"
#include "Orrenby/Utilities/Discover/LeakDetector.hpp"
#include "Orrenby/Utilities/Discover/Plugin.hpp"
#include "Orrenby/Utilities/Discover/PluginList.hpp"
#include "Orrenby/Utilities/Discover/PluginListWithDefault.hpp"
#include "Orrenby/Utilities/Discover/ResponderChain.hpp"
#include "Orrenby/Utilities/Discover/TestingInfo.hpp"
#include "Orrenby/Utilities/Discover/Worker.hpp"
#include "Orrenby/Utilities/Discover/WorkerController.hpp"
