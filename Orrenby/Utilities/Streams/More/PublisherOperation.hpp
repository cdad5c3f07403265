#pragma once

/// @file
/// The form of operators that are no members of a publisher.

#include "Orrenby/Utilities/Streams/StreamsPublisher.hpp"
#include <concepts>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// An operator that has its arguments and still waits for its stream: `publisher | filter(isEven)`.
///
/// `Apply` takes an `AnyPublisher`. It may be used for any number of streams.
template <typename Apply> class UnappliedOperation {
public:
    constexpr explicit UnappliedOperation(Apply apply)
        : m_apply(std::move(apply))
    {}

    template <StreamsPublisher P>
    friend auto operator|(const P& publisher, const UnappliedOperation& operation)
        // Not std::invocable: what it would add to a message about a wrong callable is longer than the
        // message.
        requires(requires { operation.m_apply(publisher.eraseToAnyPublisher()); })
    {
        return operation.m_apply(publisher.eraseToAnyPublisher());
    }

private:
    Apply m_apply;
};

template <typename... Arguments> inline constexpr bool beginWithPublisher = false;
template <typename First, typename... Rest>
inline constexpr bool beginWithPublisher<First, Rest...> = StreamsPublisher<std::remove_cvref_t<First>>;

/// Makes an operator of a function that takes an `AnyPublisher` and arguments: `filter(publisher, isEven)`
/// and `publisher | filter(isEven)`, for publishers of any kind. Without arguments the parentheses may fall
/// away: `publisher | distinct`.
template <typename Function> class PublisherOperation {
public:
    /// The direct call.
    template <StreamsPublisher P, typename... Arguments>
        requires std::invocable<const Function&,
            Streams::AnyPublisher<typename P::Output, typename P::Failure>, Arguments...>
    auto operator()(const P& publisher, Arguments&&... arguments) const
    {
        return Function()(publisher.eraseToAnyPublisher(), std::forward<Arguments>(arguments)...);
    }

    /// The operator without its stream.
    template <typename... Arguments>
        requires(!beginWithPublisher<Arguments...>)
    [[nodiscard]] constexpr auto operator()(Arguments... arguments) const
    {
        return UnappliedOperation([... arguments = std::move(arguments)](
            const auto& publisher) requires std::invocable<const Function&, decltype(publisher),
            const Arguments&...> { return Function()(publisher, arguments...); });
    }

    template <StreamsPublisher P>
        requires std::invocable<const Function&,
            Streams::AnyPublisher<typename P::Output, typename P::Failure>>
    friend auto operator|(const P& publisher, const PublisherOperation&)
    {
        return Function()(publisher.eraseToAnyPublisher());
    }
};

} // namespace orrenby::detail
