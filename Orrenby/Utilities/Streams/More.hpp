#pragma once

/// @file
/// All operators that are no members of a publisher, and the tools to write further ones.

#include "Orrenby/Utilities/Streams/More/Await.hpp"
#include "Orrenby/Utilities/Streams/More/Create.hpp"
#include "Orrenby/Utilities/Streams/More/Debounce.hpp"
#include "Orrenby/Utilities/Streams/More/Distinct.hpp"
#include "Orrenby/Utilities/Streams/More/Filter.hpp"
#include "Orrenby/Utilities/Streams/More/Merge.hpp"
#include "Orrenby/Utilities/Streams/More/Prefix.hpp"
#include "Orrenby/Utilities/Streams/More/Retry.hpp"
#include "Orrenby/Utilities/Streams/More/Share.hpp"
#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include "Orrenby/Utilities/Streams/More/Staged.hpp"
#include "Orrenby/Utilities/Streams/More/Task.hpp"
#include "Orrenby/Utilities/Streams/More/Throttle.hpp"
#include "Orrenby/Utilities/Streams/More/Timeout.hpp"
#include "Orrenby/Utilities/Streams/More/ToVector.hpp"
