#pragma once

/// @file
/// Slowing a stream down.

#include "Orrenby/Utilities/Streams/More/PublisherOperation.hpp"
#include "Orrenby/Utilities/Streams/More/TimedStage.hpp"
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Options of `throttle`.
struct ThrottleOptions {
    /// Whether the latest value of an interval passes at its end. Otherwise all that come in it are dropped.
    bool latest = true;
    /// Where those values are delivered.
    DispatchQueue queue = DispatchQueue::global();
};

} // namespace orrenby::Streams

namespace orrenby::inline ORRENBY_ABI::detail {

template <typename Output, typename Failure> class ThrottleMachine : public TimedMachine {
public:
    ThrottleMachine(double seconds, bool passesLatest) noexcept
        : m_seconds(seconds)
        , m_passesLatest(passesLatest)
    {}

    template <typename Stage> void receive(Stage& stage, const Streams::Payload<Output, Failure>& payload)
    {
        if (payload.isError()) {
            passHeld(stage);
            stage.pass(payload);
        } else if (!m_isInInterval)
            beginWith(stage, payload);
        else if (m_passesLatest)
            m_held = payload;
    }

    template <typename Stage> void wake(Stage& stage)
    {
        m_isInInterval = false;
        if (const auto held = std::exchange(m_held, std::nullopt))
            beginWith(stage, *held);
    }

    template <typename Stage> void finish(Stage& stage)
    {
        passHeld(stage);
        stage.end();
    }

private:
    template <typename Stage> void beginWith(Stage& stage, const Streams::Payload<Output, Failure>& payload)
    {
        m_isInInterval = true;
        stage.wakeAfter(m_seconds);
        stage.pass(payload);
    }

    template <typename Stage> void passHeld(Stage& stage)
    {
        if (const auto held = std::exchange(m_held, std::nullopt))
            stage.pass(*held);
    }

    const double m_seconds;
    const bool m_passesLatest;
    bool m_isInInterval = false;
    std::optional<Streams::Payload<Output, Failure>> m_held;
};

struct Throttle {
    template <StreamsPublisher P>
    auto operator()(const P& publisher, double seconds, const Streams::ThrottleOptions& options = {}) const
    {
        using Machine = ThrottleMachine<typename P::Output, typename P::Failure>;
        return timed<Machine>(publisher.eraseToAnyPublisher(), options.queue, seconds, options.latest);
    }

    [[nodiscard]] auto operator()(double seconds, const Streams::ThrottleOptions& options = {}) const
    {
        return UnappliedOperation(
            [seconds, options](const auto& publisher) { return Throttle()(publisher, seconds, options); });
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// At most one value in so many seconds: `throttle(1)`, `throttle(1, {.latest = false})`.
///
/// A value that comes when none came for so long passes at once and begins an interval. Of those that come in
/// the interval the latest passes at its end, and begins the next. A failure does not wait, nor does the end:
/// each lets the value that waits go first, and passes.
///
/// @snippet Tests/Contracts/Streams/More/ThrottleTests.cpp Slowing a stream down
///
/// Delayed values are delivered on the queue of the options, all other elements on the thread that sends
/// them. Deliveries do not overlap. Seconds are those of the world's clock.
inline constexpr auto throttle = detail::Throttle();

} // namespace orrenby::Streams
