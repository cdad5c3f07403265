#pragma once

/// @file
/// Leaving out repetitions.

#include "Orrenby/Utilities/Streams/More/PublisherOperation.hpp"
#include "Orrenby/Utilities/Streams/More/Staged.hpp"
#include <exception>
#include <functional>
#include <optional>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Makes something of a value that repetitions can be known by.
template <typename Callable, typename Output>
concept MakesKeyOf = CallableWith<Callable, Output> && std::equality_comparable<ResultOf<Callable, Output>>;

struct DistinctBy {
    template <typename Output, typename Failure, MakesKeyOf<Output> MakeKey>
    Streams::AnyPublisher<Output, Failure> operator()(
        const Streams::AnyPublisher<Output, Failure>& publisher, MakeKey makeKey) const
    {
        using Key = ResultOf<MakeKey, Output>;
        return Streams::staged<Output, Failure>(publisher, [makeKey = std::move(makeKey)] {
            return [&makeKey, last = std::optional<Key>()](
                       const Streams::Payload<Output, Failure>& payload, const auto& next) mutable {
                if (const auto* const value = valueIn(payload)) {
                    decltype(auto) key = std::invoke(makeKey, *value);
                    if (!last)
                        last.emplace(std::forward<decltype(key)>(key));
                    else if (*last == key)
                        return;
                    else
                        *last = std::forward<decltype(key)>(key);
                } else
                    last.reset();
                next(payload);
            };
        });
    }

    template <typename Output, typename Failure, typename Wrong>
        requires(!MakesKeyOf<Wrong, Output>)
    Streams::AnyPublisher<Output, Failure>
    operator()(const Streams::AnyPublisher<Output, Failure>& publisher, const Wrong&) const
    {
        static_assert(isNeverTrue<Wrong>,
            "distinctBy() takes a callable, not mutable, that makes something comparable of a value of the stream.");
        return publisher;
    }
};

struct TryDistinctBy {
    template <typename Output, typename Failure, MakesKeyOf<Output> MakeKey>
    Streams::AnyPublisher<Output, AnyError> operator()(
        const Streams::AnyPublisher<Output, Failure>& publisher, MakeKey makeKey) const
    {
        using Key = ResultOf<MakeKey, Output>;
        using Result = Streams::Payload<Output, AnyError>;
        return Streams::staged<Output, AnyError>(publisher, [makeKey = std::move(makeKey)] {
            return [&makeKey, last = std::optional<Key>()](
                       const Streams::Payload<Output, Failure>& payload, const auto& next) mutable {
                if (payload.isError()) {
                    last.reset();
                    return next(Result::error(AnyError(*payload.asError())));
                }
                auto thrown = std::exception_ptr();
                try {
                    auto key = std::optional<Key>(std::invoke(makeKey, *payload.asValue()));
                    if (last == key)
                        return;
                    last = std::move(key);
                } catch (...) {
                    last.reset();
                    thrown = std::current_exception();
                }
                next(thrown ? Result::error(AnyError(thrown)) : Result::value(*payload.asValue()));
            };
        });
    }

    template <typename Output, typename Failure, typename Wrong>
        requires(!MakesKeyOf<Wrong, Output>)
    Streams::AnyPublisher<Output, Failure>
    operator()(const Streams::AnyPublisher<Output, Failure>& publisher, const Wrong&) const
    {
        static_assert(isNeverTrue<Wrong>,
            "tryDistinctBy() takes a callable, not mutable, that makes something comparable of a value of the stream.");
        return publisher;
    }
};

struct Distinct {
    struct Itself {
        template <typename Value> const Value& operator()(const Value& value) const noexcept { return value; }
    };

    template <std::equality_comparable Output, typename Failure>
    Streams::AnyPublisher<Output, Failure> operator()(
        const Streams::AnyPublisher<Output, Failure>& publisher) const
    {
        return DistinctBy()(publisher, Itself());
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Leaves out a value that equals the one before it. Failures pass; the value after one passes too, even if
/// it equals the last before.
///
/// Each subscription begins anew, and keeps a copy of the last value.
///
/// @snippet Tests/Contracts/Streams/More/DistinctTests.cpp Leaving out repetitions
inline constexpr auto distinct = detail::PublisherOperation<detail::Distinct>();

/// As `distinct`, for values that are compared by the key that a callable makes of them:
/// `distinctBy(nameOf)`. It is shared by all subscriptions and must not throw.
inline constexpr auto distinctBy = detail::PublisherOperation<detail::DistinctBy>();

/// As `distinctBy`; what the callable or the comparison throws becomes a failure in the place of the value,
/// and later values flow on.
inline constexpr auto tryDistinctBy = detail::PublisherOperation<detail::TryDistinctBy>();

} // namespace orrenby::Streams
