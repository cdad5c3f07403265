#pragma once

/// @file
/// Keeps something alive as long as a subscription.

#include "Orrenby/Platform/Engines/Ground/Receiver.hpp"
#include "Orrenby/Platform/Engines/Ground/Retained.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Holds a share of a counted object until the subscription's block goes away.
class KeeperNode final : public Node {
public:
    explicit KeeperNode(Retained<const Counted> kept) noexcept
        : m_kept(std::move(kept))
    {}

private:
    const Retained<const Counted> m_kept;
};

} // namespace orrenby::detail
