#pragma once

/// @file
/// How many subscriptions there are.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI::Streams {

/// How many subscriptions exist in the process at this moment, of whatever streams.
///
/// One exists from the subscribing call until its last handle is gone and no delivery to it is running. A
/// subscription that was cancelled, but whose handle is kept, is among them. An application that has let go
/// of everything finds 0 here; anything else is a handle that was forgotten somewhere.
///
/// @snippet Tests/Utilities/Streams/LiveSubscriptionCountTests.cpp Finding forgotten subscriptions
///
/// Two loads. Safe to use from several threads, of which each may change the number at any time.
ORRENBY_EXPORT std::int64_t liveSubscriptionCount() noexcept;

} // namespace orrenby::Streams
