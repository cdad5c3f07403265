#pragma once

/// @file
/// What every publisher of the facade can do.

#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// A type with `Output` and `Failure` that can be seen as a `Streams::AnyPublisher` of both.
template <typename P>
concept StreamsPublisher = requires(const P& publisher)
{
    typename P::Output;
    typename P::Failure;
    {
        publisher.eraseToAnyPublisher()
        } -> std::same_as<Streams::AnyPublisher<typename P::Output, typename P::Failure>>;
};

} // namespace orrenby
