#pragma once

/// @file
/// Leaving out values.

#include "Orrenby/Utilities/Streams/More/PublisherOperation.hpp"
#include "Orrenby/Utilities/Streams/More/Staged.hpp"
#include <functional>

namespace orrenby::inline ORRENBY_ABI::detail {

struct Filter {
    template <typename Output, typename Failure, CallableWith<Output> Predicate>
    Streams::AnyPublisher<Output, Failure> operator()(
        const Streams::AnyPublisher<Output, Failure>& publisher, Predicate isWanted) const
    {
        return Streams::staged<Output, Failure>(publisher, [isWanted = std::move(isWanted)] {
            return [&isWanted](const Streams::Payload<Output, Failure>& payload, const auto& next) {
                const auto* const value = valueIn(payload);
                if (!value || std::invoke(isWanted, *value))
                    next(payload);
            };
        });
    }

    template <typename Output, typename Failure, typename Wrong>
        requires(!CallableWith<Wrong, Output>)
    Streams::AnyPublisher<Output, Failure>
    operator()(const Streams::AnyPublisher<Output, Failure>& publisher, const Wrong&) const
    {
        static_assert(isNeverTrue<Wrong>, "filter() takes a predicate, not mutable, of the stream's values.");
        return publisher;
    }
};

struct TryFilter {
    template <typename Output, typename Failure, CallableWith<Output> Predicate>
    Streams::AnyPublisher<Output, AnyError> operator()(
        const Streams::AnyPublisher<Output, Failure>& publisher, Predicate isWanted) const
    {
        using Result = Streams::Payload<Output, AnyError>;
        return Streams::staged<Output, AnyError>(publisher, [isWanted = std::move(isWanted)] {
            return [&isWanted](const Streams::Payload<Output, Failure>& payload, const auto& next) {
                const auto* const value = payload.asValue();
                if (!value)
                    return next(Result::error(AnyError(*payload.asError())));
                auto isPassed = false;
                try {
                    isPassed = std::invoke(isWanted, *value);
                } catch (...) {
                    next(Result::error(AnyError(std::current_exception())));
                }
                if (isPassed)
                    next(Result::value(*value));
            };
        });
    }

    template <typename Output, typename Failure, typename Wrong>
        requires(!CallableWith<Wrong, Output>)
    Streams::AnyPublisher<Output, Failure>
    operator()(const Streams::AnyPublisher<Output, Failure>& publisher, const Wrong&) const
    {
        static_assert(
            isNeverTrue<Wrong>, "tryFilter() takes a predicate, not mutable, of the stream's values.");
        return publisher;
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Passes on the values for which a predicate holds; failures pass unchanged.
///
/// The predicate is shared by all subscriptions and called on the thread that delivers; it must not throw.
///
/// @snippet Tests/Contracts/Streams/More/FilterTests.cpp Leaving out values
inline constexpr auto filter = detail::PublisherOperation<detail::Filter>();

/// As `filter`; what the predicate throws becomes a failure in the place of the value, and later values flow
/// on.
inline constexpr auto tryFilter = detail::PublisherOperation<detail::TryFilter>();

} // namespace orrenby::Streams
