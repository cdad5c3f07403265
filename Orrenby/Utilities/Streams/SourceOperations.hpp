#pragma once

/// @file
/// What the ready-made publishers have in common.

#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Publishing what a source stands for in its engine. Copies share it.
///
/// Its public members are those of what derives from it.
template <typename OutputType, typename FailureType> class SourceOperations {
public:
    using Output = OutputType;
    using Failure = FailureType;
    using Payload = Streams::Payload<Output, Failure>;

    /// This stream, whatever it comes from.
    Streams::AnyPublisher<Output, Failure> eraseToAnyPublisher() const
    {
        useEngine(m_source->engine());
        return Streams::AnyPublisher<Output, Failure>(m_source);
    }

    /// Another name of `eraseToAnyPublisher()`.
    Streams::AnyPublisher<Output, Failure> asPublisher() const { return eraseToAnyPublisher(); }

    /// The identity of the stream that copies share.
    ObjectIdentifier sharedIdentity() const noexcept { return ObjectIdentifier(m_source.get()); }

protected:
    /// What copies share.
    using Source = Retained<const Publication<Payload>>;

    /// For the sources themselves.
    explicit SourceOperations(Source source) noexcept
        : m_source(std::move(source))
    {}

    // Copies only: a moved-from publisher would be one that cannot be used.
    SourceOperations(const SourceOperations&) = default;
    SourceOperations& operator=(const SourceOperations&) = default;
    ~SourceOperations() = default;

private:
    Source m_source;
};

} // namespace orrenby::detail
