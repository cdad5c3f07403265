#pragma once

/// @file
/// Not waiting for ever.

#include "Orrenby/Utilities/Streams/More/PublisherOperation.hpp"
#include "Orrenby/Utilities/Streams/More/TimedStage.hpp"
#include <concepts>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

template <typename Output, typename Failure> class TimeoutMachine : public TimedMachine {
public:
    TimeoutMachine(double seconds, Failure failure)
        : m_seconds(seconds)
        , m_failure(std::move(failure))
    {}

    template <typename Stage> void begin(Stage& stage) { stage.wakeAfter(m_seconds); }

    template <typename Stage> void receive(Stage& stage, const Streams::Payload<Output, Failure>& payload)
    {
        stage.wakeAfter(m_seconds);
        stage.pass(payload);
    }

    template <typename Stage> void wake(Stage& stage)
    {
        stage.unsubscribe();
        stage.pass(Streams::Payload<Output, Failure>::error(m_failure));
        stage.end();
    }

private:
    const double m_seconds;
    const Failure m_failure;
};

struct Timeout {
    template <typename Output, typename Failure, std::convertible_to<Failure> Content>
        requires(!std::same_as<Failure, Never>)
    Streams::AnyPublisher<Output, Failure>
    operator()(const Streams::AnyPublisher<Output, Failure>& publisher, double seconds, Content failure,
        const DispatchQueue& queue = DispatchQueue::global()) const
    {
        return timed<TimeoutMachine<Output, Failure>>(publisher, queue, seconds, Failure(std::move(failure)));
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Passes everything on; when no element has come for so many seconds, since the last one or the
/// subscription, sends the failure as an element, ends, and lets the stream go: `timeout(5, LoadError())`.
///
/// @snippet Tests/Contracts/Streams/More/TimeoutTests.cpp Not waiting for ever
///
/// That failure is delivered on the queue, `DispatchQueue::global()` unless another is given as third
/// argument; elements pass on the thread that sends them. Deliveries do not overlap. Seconds are those of the
/// world's clock. Many elements cost one piece of delayed work, not one each.
inline constexpr auto timeout = detail::PublisherOperation<detail::Timeout>();

} // namespace orrenby::Streams
