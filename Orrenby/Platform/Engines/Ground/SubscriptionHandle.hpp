#pragma once

/// @file
/// A share of a running subscription.

#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// One of the handles of a subscription; the release of the last one cancels it. A moved-from one is empty.
///
/// Different handles may be used from different threads; one handle is as safe as an integer.
class SubscriptionHandle {
public:
    SubscriptionHandle() = default;

    /// Takes over the handle that a new subscription was born with.
    static SubscriptionHandle adopting(Subscription* subscription) noexcept
    {
        auto handle = SubscriptionHandle();
        handle.m_subscription = subscription;
        return handle;
    }

    SubscriptionHandle(const SubscriptionHandle& other) noexcept
        : m_subscription(other.m_subscription)
    {
        if (m_subscription)
            m_subscription->retainHandle();
    }

    SubscriptionHandle(SubscriptionHandle&& other) noexcept
        : m_subscription(std::exchange(other.m_subscription, nullptr))
    {}

    SubscriptionHandle& operator=(SubscriptionHandle other) noexcept
    {
        std::swap(m_subscription, other.m_subscription);
        return *this;
    }

    ~SubscriptionHandle()
    {
        if (m_subscription)
            m_subscription->releaseHandle();
    }

    Subscription* get() const noexcept { return m_subscription; }
    Subscription* operator->() const noexcept { return m_subscription; }
    explicit operator bool() const noexcept { return m_subscription; }
    friend bool operator==(const SubscriptionHandle&, const SubscriptionHandle&) = default;

private:
    Subscription* m_subscription = nullptr;
};

} // namespace orrenby::detail
