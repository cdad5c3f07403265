#pragma once

/// @file
/// Operators that do something later.

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Utilities/Streams/More/Create.hpp"
#include "Orrenby/Utilities/Streams/More/Forward.hpp"
#include "Orrenby/Utilities/Streams/More/Handles.hpp"
#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include "Orrenby/Utilities/Streams/More/WakeUps.hpp"
#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

namespace orrenby::inline ORRENBY_ABI::detail {

/// One subscription of a timed operator: lets a machine receive the elements, the end and the moments it
/// asked for, one at a time, whatever threads they come from.
///
/// They go through a subject of their own, so what comes while another one is being received waits for it,
/// also when it comes from inside. The machine therefore needs no lock.
///
/// Only the subscription keeps the stage: its source and the moments that wait in the queue know it weakly.
template <typename OutputType, typename FailureType, typename Machine>
class TimedStage : public std::enable_shared_from_this<TimedStage<OutputType, FailureType, Machine>> {
public:
    using Output = OutputType;
    using Failure = FailureType;
    using Payload = Streams::Payload<Output, Failure>;
    using Publisher = Streams::AnyPublisher<Output, Failure>;
    using Subject = Streams::PassthroughSubject<Output, Failure>;

    template <typename... A>
    TimedStage(Publisher upstream, Subject downstream, DispatchQueue queue, const A&... arguments)
        : m_upstream(std::move(upstream))
        , m_downstream(std::move(downstream))
        , m_queue(std::move(queue))
        , m_machine(arguments...)
    {}

    /// Lets the machine `begin`, and subscribes for the first time.
    void start()
    {
        m_own = m_events.eraseToAnyPublisher().bind([this](const Event& event) { receive(event); });
        m_events.send(Begin());
    }

    /// What happens at the end of the subscription, and how to wait for the machine and its source.
    Ending ending()
    {
        return {[stage = this->shared_from_this()] {
                    stage->m_own.cancel();
                    stage->m_handles.cancel();
                },
            [own = m_own, handles = m_handles] {
                own.cancelAndWait();
                handles.cancelAndWait();
            }};
    }

    // For the machine, inside of its calls.

    /// Passes an element on.
    void pass(const Payload& payload) const { forward(m_downstream, payload); }

    /// Ends the stream.
    void end() const { finish(m_downstream); }

    /// Calls the machine's `wake` in so many seconds, instead of any moment asked for before.
    void wakeAfter(double seconds) { post(m_wakeUps.ask(seconds)); }

    /// No moment is asked for any more.
    void putOff() noexcept { m_wakeUps.putOff(); }

    /// Leaves the stream for good, or until `subscribe`.
    void unsubscribe()
    {
        ++m_subscription;
        m_handles.replace({});
    }

    /// Subscribes to the stream. What it sends meanwhile is received afterwards.
    void subscribe()
    {
        const auto number = ++m_subscription;
        const auto sender = [stage = this->weak_from_this()](Event event) {
            if (const auto alive = stage.lock())
                alive->send(std::move(event));
        };
        m_handles.replace(Streams::sinkUntilEnd(
            m_upstream,
            [sender, number](const Payload& payload) {
                sender(Element{payload, number});
            },
            [sender, number] { sender(End{number}); }));
    }

private:
    struct Begin {};
    struct Wake {
        std::uint64_t number;
    };
    struct Element {
        Payload payload;
        std::uint64_t subscription;
    };
    struct End {
        std::uint64_t subscription;
    };
    using Event = std::variant<Begin, Wake, Element, End>;

    void post(const std::optional<WakeUps::Wait>& wait)
    {
        if (wait)
            m_queue.asyncAfter(wait->seconds, [stage = this->weak_from_this(), number = wait->number] {
                if (const auto alive = stage.lock())
                    alive->send(Wake{number});
            });
    }

    void send(Event event) { m_events.send(std::move(event)); }

    void receive(const Event& event)
    {
        if (const auto* const element = std::get_if<Element>(&event)) {
            if (element->subscription == m_subscription)
                m_machine.receive(*this, element->payload);
        } else if (const auto* const end = std::get_if<End>(&event)) {
            if (end->subscription == m_subscription)
                m_machine.finish(*this);
        } else if (const auto* const wake = std::get_if<Wake>(&event)) {
            post(m_wakeUps.come(wake->number));
            if (m_wakeUps.takeDue())
                m_machine.wake(*this);
        } else {
            m_machine.begin(*this);
            subscribe();
        }
    }

    const Publisher m_upstream;
    const Subject m_downstream;
    const DispatchQueue m_queue;
    const Handles m_handles;
    const Streams::PassthroughSubject<Event, Never> m_events;
    Streams::AnyCancellable m_own;

    // Of whoever delivers.
    WakeUps m_wakeUps;
    std::uint64_t m_subscription = 0;
    Machine m_machine;
};

/// A stream in which a machine stands, one for each subscriber, made of the arguments.
template <typename Machine, typename Output, typename Failure, typename... A>
Streams::AnyPublisher<Output, Failure> timed(
    const Streams::AnyPublisher<Output, Failure>& publisher, const DispatchQueue& queue, A... arguments)
{
    using Stage = TimedStage<Output, Failure, Machine>;
    return Streams::create<Output, Failure>(
        [publisher, queue, ... arguments = std::move(arguments)](const typename Stage::Subject& subject) {
            const auto stage = std::make_shared<Stage>(publisher, subject, queue, arguments...);
            stage->start();
            return stage->ending();
        });
}

/// What a machine does that has nothing to begin with and lets the end pass. Machines derive from it and
/// replace what they do otherwise.
class TimedMachine {
public:
    template <typename Stage> void begin(Stage&) noexcept {}
    template <typename Stage> void finish(Stage& stage) { stage.end(); }
};

} // namespace orrenby::detail
