#pragma once

/// @file
/// Waiting until a stream is quiet.

#include "Orrenby/Utilities/Streams/More/PublisherOperation.hpp"
#include "Orrenby/Utilities/Streams/More/TimedStage.hpp"
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

template <typename Output, typename Failure> class DebounceMachine : public TimedMachine {
public:
    explicit DebounceMachine(double seconds) noexcept
        : m_seconds(seconds)
    {}

    template <typename Stage> void receive(Stage& stage, const Streams::Payload<Output, Failure>& payload)
    {
        if (payload.isValue()) {
            m_held = payload;
            return stage.wakeAfter(m_seconds);
        }
        stage.putOff();
        wake(stage);
        stage.pass(payload);
    }

    template <typename Stage> void wake(Stage& stage)
    {
        if (const auto held = std::exchange(m_held, std::nullopt))
            stage.pass(*held);
    }

    template <typename Stage> void finish(Stage& stage)
    {
        wake(stage);
        stage.end();
    }

private:
    const double m_seconds;
    std::optional<Streams::Payload<Output, Failure>> m_held;
};

struct Debounce {
    template <typename Output, typename Failure>
    Streams::AnyPublisher<Output, Failure> operator()(const Streams::AnyPublisher<Output, Failure>& publisher,
        double seconds, const DispatchQueue& queue = DispatchQueue::global()) const
    {
        return timed<DebounceMachine<Output, Failure>>(publisher, queue, seconds);
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Passes a value on once no other has come for some seconds; one that is followed sooner is dropped:
/// `debounce(0.3)`, `debounce(0.3, DispatchQueue::main())`.
///
/// A failure or the end does not wait: it lets the value that waits go first, and passes.
///
/// @snippet Tests/Contracts/Streams/More/DebounceTests.cpp Waiting until it is quiet
///
/// A value is delivered on the queue, `DispatchQueue::global()` unless another is given; failures, and what
/// goes before them, on the thread that sends them. Deliveries do not overlap. Seconds are those of the
/// world's clock. A burst of values costs one piece of delayed work, not one for each.
inline constexpr auto debounce = detail::PublisherOperation<detail::Debounce>();

} // namespace orrenby::Streams
