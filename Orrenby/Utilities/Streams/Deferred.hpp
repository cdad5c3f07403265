#pragma once

/// @file
/// A stream that is made when somebody subscribes.

#include "Orrenby/Platform/Engines/Ground/DeferredPublication.hpp"
#include "Orrenby/Utilities/Streams/SourceOperations.hpp"
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
template <StreamsPublisher P>
class Deferred : public detail::SourceOperations<typename P::Output, typename P::Failure> {
    using Operations = detail::SourceOperations<typename P::Output, typename P::Failure>;

public:
    /// Keeps the callable; it is called once for each subscriber.
    template <typename Create>
        requires std::is_invocable_r_v<P, const Create&>
    explicit Deferred(Create createPublisher)
        : Operations(makeDeferred(std::move(createPublisher)))
    {}

private:
    template <typename Create> static typename Operations::Source makeDeferred(Create create)
    {
        auto factory = [create = std::move(create)]() noexcept {
            const P publisher = create();
            return detail::publicationOf(publisher.eraseToAnyPublisher());
        };
        using Deferral = detail::DeferredPublication<typename Operations::Payload, decltype(factory)>;
        return detail::Retained<const Deferral>::adopting(
            new Deferral(detail::chosenEngine(), std::move(factory)));
    }
};

} // namespace orrenby::Streams
