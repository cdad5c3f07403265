#pragma once

/// @file
/// A stream of one element.

#include "Orrenby/Platform/Engines/Ground/JustPublication.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include "Orrenby/Utilities/Streams/Failure.hpp"

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Delivers one value, or one failure, to each subscriber before the subscribing call returns, and ends.
///
/// @snippet Tests/Contracts/Streams/JustTests.cpp A value as a stream
///
/// Copies share the element. Safe to use from several threads.
template <typename OutputType, typename FailureType> class Just {
public:
    using Output = OutputType;
    using Failure = FailureType;

    explicit Just(Output value)
        : m_just(makeJust(Payload<Output, Failure>::value(std::move(value))))
    {}

    /// A stream of one failure. Where values and failures have the same type, mark it with `failure(…)`.
    template <std::same_as<Failure> Error>
        requires(!std::same_as<Error, Never> && !std::same_as<Error, Output>)
    explicit Just(Error error)
        : m_just(makeJust(Payload<Output, Failure>::error(std::move(error))))
    {}

    /// A stream of one failure that is marked as one.
    explicit Just(FailureOf<Failure> error) requires(!std::same_as<Failure, Never>)
        : m_just(makeJust(Payload<Output, Failure>::error(std::move(error.content))))
    {}

    // Copies only: a moved-from publisher would be one that cannot be used.
    Just(const Just&) = default;
    Just& operator=(const Just&) = default;

    /// This stream, whatever it comes from.
    AnyPublisher<Output, Failure> eraseToAnyPublisher() const
    {
        detail::useEngine(m_just->engine());
        return AnyPublisher<Output, Failure>(m_just);
    }

    /// Another name of `eraseToAnyPublisher()`.
    AnyPublisher<Output, Failure> asPublisher() const { return eraseToAnyPublisher(); }

private:
    using Publication = detail::JustPublication<Payload<Output, Failure>>;

    static detail::Retained<const Publication> makeJust(Payload<Output, Failure> payload)
    {
        return detail::Retained<const Publication>::adopting(
            new Publication(detail::chosenEngine(), std::move(payload)));
    }

    detail::Retained<const Publication> m_just;
};

} // namespace orrenby::Streams
