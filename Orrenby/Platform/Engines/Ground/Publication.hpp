#pragma once

/// @file
/// The description of a stream: immutable, shared, and idle until somebody subscribes.

#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"

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
        auto builder = Subscription::Builder(
            Subscription::bytesFor<Sink>() + m_bytes, Retained<const Publication>::sharing(this), m_engine);
        connect(builder, builder.add<Sink>(std::move(callback)));
        return &builder.subscription();
    }

protected:
    Publication(Engine engine, std::size_t bytes) noexcept
        : m_bytes(bytes)
        , m_engine(engine)
    {}

private:
    const std::size_t m_bytes;
    const Engine m_engine;
};

} // namespace orrenby::detail
