#pragma once

/// @file
/// A subject that only forwards.

#include "Orrenby/Platform/Engines/Combine/PassthroughSubject.hpp"
#include "Orrenby/Platform/Engines/Rx/PassthroughSubject.hpp"
#include "Orrenby/Utilities/Streams/SubjectOperations.hpp"

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Forwards what is sent to those who are subscribed at that moment. It holds nothing: who comes later gets
/// only what is sent later.
///
/// @snippet Tests/Utilities/Streams/PassthroughSubjectTests.cpp Announcing events
///
/// Copies share the subject, which lives as long as a copy, a publisher or a subscription of it. Safe to use
/// from several threads.
template <typename Output, typename Failure>
class PassthroughSubject
    : public detail::SubjectOperations<detail::SubjectBase<Payload<Output, Failure>>, Output, Failure> {
    using Operations
        = detail::SubjectOperations<detail::SubjectBase<Payload<Output, Failure>>, Output, Failure>;

public:
    PassthroughSubject()
        : Operations(makeSubject())
    {}

    /// A handle of a subject that exists.
    explicit PassthroughSubject(
        detail::Retained<detail::SubjectBase<Payload<Output, Failure>>> subject) noexcept
        : Operations(std::move(subject))
    {}

private:
    static detail::Retained<detail::SubjectBase<Payload<Output, Failure>>> makeSubject()
    {
        using Core = detail::SubjectBase<Payload<Output, Failure>>;
        if (detail::chosenEngine() == detail::Engine::Combine)
            return detail::Retained<Core>::adopting(
                new StreamsCombine::PassthroughSubject<Payload<Output, Failure>>());
        return detail::Retained<Core>::adopting(
            new StreamsRx::PassthroughSubject<Payload<Output, Failure>>());
    }
};

} // namespace orrenby::Streams
