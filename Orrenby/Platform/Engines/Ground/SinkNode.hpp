#pragma once

/// @file
/// The end of a chain.

#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// The last hop: the subscriber's own callback. It is told of the end only if it has a `finish()` of its own.
template <class T, class Callback> class SinkNode final : public Receiver<T> {
public:
    explicit SinkNode(Callback callback)
        : m_callback(static_cast<Callback&&>(callback))
    {}

    void receive(Pass<T> value) noexcept override { m_callback(value); }
    void finish() noexcept override
    {
        if constexpr (requires { m_callback.finish(); })
            m_callback.finish();
    }

private:
    Callback m_callback;
};

/// Stands before the end of a chain with hops, and looks once more whether the subscription still runs: one
/// of them may have cancelled it with a value or the end on its way. A source looks itself.
template <class T> class GuardNode final : public Receiver<T> {
public:
    GuardNode(const Subscription& subscription, Receiver<T>& downstream) noexcept
        : m_subscription(subscription)
        , m_downstream(downstream)
    {}

    void receive(Pass<T> value) noexcept override
    {
        if (!m_subscription.isCancelled()) [[likely]]
            m_downstream.receive(value);
    }

    void finish() noexcept override
    {
        if (!m_subscription.isCancelled())
            m_downstream.finish();
    }

private:
    const Subscription& m_subscription;
    Receiver<T>& m_downstream;
};

} // namespace orrenby::detail
