#pragma once

/// @file
/// A stream that is made when somebody subscribes.

#include "Orrenby/Platform/Engines/Ground/DeferredPublication.hpp"
#include "Orrenby/Utilities/Streams/StreamsPublisher.hpp"

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Calls a callable once for each subscriber, when it subscribes, and gives it the stream that the callable
/// returns. The callable does not run before.
///
/// @snippet Tests/Contracts/Streams/DeferredTests.cpp A stream for each subscriber
///
/// A callable that throws ends the process. It runs on the subscribing thread, for several subscribers
/// perhaps at the same time. Copies share the callable. Safe to use from several threads. A subscription is
/// two blocks instead of one.
template <StreamsPublisher P> class Deferred {
public:
    using Output = typename P::Output;
    using Failure = typename P::Failure;

    template <typename Create>
        requires std::is_invocable_r_v<P, const Create&>
    explicit Deferred(Create createPublisher)
        : m_deferred(makeDeferred(std::move(createPublisher)))
    {}

    // Copies only: a moved-from publisher would be one that cannot be used.
    Deferred(const Deferred&) = default;
    Deferred& operator=(const Deferred&) = default;

    /// This stream, whatever it comes from.
    AnyPublisher<Output, Failure> eraseToAnyPublisher() const
    {
        detail::useEngine(m_deferred->engine());
        return AnyPublisher<Output, Failure>(m_deferred);
    }

    /// Another name of `eraseToAnyPublisher()`.
    AnyPublisher<Output, Failure> asPublisher() const { return eraseToAnyPublisher(); }

    /// The identity of the stream that copies share.
    ObjectIdentifier sharedIdentity() const noexcept { return ObjectIdentifier(m_deferred.get()); }

private:
    using Publication = detail::Publication<Payload<Output, Failure>>;

    template <typename Create> static detail::Retained<const Publication> makeDeferred(Create create)
    {
        auto factory = [create = std::move(create)]() noexcept {
            const P publisher = create();
            return detail::publicationOf(publisher.eraseToAnyPublisher());
        };
        using Deferral = detail::DeferredPublication<Payload<Output, Failure>, decltype(factory)>;
        return detail::Retained<const Deferral>::adopting(
            new Deferral(detail::chosenEngine(), std::move(factory)));
    }

    detail::Retained<const Publication> m_deferred;
};

} // namespace orrenby::Streams
