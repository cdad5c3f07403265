#pragma once

/// @file
/// A stream of the one result of something that is done with callbacks.

#include "Orrenby/Platform/Engines/Combine/Future.hpp"
#include "Orrenby/Platform/Engines/Rx/Future.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Utilities/Streams/SourceOperations.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

using FutureCleanUp = UniqueFunction<void()>;

/// Begins with a promise, and returns a clean-up.
template <class Attempt, class Promise>
concept FutureAttempt = std::is_invocable_r_v<FutureCleanUp, const Attempt&, Promise>;

} // namespace detail

namespace Streams {

/// Bridges an operation with a callback into a stream of one element.
///
/// The attempt is a callable that begins the operation. It gets a promise, to be called with the result, and
/// returns a clean-up: what has to be done when the result is there or nobody wants it any more. A clean-up
/// that does nothing may be a `nullptr`. Of several results the first holds.
///
/// @snippet Tests/Contracts/Streams/FutureTests.cpp Bridging a callback
///
/// When the attempt is made, the engines differ:
/// - Combine makes one attempt at once, when the future is made; every subscriber gets its one result, also
///   those who come later.
/// - Rx makes an attempt for each subscriber, when it subscribes.
///
/// All attempts of a future share one list of clean-ups. The end or the cancellation of any subscription runs
/// all that are in it, in the order of their coming, and empties it: so each runs once at most. With Combine,
/// a future that nobody subscribes to runs none.
///
/// Attempt, promise and clean-ups must not throw; one that does ends the process. The promise may be called
/// from any thread, also after the future is gone. Copies share the future. Safe to use from several threads.
///
/// Cost: a future that is made, kept and heard once takes five allocations; keeping its promise costs what
/// sending to its subscribers does (`Benchmarks/StreamOperators.cpp`).
template <typename Output, typename Failure> class Future : public detail::SourceOperations<Output, Failure> {
    using Operations = detail::SourceOperations<Output, Failure>;
    using Subject = detail::SubjectBase<Streams::Payload<Output, Failure>>;

public:
    using Payload = Streams::Payload<Output, Failure>;

    /// Takes the result of an attempt. Copies are the same promise.
    class Promise {
    public:
        explicit Promise(detail::Retained<Subject> subject) noexcept
            : m_subject(std::move(subject))
        {}

        // Copies only: a moved-from promise would be one that cannot be kept.
        Promise(const Promise&) = default;
        Promise& operator=(const Promise&) = default;

        /// Delivers the result on this thread. Once there is one, it does nothing.
        void operator()(const Result<Output, Failure>& result) const
        {
            m_subject->finish(
                result.isSuccess() ? Payload::value(*result.value()) : Payload::error(*result.error()));
        }

    private:
        detail::Retained<Subject> m_subject;
    };

    /// Keeps the attempt. When it is made depends on the engine, see above.
    template <detail::FutureAttempt<Promise> Attempt>
    explicit Future(Attempt attempt)
        : Operations(makeFuture(
            [attempt = std::move(attempt)](detail::Retained<Subject> subject) -> UniqueFunction<void()> {
                return attempt(Promise(std::move(subject)));
            }))
    {}

private:
    template <typename Attempt> static typename Operations::Source makeFuture(Attempt attempt)
    {
        if (detail::chosenEngine() == detail::Engine::Rx)
            return StreamsRx::makeFuture<Payload>(std::move(attempt));
        using Eager = StreamsCombine::Future<Payload>;
        return detail::Retained<const Eager>::adopting(new Eager(std::move(attempt)));
    }
};

} // namespace Streams

} // namespace orrenby
