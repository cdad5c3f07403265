#pragma once

/// @file
/// The description of a stream: immutable, shared, and idle until somebody subscribes.

#include "Orrenby/Platform/Engines/Ground/SinkNode.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// What can be subscribed to: a source, or an operator over another publication.
///
/// It knows the bytes that all nodes of its chain need, so that one allocation holds a whole subscription.
/// Safe to use from several threads.
template <class T> class Publication : public Counted {
public:
    std::size_t bytes() const noexcept { return m_bytes; }
    Engine engine() const noexcept { return m_engine; }

    /// Builds the nodes of this publication in front of `downstream` and starts the source. Values may arrive
    /// before it returns.
    virtual void connect(Subscription::Builder& builder, Receiver<T>& downstream) const = 0;

    /// Subscribes a callback. The result carries one handle, which the caller takes over.
    template <class Callback> Subscription* subscribe(Callback callback) const
    {
        using Sink = SinkNode<T, Callback>;
        auto builder = builderFor(Subscription::bytesFor<Sink>());
        start(builder, builder.template add<Sink>(std::move(callback)));
        return &builder.subscription();
    }

protected:
    /// Whether something between the source and the end of a chain may run foreign code.
    enum Hops : bool { WithoutHops, WithHops };

    /// A source.
    Publication(Engine engine, std::size_t bytes, Hops hops = WithoutHops) noexcept
        : m_bytes(bytes)
        , m_engine(engine)
        , m_hasHops(hops == WithHops)
    {}

    /// An operator: a hop that takes `bytes`, over another publication.
    template <class Upstream>
    Publication(const Publication<Upstream>& upstream, std::size_t bytes) noexcept
        : m_bytes(bytes + upstream.bytes())
        , m_engine(upstream.engine())
        , m_hasHops(true)
    {}

private:
    Subscription::Builder builderFor(std::size_t sinkBytes) const
    {
        const auto guardBytes = m_hasHops ? Subscription::bytesFor<GuardNode<T>>() : 0;
        return {sinkBytes + guardBytes + m_bytes, Retained<const Publication>::sharing(this), m_engine};
    }

    void start(Subscription::Builder& builder, Receiver<T>& sink) const
    {
        if (m_hasHops)
            connect(builder, builder.template add<GuardNode<T>>(builder.subscription(), sink));
        else
            connect(builder, sink);
    }

    const std::size_t m_bytes;
    const Engine m_engine;
    const bool m_hasHops;
};

} // namespace orrenby::detail
