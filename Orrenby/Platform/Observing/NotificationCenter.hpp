#pragma once

/// @file
/// Where notifications are posted and observed.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Observing/Notification.hpp"
#include "Orrenby/Platform/Observing/NotificationToken.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include <cstddef>
#include <memory>
#include <optional>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

class NotificationIndex;

} // namespace detail

/// Which notifications an observer wants, and where it wants to receive them.
struct NotificationOptions {
    /// Only those of this name; without one, those of every name.
    std::optional<NotificationName> name{};
    /// Only those of this sender; without one, those of any sender and of nobody. It is not kept alive.
    NotificationSender object{};
    /// Where the callback runs; without one, on the thread that posts.
    std::optional<OperationQueue> queue{};
};

/// Passes notifications from whoever posts them to whoever wants them; neither knows the other.
///
/// There is a common one, and any number of own ones, made with `std::make_shared`. A registration lasts
/// until it is removed; `NotificationObserver` removes its own by itself.
///
/// @snippet Tests/Platform/Observing/NotificationCenterTests.cpp Posting a notification
///
/// **Order.** A post calls, before it returns, the callbacks whose registration matches when it begins, in
/// the order in which they were registered. What is registered during the post is not called for it; what is
/// removed is not called any more. A callback may post: that post is complete before the outer one goes on.
///
/// **Queues.** With an operation queue, the callback runs there as an operation, and the post waits for it;
/// the post runs it directly when it is on that queue already. An operation that is cancelled before it runs
/// calls nothing. A post to a suspended queue, or to one that waits for the poster, never returns.
///
/// **Senders** are told apart by which object they are, and held weakly: the registration for a sender that
/// is gone is never met again, and goes away when others are added, so that such registrations never
/// outnumber those in use by much.
///
/// A callback must not throw: a throw ends the process. It may be called by several threads at once, if
/// several post.
///
/// A post looks up its name and its sender and costs nothing for registrations that want others: O(1) plus
/// O(those that match). Registering is O(1), removing O(log n) among those that want the same, on average;
/// while a post delivers, the first of either copies the list of those that want the same.
///
/// Safe to use from several threads; no lock is held while a callback runs. When `removeObserver` returns,
/// nothing more begins on the calling thread; on another thread that posts at this moment, the callback may
/// be running or about to.
class ORRENBY_EXPORT NotificationCenter {
public:
    /// Takes the notification; called on the thread that posts, or on the queue of its registration.
    using Callback = UniqueFunction<void(const Notification&)>;

    NotificationCenter();
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    /// Drops what is registered.
    ~NotificationCenter();

    /// The one that everybody shares.
    static const Ref<NotificationCenter>& defaultCenter();

    /// Registers a callback: `center->addObserver({.name = draftWasSaved}, [](const Notification&) { … })`.
    ///
    /// @returns The token that removes the registration. It may be ignored; the registration stays.
    Ref<NotificationToken> addObserver(
        const NotificationOptions& options, Callback callback, TraceSite site = TraceSite::current());

    /// Ends a registration and lets go of its callback, once no post is in it. A token of another center, one
    /// that was removed already, and an empty one are ignored.
    void removeObserver(const Ref<NotificationToken>& token, TraceSite site = TraceSite::current());

    /// Delivers a notification to those who want it. With nobody to receive it, it costs a lock and up to
    /// four look-ups, and allocates nothing.
    void post(const Notification& notification);

    /// As above: `center->post(draftWasSaved, draft, {{"count", 3}})`.
    void post(NotificationName name, NotificationSender object = {}, Dictionary userInfo = {});

    /// Registrations in use; those for senders that are gone do not count. O(n). For summaries and tests.
    std::size_t observerCount() const;

private:
    const detail::Owned<detail::NotificationIndex> m_index;
};

} // namespace orrenby
