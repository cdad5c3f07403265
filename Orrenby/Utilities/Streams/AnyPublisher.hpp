#pragma once

/// @file
/// A stream that can be subscribed to.

#include "Orrenby/Platform/Engines/Ground/Publication.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"
#include "Orrenby/Utilities/Streams/Payload.hpp"
#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>

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

    /// Calls `receiveValue` with every payload.
    template <typename Callback>
        requires std::invocable<Callback&, const Payload&>
    [[nodiscard]] AnyCancellable sink(Callback receiveValue, TraceSite site = TraceSite::current()) const
    {
        detail::useEngine(m_publisher->engine());
#ifdef ORRENBY_DIAGNOSTICS
        Trace::report(Trace::Kind::Subscribe, typeName<AnyPublisher>(), site);
#else
        (void)site;
#endif
        return AnyCancellable(
            detail::SubscriptionHandle::adopting(m_publisher->subscribe(std::move(receiveValue))));
    }

    /// Calls `receiveValue` with every value of a stream that cannot fail.
    template <typename Callback>
        requires std::same_as<Failure, Never> && std::invocable<Callback&, const Output&>
    [[nodiscard]] AnyCancellable bind(Callback receiveValue, TraceSite site = TraceSite::current()) const
    {
        return sink([receiveValue = std::move(receiveValue)](
                        const Payload& payload) mutable { receiveValue(payload.value()); },
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

    /// This publisher.
    AnyPublisher eraseToAnyPublisher() const { return *this; }

private:
    detail::Retained<const detail::Publication<Payload>> m_publisher;
};

} // namespace orrenby::Streams
