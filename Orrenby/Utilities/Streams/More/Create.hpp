#pragma once

/// @file
/// Streams that a piece of code feeds.

#include "Orrenby/Platform/Engines/Ground/CreatePublication.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// A handle of something that runs.
template <typename End>
concept Cancellable = requires(const End& end)
{
    end.cancel();
    end.cancelAndWait();
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// A stream that calls `start` for each subscriber, when it subscribes, with a subject that only this
/// subscriber hears.
///
/// What is sent to the subject reaches the subscriber, also from inside `start`; a completion ends its
/// stream. What `start` returns is called once: when the stream has ended or the subscription was cancelled.
/// It may be a callable, `nullptr`, or something with `cancel()` and `cancelAndWait()`, such as the handle of
/// another subscription: that is cancelled, and waited for by a `cancelAndWait()` of this one.
///
/// @snippet Tests/Contracts/Streams/More/CreateTests.cpp A stream that code feeds
///
/// The subject may be kept and used from any thread; once the subscription is over, sending has no effect.
/// `start` is shared by all subscriptions and must not throw. Safe to use from several threads. A
/// subscription is two blocks instead of one.
template <typename Output, typename Failure, typename Start> AnyPublisher<Output, Failure> create(Start start)
{
    using Subject = PassthroughSubject<Output, Failure>;
    using Core = detail::SubjectBase<Payload<Output, Failure>>;
    using End = std::invoke_result_t<const Start&, Subject>;
    auto begin = [start = std::move(start)](detail::Retained<Core> core) {
        if constexpr (std::same_as<End, detail::Ending>)
            return start(Subject(std::move(core)));
        else if constexpr (detail::Cancellable<End>) {
            const auto end = start(Subject(std::move(core)));
            return detail::Ending{[end] { end.cancel(); }, [end] { end.cancelAndWait(); }};
        } else
            return detail::Ending{start(Subject(std::move(core))), nullptr};
    };
    using Publication = detail::CreatePublication<Payload<Output, Failure>, decltype(begin)>;
    return AnyPublisher<Output, Failure>(detail::Retained<const Publication>::adopting(
        new Publication(detail::chosenEngine(), std::move(begin))));
}

} // namespace orrenby::Streams
