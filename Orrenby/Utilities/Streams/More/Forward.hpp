#pragma once

/// @file
/// Sending an element that has come from another stream.

#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Sends what `payload` is, a value or a failure.
template <typename Output, typename Failure>
void forward(const Streams::PassthroughSubject<Output, Failure>& subject,
    const Streams::Payload<Output, Failure>& payload)
{
    if constexpr (!std::same_as<Failure, Never>) {
        if (const auto* const error = payload.asError())
            return subject.send(Streams::failure(*error));
    }
    subject.send(*payload.asValue());
}

/// Ends the stream of `subject` without a failure.
template <typename Output, typename Failure>
void finish(const Streams::PassthroughSubject<Output, Failure>& subject)
{
    subject.send(Streams::Completion<Failure>::finished());
}

} // namespace orrenby::detail
