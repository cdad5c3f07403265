#pragma once

/// @file
/// A stream that does what a line of marbles says.

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Testing/MarbleLegend.hpp"
#include "Orrenby/Testing/MarbleScript.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <string>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::testing {

/// Sends the elements of a line of marbles, each in its frame, from the moment it is made.
///
/// The first frame is that moment; what happens in it happens when the world is driven next, so whoever
/// subscribes until then misses nothing. Who subscribes later gets what is sent later. It runs on a queue of
/// its own, by the clock of the current world, and needs a `VirtualWorld` to be driven by a test.
///
/// @snippet Tests/Testing/MarbleSourceTests.cpp Testing an operator
///
/// Copies share the stream, which goes on when all are gone. Safe to use from several threads.
template <class OutputType, class FailureType = Never> class MarbleSource {
public:
    using Output = OutputType;
    using Failure = FailureType;

    /// What its symbols stand for.
    using Legend = MarbleLegend<Output, Failure>;

    /// @throws MarbleError  when the line is malformed, or a symbol stands for nothing.
    explicit MarbleSource(std::string_view notation, const Legend& legend = {})
    {
        const auto script = MarbleScript(notation);
        auto payloads = std::vector<std::optional<typename Legend::Payload>>();
        for (const auto& event : script.events()) {
            payloads.push_back(event.isEnd() ? std::nullopt : legend.payload(event.symbol));
            if (!payloads.back() && !event.isEnd())
                throw MarbleError(notation, event.position, "the legend has nothing for this symbol");
        }
        const auto queue = DispatchQueue::serial("marbles");
        for (std::size_t index = 0; index < payloads.size(); ++index)
            queue.asyncAfter(script.events()[index].frame * legend.frame,
                [subject = m_subject, payload = std::move(payloads[index])] { send(subject, payload); });
    }

    /// The stream. Who subscribes late has missed what came before.
    Streams::AnyPublisher<Output, Failure> eraseToAnyPublisher() const
    {
        return m_subject.eraseToAnyPublisher();
    }

    /// Another name of `eraseToAnyPublisher()`.
    Streams::AnyPublisher<Output, Failure> asPublisher() const { return eraseToAnyPublisher(); }

private:
    using Subject = Streams::PassthroughSubject<Output, Failure>;

    /// No payload stands for the end.
    static void send(const Subject& subject, const std::optional<typename Legend::Payload>& payload)
    {
        if (!payload)
            subject.send(Subject::Completion::finished());
        else if (const auto* const value = payload->asValue())
            subject.send(*value);
        else if constexpr (!std::same_as<Failure, Never>)
            subject.send(Streams::failure(*payload->asError()));
    }

    Subject m_subject;
};

} // namespace orrenby::testing
