#pragma once

/// @file
/// Trying again what failed.

#include "Orrenby/Utilities/Retry.hpp"
#include "Orrenby/Utilities/Streams/More/PublisherOperation.hpp"
#include "Orrenby/Utilities/Streams/More/TimedStage.hpp"
#include <concepts>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::Streams {

/// The back-off schedule of a `retry`; see `orrenby::Retry` for what the numbers mean.
struct RetryOptions {
    /// Base delay in seconds.
    double interval = 1;
    /// Attempts after the first one.
    std::int64_t limit = 3;
    Retry::Method method = Retry::Exponential{}; ///< How the waits between the attempts grow.
    /// Where further attempts are made.
    DispatchQueue queue = DispatchQueue::global();
};

} // namespace orrenby::Streams

namespace orrenby::inline ORRENBY_ABI::detail {

template <typename Output, typename Failure, typename MakeSchedule> class RetryMachine : public TimedMachine {
public:
    explicit RetryMachine(const MakeSchedule& makeSchedule)
        : m_schedule(makeSchedule())
    {}

    template <typename Stage> void receive(Stage& stage, const Streams::Payload<Output, Failure>& payload)
    {
        if (payload.isValue())
            return stage.pass(payload);
        stage.unsubscribe();
        if (const auto interval = m_schedule.nextInterval())
            return stage.wakeAfter(*interval);
        stage.pass(payload);
        stage.end();
    }

    template <typename Stage> void wake(Stage& stage) { stage.subscribe(); }

private:
    Retry m_schedule;
};

struct RetryOnFailure {
    template <StreamsPublisher P, typename MakeSchedule>
        requires(!std::same_as<typename P::Failure,
                     Never> && std::same_as<std::invoke_result_t<const MakeSchedule&>, Retry>)
    auto operator()(const P& publisher, MakeSchedule makeSchedule,
        const DispatchQueue& queue = DispatchQueue::global()) const
    {
        using Machine = RetryMachine<typename P::Output, typename P::Failure, MakeSchedule>;
        return timed<Machine>(publisher.eraseToAnyPublisher(), queue, std::move(makeSchedule));
    }

    template <StreamsPublisher P>
        requires(!std::same_as<typename P::Failure, Never>)
    auto operator()(const P& publisher, const Streams::RetryOptions& options = {}) const
    {
        return (*this)(
            publisher,
            [interval = options.interval, limit = options.limit, method = options.method] {
                return Retry(interval, limit, method);
            },
            options.queue);
    }

    template <typename MakeSchedule>
        requires std::same_as<std::invoke_result_t<const MakeSchedule&>, Retry>
    [[nodiscard]] auto operator()(
        MakeSchedule makeSchedule, const DispatchQueue& queue = DispatchQueue::global()) const
    {
        return UnappliedOperation([makeSchedule = std::move(makeSchedule), queue](const auto& publisher) {
            return RetryOnFailure()(publisher, makeSchedule, queue);
        });
    }

    [[nodiscard]] auto operator()(const Streams::RetryOptions& options = {}) const
    {
        return UnappliedOperation(
            [options](const auto& publisher) { return RetryOnFailure()(publisher, options); });
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Subscribes again after a failure, as often and as late as a back-off schedule says:
/// `retry({.interval = 0.5, .limit = 4})`, or `retry(f)` with a callable that makes an `orrenby::Retry`.
///
/// A failure cancels the subscription to the stream and waits. When the schedule has no further delay, the
/// failure is passed on and the stream ends. Values pass, of all attempts; those of a failed one are not
/// taken back. A stream that ends without a failure ends.
///
/// @snippet Tests/Contracts/Streams/More/RetryTests.cpp Trying again
///
/// Each subscriber has a schedule of its own, which counts all failures, whatever succeeds between them.
/// Further attempts are made on the queue; cancelling while one waits lets everything go at once. Seconds are
/// those of the world's clock.
inline constexpr auto retry = detail::RetryOnFailure();

} // namespace orrenby::Streams
