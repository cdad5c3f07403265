#pragma once

/// @file
/// A stream that can be subscribed to.

#include "Orrenby/Platform/Engines/Ground/CombineLatestPublication.hpp"
#include "Orrenby/Platform/Engines/Ground/MapPublication.hpp"
#include "Orrenby/Platform/Engines/Ground/Publication.hpp"
#include "Orrenby/Platform/Engines/Ground/ReceiveOnPublication.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include "Orrenby/Platform/Observing/KeyPathTypes.hpp"
#include "Orrenby/Utilities/ObjectIdentifier.hpp"
#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"
#include "Orrenby/Utilities/Streams/Payload.hpp"
#include <concepts>
#include <exception>
#include <functional>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A callable that takes an argument without changing itself: subscriptions share it.
template <typename Callable, typename Argument>
concept CallableWith = std::invocable<const Callable&, const Argument&>;

/// What a callable that does not change makes of an argument, as a plain value.
template <typename Callable, typename Argument>
using ResultOf = std::remove_cvref_t<std::invoke_result_t<const Callable&, const Argument&>>;

/// Whether the callable gives, for such an argument, what can become a `Result`.
template <typename Callable, typename Argument, typename Result>
concept Gives = CallableWith<Callable,
    Argument> && std::convertible_to<std::invoke_result_t<const Callable&, const Argument&>, Result>;

/// For assertions that fail only where a template is used.
template <typename> inline constexpr bool isNeverTrue = false;

/// What a publisher stands for in its engine.
template <typename Output, typename Failure>
const Retained<const Publication<Streams::Payload<Output, Failure>>>& publicationOf(
    const Streams::AnyPublisher<Output, Failure>& publisher) noexcept;

