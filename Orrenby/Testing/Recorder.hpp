#pragma once

/// @file
/// Writes down what a stream delivers.

#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include "Orrenby/Testing/MarbleLegend.hpp"
#include "Orrenby/Testing/MarbleScript.hpp"
#include "Orrenby/Testing/Printing.hpp"
#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"
#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include "Orrenby/Utilities/Streams/StreamsPublisher.hpp"
#include <cmath>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

/// What a recorder saw, and when: an element, or the end.
template <class Output, class Failure> struct RecordedEvent {
    /// Since the subscription, in seconds of the world's clock.
    double time = 0;
    /// Nothing stands for the end, which other subscribers are not told of.
    std::optional<Streams::Payload<Output, Failure>> payload{};

    /// `0.02: value(1)` or `0.02: end`.
    std::string description() const
    {
        return describe(time) + ": " + (payload ? payload->description() : std::string("end"));
    }

    friend bool operator==(const RecordedEvent&, const RecordedEvent&) = default;
};

/// Subscribes to a stream and writes down its elements and its end, for tests to look at.
///
/// @snippet Tests/Testing/RecorderTests.cpp Recording a stream
///
/// The subscription begins when it is made and ends with it, or with `cancel()`. Not copyable. Safe to use
/// from several threads; its end waits for a delivery on another one.
template <class Output, class Failure = Never> class Recorder {
public:
    using Payload = Streams::Payload<Output, Failure>;

    /// An element or the end, and when it came.
    using Event = RecordedEvent<Output, Failure>;

    /// What the symbols of its notation stand for.
    using Legend = MarbleLegend<Output, Failure>;

    /// The legend is what `marbles()` prints with.
    explicit Recorder(const Streams::AnyPublisher<Output, Failure>& publisher, Legend legend = {})
        : m_legend(std::move(legend))
        , m_subscription(Streams::sinkUntilEnd(
              publisher, [tape = m_tape](const Payload& payload) { tape->append(payload); },
              [tape = m_tape] { tape->append(std::nullopt); }))
    {}

    /// Subscribes at once and records until it goes away.
    template <StreamsPublisher Publisher>
    explicit Recorder(const Publisher& publisher, Legend legend = {})
        : Recorder(publisher.eraseToAnyPublisher(), std::move(legend))
    {}

    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
    ~Recorder() { m_subscription.cancelAndWait(); }

    /// Ends the subscription; what was recorded stays.
    void cancel() { m_subscription.cancel(); }

    /// In the order in which they came.
    std::vector<Event> events() const
    {
        const auto lock = std::lock_guard(m_tape->mutex);
        return m_tape->events;
    }

    /// All elements, without their times.
    std::vector<Payload> payloads() const
    {
        auto payloads = std::vector<Payload>();
        for (auto& event : events())
            if (event.payload)
                payloads.push_back(*std::move(event.payload));
        return payloads;
    }

    /// The values; failures are left out.
    std::vector<Output> values() const
    {
        auto values = std::vector<Output>();
        for (const auto& payload : payloads())
            if (const auto* const value = payload.asValue())
                values.push_back(*value);
        return values;
    }

    /// The failures; values are left out.
    std::vector<Failure> failures() const requires(!std::same_as<Failure, Never>)
    {
        auto failures = std::vector<Failure>();
        for (const auto& payload : payloads())
            if (const auto* const failure = payload.asError())
                failures.push_back(*failure);
        return failures;
    }

    /// Whether the end was recorded.
    bool hasEnded() const
    {
        const auto lock = std::lock_guard(m_tape->mutex);
        return !m_tape->events.empty() && !m_tape->events.back().payload;
    }

    /// What was recorded, from the subscription to the last event, as a line of marbles in its shortest form:
    /// empty when nothing was. An event between two frames counts for the nearer one.
    std::string marbles() const
    {
        auto script = std::vector<MarbleEvent>();
        for (const auto& event : events())
            script.push_back({.frame = static_cast<int>(std::lround(event.time / m_legend.frame)),
                .symbol = event.payload ? m_legend.symbol(*event.payload) : '|'});
        return MarbleScript(std::move(script)).notation();
    }

    /// The events as a list, for messages of failed tests.
    std::string description() const
    {
        auto items = std::vector<std::string>();
        for (const auto& event : events())
            items.push_back(event.description());
        return detail::joined('[', items, ']');
    }

    /// Forgets what was recorded. Times still count from the subscription.
    void clear()
    {
        auto events = std::vector<Event>(); // released after the lock
        const auto lock = std::lock_guard(m_tape->mutex);
        events.swap(m_tape->events);
    }

private:
    /// Shared with the subscription.
    struct Tape {
        void append(std::optional<Payload> payload)
        {
            const auto time = World::current().clock().monotonicSeconds() - start;
            const auto lock = std::lock_guard(mutex);
            events.push_back({time, std::move(payload)});
        }

        const double start = World::current().clock().monotonicSeconds();
        std::mutex mutex;
        std::vector<Event> events;
    };

    const Legend m_legend;
    const std::shared_ptr<Tape> m_tape = std::make_shared<Tape>();
    const Streams::AnyCancellable m_subscription;
};

/// From the publisher's own types.
template <StreamsPublisher Publisher>
Recorder(const Publisher&) -> Recorder<typename Publisher::Output, typename Publisher::Failure>;

/// From the publisher's own types.
template <StreamsPublisher Publisher>
Recorder(const Publisher&, MarbleLegend<typename Publisher::Output, typename Publisher::Failure>)
    -> Recorder<typename Publisher::Output, typename Publisher::Failure>;

} // namespace orrenby::testing
