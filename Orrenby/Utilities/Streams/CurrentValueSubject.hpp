#pragma once

/// @file
/// A subject that holds a current value.

#include "Orrenby/Platform/Engines/Combine/CurrentValueSubject.hpp"
#include "Orrenby/Platform/Engines/Rx/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/SubjectOperations.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace detail {
/// Logs the exception being handled as a failed read of a current value.
ORRENBY_EXPORT void logFailedRead();
}

namespace Streams {

/// Holds the payload that was sent last, value or failure, and hands it to each new subscriber before the
/// subscribing call returns.
///
/// The current payload changes as soon as something is sent, even while an earlier one is still being
/// delivered. After the end it stays readable, but new subscribers get nothing.
///
/// @snippet Tests/Utilities/Streams/CurrentValueSubjectTests.cpp Holding a state
///
/// Copies share the subject, which lives as long as a copy, a publisher or a subscription of it. Safe to use
/// from several threads.
template <typename Output, typename Failure>
class CurrentValueSubject
    : public detail::SubjectOperations<detail::CurrentValueBase<Payload<Output, Failure>>, Output, Failure> {
    using Core = detail::CurrentValueBase<Payload<Output, Failure>>;
    using Operations = detail::SubjectOperations<Core, Output, Failure>;

public:
    /// With the value that the first subscriber gets, unless another one is sent before.
    explicit CurrentValueSubject(Output value)
        : Operations(makeSubject(Payload<Output, Failure>::value(std::move(value))))
    {}

    /// A subject that is born failed; values may follow. Where values and failures have the same type, mark
    /// it with `failure(…)`.
    template <std::same_as<Failure> Error>
        requires(!std::same_as<Error, Never> && !std::same_as<Error, Output>)
    explicit CurrentValueSubject(Error error)
        : Operations(makeSubject(Payload<Output, Failure>::error(std::move(error))))
    {}

    /// A subject that is born with a failure that is marked as one.
    explicit CurrentValueSubject(FailureOf<Failure> error) requires(!std::same_as<Failure, Never>)
        : Operations(makeSubject(Payload<Output, Failure>::error(std::move(error.content))))
    {}

    CurrentValueSubject() requires std::same_as<Output, Void> : CurrentValueSubject(Void()) {}

    /// The current value.
    /// @throws Failure  if the current payload is a failure; an `AnyError` throws what it holds, with its own
    /// type.
    Output get() const { return current().get(); }

    /// The current value of a subject that cannot fail.
    Output value() const requires std::same_as<Failure, Never> { return current().value(); }

private:
    static detail::Retained<Core> makeSubject(Payload<Output, Failure> first)
    {
        if (detail::chosenEngine() == detail::Engine::Combine)
            return detail::Retained<Core>::adopting(
                new StreamsCombine::CurrentValueSubject<Payload<Output, Failure>>(std::move(first)));
        return detail::Retained<Core>::adopting(
            new StreamsRx::CurrentValueSubject<Payload<Output, Failure>>(std::move(first)));
    }

    // Only the Rx engine can fail here, for a subject that was disposed behind the facade's back.
    Payload<Output, Failure> current() const
    {
        const auto& core = this->core();
        if (core.engine() == detail::Engine::Combine)
            return core.value();
        try {
            return static_cast<const StreamsRx::CurrentValueSubject<Payload<Output, Failure>>&>(core).value();
        } catch (...) {
            detail::logFailedRead();
            throw;
        }
    }
};

} // namespace Streams

} // namespace orrenby
