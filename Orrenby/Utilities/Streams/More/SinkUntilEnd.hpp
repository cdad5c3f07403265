#pragma once

/// @file
/// A subscription that is told of the end.

#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"

namespace orrenby::inline ORRENBY_ABI::Streams {

/// As `AnyPublisher::sink`, and calls `receiveEnd` when the stream has ended: after its last element, once,
/// not after a cancellation. A stream that has ended before calls it before this returns.
///
/// @snippet Tests/Contracts/Streams/More/SinkUntilEndTests.cpp Hearing of the end
///
/// For operators; what an application has to know of an end is better said by an element.
template <typename Output, typename Failure, typename ReceiveValue, typename ReceiveEnd>
    requires(std::invocable<ReceiveValue&, const Payload<Output, Failure>&>&& std::invocable<ReceiveEnd&>)
[[nodiscard]] AnyCancellable sinkUntilEnd(const AnyPublisher<Output, Failure>& publisher,
    ReceiveValue receiveValue, ReceiveEnd receiveEnd, TraceSite site = TraceSite::current())
{
    detail::reportSubscription<AnyPublisher<Output, Failure>>(site);
    struct Callback {
        ReceiveValue receiveValue;
        ReceiveEnd receiveEnd;
        void operator()(const Payload<Output, Failure>& payload) { receiveValue(payload); }
        void finish() { receiveEnd(); }
    };
    const auto& publication = *detail::publicationOf(publisher);
    detail::useEngine(publication.engine());
    return AnyCancellable(detail::SubscriptionHandle::adopting(
        publication.subscribe(Callback{std::move(receiveValue), std::move(receiveEnd)})));
}

} // namespace orrenby::Streams
