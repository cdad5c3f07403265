#include "Orrenby/Platform/Observing/NotificationCenter.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Observing/NotificationIndex.hpp"
#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// A throw out of the callback ends the process.
void call(detail::NotificationRegistration& registration, const Notification& notification) noexcept
{
    // It may have been removed by a callback before it, or while it waited in its queue.
    if (!registration.isRemoved.load(std::memory_order_relaxed))
        registration.callback(notification);
}

void deliver(detail::NotificationRegistration& registration, const Notification& notification)
{
    if (!registration.queue || registration.queue->isCurrent()) {
        call(registration, notification);
        return;
    }
    if (registration.isRemoved.load(std::memory_order_relaxed))
        return;
    // By reference, because the wait outlasts the operation.
    const auto operation = make<BlockOperation>([&] { call(registration, notification); });
    registration.queue->addOperations({operation}, {.waitUntilFinished = true});
}

} // namespace

NotificationCenter::NotificationCenter()
    : m_index(detail::Owned<detail::NotificationIndex>::make())
{}

NotificationCenter::~NotificationCenter() = default;

const Ref<NotificationCenter>& NotificationCenter::defaultCenter()
{
    static const auto& center = *new Ref<NotificationCenter>(
        std::make_shared<NotificationCenter>()); // used during exit, too
    return center;
}

Ref<NotificationToken> NotificationCenter::addObserver(
    const NotificationOptions& options, Callback callback, [[maybe_unused]] TraceSite site)
{
    if (!callback)
        fatalError("Empty callable in place of a callback", "Platform/NotificationCenter", 52);
#ifdef ORRENBY_DIAGNOSTICS
    Trace::report(Trace::Kind::Attach, "NotificationCenter", site);
#endif
    return m_index->add(options, std::move(callback));
}

void NotificationCenter::removeObserver(const Ref<NotificationToken>& token, [[maybe_unused]] TraceSite site)
{
    if (!token || !m_index->remove(*token))
        return;
#ifdef ORRENBY_DIAGNOSTICS
    Trace::report(Trace::Kind::Detach, "NotificationCenter", site);
#endif
}

void NotificationCenter::post(const Notification& notification)
{
    // Nothing of this center is touched after the first step: a callback may let go of it.
    detail::NotificationWalk walk;
    m_index->begin(walk, notification.name(), notification.sender());
    while (auto* const registration = walk.next())
        deliver(*registration, notification);
}

void NotificationCenter::post(NotificationName name, NotificationSender object, Dictionary userInfo)
{
    post(Notification(std::move(name), std::move(object), std::move(userInfo)));
}

std::size_t NotificationCenter::observerCount() const { return m_index->count(); }

} // namespace orrenby