/// Tells the diagnostic build's hook of a subscription to a `Publisher`.
template <typename Publisher> void reportSubscription([[maybe_unused]] TraceSite site)
{
#ifdef ORRENBY_DIAGNOSTICS
    Trace::report(Trace::Kind::Subscribe, typeName<Publisher>(), site);
#endif
}

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// A stream of payloads, whatever it comes from. It is a description: nothing runs until somebody subscribes.
///
/// Copies share the stream. Callbacks run on the thread that sends, one at a time for each subscriber; one
/// that throws ends the process. Every subscribing operation returns the handle that keeps the subscription;
/// dropping it ends the subscription.
///
/// @snippet Tests/Utilities/Streams/AnyPublisherTests.cpp Subscribing
///
/// Safe to use from several threads. Subscribing allocates one block, which holds everything the subscription
/// needs.
template <typename OutputType, typename FailureType> class AnyPublisher {
public:
    using Output = OutputType;
    using Failure = FailureType;
    using Payload = Streams::Payload<Output, Failure>;

    explicit AnyPublisher(detail::Retained<const detail::Publication<Payload>> publisher) noexcept
        : m_publisher(std::move(publisher))
    {}

    // Copies only: a moved-from publisher would be one that cannot be used.
    AnyPublisher(const AnyPublisher&) = default;
    AnyPublisher& operator=(const AnyPublisher&) = default;

    /// The identity of the stream that copies share.
    ObjectIdentifier sharedIdentity() const noexcept { return ObjectIdentifier(m_publisher.get()); }

    /// Calls `receiveValue` with every payload.
    template <typename Callback>
        requires std::invocable<Callback&, const Payload&>
    [[nodiscard]] AnyCancellable sink(Callback receiveValue, TraceSite site = TraceSite::current()) const
    {
        detail::useEngine(m_publisher->engine());
        detail::reportSubscription<AnyPublisher>(site);
        return AnyCancellable(
            detail::SubscriptionHandle::adopting(m_publisher->subscribe(std::move(receiveValue))));
    }

    /// Calls `receiveValue` with every value of a stream that cannot fail.
    template <typename Callback>
        requires std::same_as<Failure, Never> && std::invocable<Callback&, const Output&>
    [[nodiscard]] AnyCancellable bind(Callback receiveValue, TraceSite site = TraceSite::current()) const
    {
        return sink([receiveValue = std::move(receiveValue)](
                        const Payload& payload) mutable { std::invoke(receiveValue, payload.value()); },
            site);
    }

    /// Writes every value to a data member of `object`; failures are discarded. The object is not kept alive:
    /// once it is gone, values are discarded too.
    template <typename Member, typename Root, typename Target>
        requires std::derived_from<Target, Root> && std::assignable_from<Member&, const Output&>
    [[nodiscard]] AnyCancellable assign(
        Member Root::*member, const Ref<Target>& object, TraceSite site = TraceSite::current()) const
    {
        return sink(
            [member, target = WeakRef<Target>(object)](const Payload& payload) {
                const auto* const value = payload.asValue();
                if (const auto root = value ? target.lock() : nullptr)
                    (*root).*member = *value;
            },
            site);
    }

    /// Writes every value along a key path that starts at `object`; see `keyPath` in
    /// Platform/Observing/KeyPath.hpp. Otherwise as for a data member. A value that finds an empty reference
    /// on its way is discarded.
    ///
    /// @snippet Tests/Contracts/Streams/AssignKeyPathTests.cpp Assigning along a key path
    template <typename Root, typename Value, typename Target>
        requires std::derived_from<Target, Root> && std::convertible_to<const Output&, Value>
    [[nodiscard]] AnyCancellable assign(WritableKeyPath<Root, Value> path, const Ref<Target>& object,
        TraceSite site = TraceSite::current()) const
    {
        return sink(
            [path = std::move(path), target = WeakRef<Target>(object)](const Payload& payload) {
                const auto* const value = payload.asValue();
                if (const auto root = value ? target.lock() : nullptr)
                    path.set(*root, *value);
            },
            site);
    }

    // Operators: each gives a new stream and leaves this one alone. Their callables are called on the thread
    // that delivers, for several subscribers perhaps at the same time, and must not throw unless the
    // operator's name begins with "try". One that throws all the same ends the process.

    /// Passes every value through `transform`; failures pass unchanged.
    ///
    /// @snippet Tests/Contracts/Streams/OperatorTests.cpp Transforming a stream
    template <detail::CallableWith<Output> Transform>
    AnyPublisher<detail::ResultOf<Transform, Output>, Failure> map(Transform transform) const
    {
        using Result = Streams::Payload<detail::ResultOf<Transform, Output>, Failure>;
        return mapped<Result>([transform = std::move(transform)](const Payload& payload) {
            // Where no failure can exist, none is looked for: hops are many and short.
            if (std::same_as<Failure, Never> || payload.isValue())
                return Result::value(std::invoke(transform, payload.uncheckedValue()));
            return Result::error(*payload.asError());
        });
    }

    /// Passes every value through `transform`; what that throws becomes a failure, and later values flow on.
    template <detail::CallableWith<Output> Transform>
    AnyPublisher<detail::ResultOf<Transform, Output>, AnyError> tryMap(Transform transform) const
    {
        using Result = Streams::Payload<detail::ResultOf<Transform, Output>, AnyError>;
        return mapped<Result>([transform = std::move(transform)](const Payload& payload) {
            if (payload.isError())
                return Result::error(AnyError(*payload.asError()));
            try {
                return Result::value(std::invoke(transform, *payload.asValue()));
            } catch (...) {
                return Result::error(AnyError(std::current_exception()));
            }
        });
    }

    /// Puts the value that `handler` gives in the place of each failure. The stream goes on after it.
    template <detail::Gives<Failure, Output> Handler> AnyPublisher catch_(Handler handler) const
    {
        return mapped<Payload>([handler = std::move(handler)](const Payload& payload) {
            return payload.isValue() ? payload : Payload::value(std::invoke(handler, *payload.asError()));
        });
    }

    /// As `catch_`; what `handler` throws becomes a failure.
    template <detail::Gives<Failure, Output> Handler>
    AnyPublisher<Output, AnyError> tryCatch(Handler handler) const
    {
        using Result = Streams::Payload<Output, AnyError>;
        return mapped<Result>([handler = std::move(handler)](const Payload& payload) {
            if (payload.isValue())
                return Result::value(*payload.asValue());
            try {
                return Result::value(std::invoke(handler, *payload.asError()));
            } catch (...) {
                return Result::error(AnyError(std::current_exception()));
            }
        });
    }

    /// Passes every failure through `transform`; values pass unchanged.
    template <detail::CallableWith<Failure> Transform>
    AnyPublisher<Output, detail::ResultOf<Transform, Failure>> mapError(Transform transform) const
    {
        using Result = Streams::Payload<Output, detail::ResultOf<Transform, Failure>>;
        return mapped<Result>([transform = std::move(transform)](const Payload& payload) {
            return payload.isValue() ? Result::value(*payload.asValue())
                                     : Result::error(std::invoke(transform, *payload.asError()));
        });
    }

    /// Delivers everything on `queue`, in its order, also where the queue runs several jobs at a time.
    ///
    /// The first value posts one job for all that are sent until it begins, so a value costs no job of its
    /// own, and its place among other work of the queue is that of the first. A job that follows a small
    /// batch waits some microseconds for more. After `cancel()` nothing of what waits in the queue is
    /// delivered. What waits has no bound but memory.
    ///
    /// @snippet Tests/Contracts/Streams/ReceiveOnTests.cpp Going on in a queue
    AnyPublisher receive(const DispatchQueue& queue) const { return receivedOn(detail::schedulerOn(queue)); }

    /// As above; each job is an operation of normal priority. Operations of it that are cancelled before they
    /// run leave their values to the next.
    AnyPublisher receive(const OperationQueue& queue) const { return receivedOn(detail::schedulerOn(queue)); }

    /// Combines the latest values of this and one to three other streams that cannot fail: one tuple for each
    /// value of any of them, from when all have sent one. This stream's value comes first.
    ///
    /// Sources on several threads do not overlap: their tuples come one after the other, on the thread of one
    /// of them.
    ///
    /// @snippet Tests/Contracts/Streams/CombineLatestTests.cpp Combining streams
    template <typename... Others>
        requires(std::same_as<Failure, Never> && sizeof...(Others) >= 1 && sizeof...(Others) <= 3)
    AnyPublisher<std::tuple<Output, Others...>, Never> combineLatest(
        const AnyPublisher<Others, Never>&... others)
    const
    {
        using Result = Streams::Payload<std::tuple<Output, Others...>, Never>;
        const auto tuple = [](const Payload& first, const Streams::Payload<Others, Never>&... rest) {
            if (first.isError() || (rest.isError() || ...)) [[unlikely]]
                fatalError("Due to `Never` restriction, `default` can never occur.",
                    "Utilities/Streams+CombineLatest");
            return Result::value({first.uncheckedValue(), rest.uncheckedValue()...});
        };
        using Publication = detail::CombineLatestPublication<Result, std::remove_const_t<decltype(tuple)>,
            Payload, Streams::Payload<Others, Never>...>;
        detail::useEngine(m_publisher->engine());
        (detail::useEngine(others.m_publisher->engine()), ...);
        return AnyPublisher<std::tuple<Output, Others...>, Never>(
            detail::Retained<const Publication>::adopting(
                new Publication(m_publisher->engine(), tuple, m_publisher, others.m_publisher...)));
    }

    /// @cond
    // What does not fit is refused in words, instead of by a list of what was tried.

    template <typename Wrong>
    AnyCancellable sink(const Wrong&, TraceSite = TraceSite::current()) const
        requires(!std::invocable<Wrong&, const Payload&>)
    {
        static_assert(
            detail::isNeverTrue<Wrong>, "sink() takes a callable that takes a payload of the stream.");
        return {};
    }
    template <typename Wrong>
    AnyCancellable bind(const Wrong&, TraceSite = TraceSite::current()) const
        requires(std::same_as<Failure, Never> && !std::invocable<Wrong&, const Output&>)
    {
        static_assert(
            detail::isNeverTrue<Wrong>, "bind() takes a callable that takes a value of the stream.");
        return {};
    }
    template <typename Wrong>
    AnyPublisher map(const Wrong&) const requires(!detail::CallableWith<Wrong, Output>)
    {
        static_assert(detail::isNeverTrue<Wrong>,
            "map() takes a callable, not mutable, that takes a value of the stream.");
        return *this;
    }
    template <typename Wrong>
    AnyPublisher tryMap(const Wrong&) const requires(!detail::CallableWith<Wrong, Output>)
    {
        static_assert(detail::isNeverTrue<Wrong>,
            "tryMap() takes a callable, not mutable, that takes a value of the stream.");
        return *this;
    }
    template <typename Wrong>
    AnyPublisher catch_(const Wrong&) const requires(!detail::Gives<Wrong, Failure, Output>)
    {
        static_assert(detail::isNeverTrue<Wrong>,
            "catch_() takes a callable, not mutable, that takes a failure of the stream and gives a value.");
        return *this;
    }
    template <typename Wrong>
    AnyPublisher tryCatch(const Wrong&) const requires(!detail::Gives<Wrong, Failure, Output>)
    {
        static_assert(detail::isNeverTrue<Wrong>,
            "tryCatch() takes a callable, not mutable, that takes a failure of the stream and gives a value.");
        return *this;
    }
    template <typename Wrong>
    AnyPublisher mapError(const Wrong&) const requires(!detail::CallableWith<Wrong, Failure>)
    {
        static_assert(detail::isNeverTrue<Wrong>,
            "mapError() takes a callable, not mutable, that takes a failure of the stream.");
        return *this;
    }
    /// @endcond

    /// This publisher.
    AnyPublisher eraseToAnyPublisher() const { return *this; }

private:
    /// The one construction that all operators on elements are.
    template <typename Result, typename Function>
    AnyPublisher<typename Result::Output, typename Result::Failure> mapped(Function function) const
    {
        using Publication = detail::MapPublication<Payload, Result, Function>;
        detail::useEngine(m_publisher->engine());
        return AnyPublisher<typename Result::Output, typename Result::Failure>(
            detail::Retained<const Publication>::adopting(new Publication(m_publisher, std::move(function))));
    }

    AnyPublisher receivedOn(detail::Retained<const detail::QueueScheduler> scheduler) const
    {
        using Publication = detail::ReceiveOnPublication<Payload>;
        detail::useEngine(m_publisher->engine());
        return AnyPublisher(detail::Retained<const Publication>::adopting(
            new Publication(m_publisher, std::move(scheduler))));
    }

    detail::Retained<const detail::Publication<Payload>> m_publisher;

    template <typename, typename> friend class AnyPublisher;
    friend const detail::Retained<const detail::Publication<Payload>>& detail::publicationOf<>(
        const AnyPublisher& publisher) noexcept;
};

} // namespace orrenby::Streams

namespace orrenby::inline ORRENBY_ABI::detail {

template <typename Output, typename Failure>
const Retained<const Publication<Streams::Payload<Output, Failure>>>& publicationOf(
    const Streams::AnyPublisher<Output, Failure>& publisher) noexcept
{
    return publisher.m_publisher;
}

} // namespace orrenby::detail
