#include "Orrenby/Platform/Engines/Ground/Gate.hpp"

#include "Orrenby/Platform/Scheduling/Backoff.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

Queued::~Queued() = default;

Gate::~Gate()
{
    while (m_firstQueued)
        delete std::exchange(m_firstQueued, m_firstQueued->next);
}

void Gate::lock() noexcept
{
    auto backoff = Backoff();
    for (auto seen = word();;) {
        if (seen & lockedBit) {
            backoff.pause();
            seen = word();
        } else if (m_word.compare_exchange_weak(
                       seen, seen | lockedBit, std::memory_order_acquire, std::memory_order_relaxed))
            return;
    }
}

Gate::Entry Gate::enterOrLock() noexcept
{
    auto backoff = Backoff();
    for (;;) {
        auto seen = word();
        if (seen & closedBit)
            return Entry::Closed;
        if (seen == 0) {
            if (tryEnterLocked())
                return Entry::Delivering;
            continue;
        }
        const auto waits = (seen & lockedBit)
            || !(isDeliveredByThisThread() || (seen & orphanedBit) || backoff.isLong());
        if (waits)
            backoff.pause();
        else if (m_word.compare_exchange_weak(
                     seen, seen | lockedBit, std::memory_order_acquire, std::memory_order_relaxed))
            return Entry::Busy;
    }
}

void Gate::queue(Queued* queued) noexcept
{
    queued->number = m_queuedCount++;
    (m_lastQueued ? m_lastQueued->next : m_firstQueued) = queued;
    m_lastQueued = queued;
    add(workBit);
}

Queued* Gate::takeQueued() noexcept
{
    auto* const queued = m_firstQueued;
    if (queued) {
        m_firstQueued = queued->next;
        if (!m_firstQueued)
            m_lastQueued = nullptr;
    }
    return queued;
}

Queued* Gate::takeOrLeave() noexcept
{
    lock();
    auto* const queued = takeQueued();
    const auto rest = word() & closedBit;
    setDeliverer(queued ? threadToken() : 0);
    unlockAs(queued ? rest | deliveringBit : rest);
    return queued;
}

} // namespace orrenby::detail
