#pragma once

/// @file
/// The handle of a subscription.

#include "Orrenby/Platform/Engines/Ground/SubscriptionHandle.hpp"
#include "Orrenby/Utilities/ObjectIdentifier.hpp"
#include "Orrenby/Utilities/Streams/EngineChoice.hpp"
#include <unordered_set>

namespace orrenby::inline ORRENBY_ABI::Streams {
class AnyCancellable;
}

template <> struct std::hash<orrenby::Streams::AnyCancellable> {
    std::size_t operator()(const orrenby::Streams::AnyCancellable& cancellable) const noexcept;
};

namespace orrenby::inline ORRENBY_ABI::Streams {

/// The handles that an owner keeps, so that its subscriptions end with it. No two of one subscription.
using CancellableSet = std::unordered_set<AnyCancellable>;

/// Keeps a subscription alive and can end it. Copies share the subscription; when the last copy goes away,
/// the subscription ends.
///
/// It does not keep the stream's subscribers or targets alive beyond the callback itself. It may be cancelled
/// or dropped anywhere: in its own callback, in another one, on another thread. After `cancel()` nothing more
/// is delivered on the calling thread; a callback that is running on another thread at that moment runs to
/// its end, for which `cancelAndWait()` waits.
///
/// @snippet Tests/Utilities/Streams/AnyCancellableTests.cpp Keeping a subscription
///
/// Equal handles share a subscription; the hash is a serial number, so a run repeats. An empty handle
/// (default-made or moved-from) has no subscription. Different handles are safe to use from several threads.
/// Copying is one atomic addition.
class AnyCancellable {
public:
    AnyCancellable() = default;

    explicit AnyCancellable(detail::SubscriptionHandle cancellable) noexcept
        : m_cancellable(std::move(cancellable))
    {}

    AnyCancellable(const AnyCancellable&) = default;
    AnyCancellable(AnyCancellable&&) noexcept = default;
    AnyCancellable& operator=(const AnyCancellable&) = default;
    AnyCancellable& operator=(AnyCancellable&&) noexcept = default;

    /// Ends the subscription. Again, it does nothing. O(1).
    void cancel() const noexcept
    {
        if (auto* const subscription = engineHandle())
            subscription->cancel();
    }

    /// As `cancel()`, and returns only when no other thread is inside the callback. At once on the thread
    /// that delivers.
    ///
    /// Waits for ever if the callback waits for this thread.
    void cancelAndWait() const noexcept
    {
        if (auto* const subscription = engineHandle())
            subscription->cancelAndWait();
    }

    /// Inserts this handle into `set`, unless an equal one is there.
    void store(CancellableSet& set) const { set.insert(*this); }

    /// Inserts this handle into the set of a context or worker: `publisher.sink(f).store(*this)`.
    template <typename Owner>
        requires requires(Owner& owner, void (*change)(CancellableSet&)) { owner.modifyCancellables(change); }
    void store(Owner& owner) const
    {
        owner.modifyCancellables([&](CancellableSet& set) { set.insert(*this); });
    }

    std::size_t hash() const noexcept
    {
        auto* const subscription = engineHandle();
        return subscription ? static_cast<std::size_t>(subscription->serial()) : 0;
    }

    /// The identity of the subscription that copies share; that of nothing for an empty handle.
    ObjectIdentifier sharedIdentity() const noexcept { return ObjectIdentifier(engineHandle()); }

    friend bool operator==(const AnyCancellable& first, const AnyCancellable& second) noexcept
    {
        return first.engineHandle() == second.engineHandle();
    }

private:
    // Release needs no step of its own: the subscription ends with its last handle.
    detail::Subscription* engineHandle() const noexcept
    {
        const auto engine = detail::chosenEngine();
        if (m_cancellable)
            detail::checkEngine(m_cancellable->engine(), engine);
        return m_cancellable.get();
    }

    detail::SubscriptionHandle m_cancellable;
};

} // namespace orrenby::Streams

inline std::size_t std::hash<orrenby::Streams::AnyCancellable>::operator()(
    const orrenby::Streams::AnyCancellable& cancellable) const noexcept
{
    return cancellable.hash();
}
