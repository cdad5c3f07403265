#pragma once

/// @file
/// What the two kinds of subjects have in common.

#include "Orrenby/Platform/Objects/TestAccess.hpp"
#include "Orrenby/Utilities/ObjectIdentifier.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include "Orrenby/Utilities/Streams/Completion.hpp"
#include "Orrenby/Utilities/Streams/Failure.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Sending and publishing, over a core of either engine. Copies share the subject.
///
/// `Core` is what both engines' subjects of this kind derive from.
///
/// Its public members are those of what derives from it.
template <typename Core, typename OutputType, typename FailureType> class SubjectOperations {
public:
    using Output = OutputType;
    using Failure = FailureType;

    /// The end, with a failure or without.
    using Completion = Streams::Completion<Failure>;

    using Payload = Streams::Payload<Output, Failure>;

    /// Delivers a value to all who are subscribed, in the order of their coming.
    ///
    /// If a delivery of this subject is running, in this or another thread, the value is queued and delivered
    /// right after it by whoever delivers. O(subscribers); does not allocate unless it has to queue. After
    /// the end it has no effect.
    void send(Output value) const { core().send(Payload::value(std::move(value))); }

    /// Delivers a failure, which does not end the stream. Where values and failures have the same type, mark
    /// it with `failure(…)`.
    template <std::same_as<Failure> Error>
        requires(!std::same_as<Error, Never> && !std::same_as<Error, Output>)
    void send(Error error) const { core().send(Payload::error(std::move(error))); }

    /// Delivers a failure that is marked as one.
    void send(Streams::FailureOf<Failure> error) const requires(!std::same_as<Failure, Never>)
    {
        core().send(Payload::error(std::move(error.content)));
    }

    /// Tells that it happened.
    void send() const requires std::same_as<Output, Void> { send(Void()); }

    /// Ends the stream. A failure reaches subscribers as the last element; of the end itself they are not
    /// told.
    void send(Completion completion) const
    {
        if (const auto& failure = completion.failure())
            core().finish(Payload::error(*failure));
        else
            core().finish();
    }

    /// The stream of what is sent. Every call gives a publisher of this same subject.
    Streams::AnyPublisher<Output, Failure> eraseToAnyPublisher() const
    {
        core();
        return Streams::AnyPublisher<Output, Failure>(m_subject);
    }

    /// Another name of `eraseToAnyPublisher()`.
    Streams::AnyPublisher<Output, Failure> asPublisher() const { return eraseToAnyPublisher(); }

    /// The identity of the subject that copies share.
    ObjectIdentifier sharedIdentity() const noexcept { return ObjectIdentifier(m_subject.get()); }

protected:
    /// For the subjects themselves.
    explicit SubjectOperations(Retained<Core> subject) noexcept
        : m_subject(std::move(subject))
    {}

    // Copies only: a moved-from subject would be one that cannot be used.
    SubjectOperations(const SubjectOperations&) = default;
    SubjectOperations& operator=(const SubjectOperations&) = default;
    ~SubjectOperations() = default;

    /// The subject of the engine that this process uses. Nothing of `this` is touched once the core delivers,
    /// so a subject may be dropped inside its own delivery.
    Core& core() const noexcept
    {
        useEngine(m_subject->engine());
        return *m_subject;
    }

private:
    Retained<Core> m_subject;

    friend struct testing::TestAccess;
};

} // namespace orrenby::detail
