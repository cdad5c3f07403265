#pragma once

/// @file
/// Registrations for notifications that end with their owner.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Owns a group of registrations with one notification center and removes them when it goes away.
///
/// It keeps the center alive, and nothing else: neither senders nor whoever posts. Let the object that
/// receives the notifications have it as a member, and a callback can use `this` of that object, provided
/// that notifications come on the thread that releases it.
///
/// @snippet Tests/Utilities/Observers/NotificationObserverTests.cpp Observing notifications
///
/// Not copyable; shared by `std::make_shared<NotificationObserver>(center)`. Not synchronised: the
/// registrations are changed from one thread, the owner's. Callbacks run on the queue that was given, or on
/// the thread that posts; one that runs on another thread while the registration is removed runs to its end.
class ORRENBY_EXPORT NotificationObserver {
public:
    /// Keeps the center alive; registers nothing yet.
    explicit NotificationObserver(Ref<NotificationCenter> notificationCenter);
    NotificationObserver(const NotificationObserver&) = delete;
    NotificationObserver& operator=(const NotificationObserver&) = delete;

    /// Removes all registrations, then lets go of the center.
    ~NotificationObserver();

    /// What it was made with; never another.
    const Ref<NotificationCenter>& notificationCenter() const noexcept { return m_notificationCenter; }

    /// Registers a callback for the notifications of `options`; without a name and a sender, for every one
    /// that is posted to the center.
    ///
    /// @returns The token with which `unobserve` ends this registration early. It may be ignored.
    Ref<NotificationToken> observe(const NotificationOptions& options, NotificationCenter::Callback callback,
        TraceSite site = TraceSite::current());

    /// Removes one registration. The token of another observer, one that was removed before, and an empty one
    /// are ignored. O(registrations).
    void unobserve(const Ref<NotificationToken>& token, TraceSite site = TraceSite::current());

    /// Removes all registrations in the order of their making. Afterwards new ones can be made.
    void unobserveAll();

private:
    Ref<NotificationCenter> m_notificationCenter;
    std::vector<Ref<NotificationToken>> m_observers;
};

} // namespace orrenby
