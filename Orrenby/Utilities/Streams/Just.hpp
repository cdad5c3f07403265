#pragma once

/// @file
/// A stream of one element.

#include "Orrenby/Platform/Engines/Ground/JustPublication.hpp"
#include "Orrenby/Utilities/Streams/Failure.hpp"
#include "Orrenby/Utilities/Streams/SourceOperations.hpp"

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Delivers one value, or one failure, to each subscriber before the subscribing call returns, and ends.
///
/// @snippet Tests/Contracts/Streams/JustTests.cpp A value as a stream
///
/// Copies share the element. Safe to use from several threads.
template <typename Output, typename Failure> class Just : public detail::SourceOperations<Output, Failure> {
    using Operations = detail::SourceOperations<Output, Failure>;

public:
    /// Keeps the value; each subscriber gets a copy.
    explicit Just(Output value)
        : Operations(makeJust(Payload<Output, Failure>::value(std::move(value))))
    {}

    /// A stream of one failure. Where values and failures have the same type, mark it with `failure(…)`.
    template <std::same_as<Failure> Error>
        requires(!std::same_as<Error, Never> && !std::same_as<Error, Output>)
    explicit Just(Error error)
        : Operations(makeJust(Payload<Output, Failure>::error(std::move(error))))
    {}

    /// A stream of one failure that is marked as one.
    explicit Just(FailureOf<Failure> error) requires(!std::same_as<Failure, Never>)
        : Operations(makeJust(Payload<Output, Failure>::error(std::move(error.content))))
    {}

private:
    using Publication = detail::JustPublication<Payload<Output, Failure>>;

    static typename Operations::Source makeJust(Payload<Output, Failure> payload)
    {
        return detail::Retained<const Publication>::adopting(
            new Publication(detail::chosenEngine(), std::move(payload)));
    }
};

} // namespace orrenby::Streams
