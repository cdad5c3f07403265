#include "Orrenby/Utilities/Streams/LiveSubscriptionCount.hpp"

#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::int64_t Streams::liveSubscriptionCount() noexcept { return detail::Subscription::liveCount(); }

} // namespace orrenby
