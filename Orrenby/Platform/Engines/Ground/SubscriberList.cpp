#include "Orrenby/Platform/Engines/Ground/SubscriberList.hpp"

#include "Orrenby/Platform/Engines/Ground/Backoff.hpp"
#include "Orrenby/Platform/Engines/Ground/ProcessBarrier.hpp"
#include <limits>

namespace orrenby::inline ORRENBY_ABI::detail {

void Slot::detach() noexcept { m_list.detach(*this); }

void Slot::wait() noexcept { m_list.wait(*this); }

Queued::~Queued() = default;

SubscriberList::~SubscriberList()
{
    while (m_firstQueued)
        delete std::exchange(m_firstQueued, m_firstQueued->next);
}

void SubscriberList::Chain::append(Slot& slot) noexcept
{
    slot.m_previous = last;
    slot.m_next = nullptr;
    (last ? last->m_next : first) = &slot;
    last = &slot;
}

void SubscriberList::Chain::remove(Slot& slot) noexcept
{
    (slot.m_previous ? slot.m_previous->m_next : first) = slot.m_next;
    (slot.m_next ? slot.m_next->m_previous : last) = slot.m_previous;
}

void SubscriberList::lock() noexcept
{
    auto backoff = Backoff();
    for (auto word = m_word.load(std::memory_order_relaxed);;) {
        if (word & lockedBit) {
            backoff.pause();
            word = m_word.load(std::memory_order_relaxed);
        } else if (m_word.compare_exchange_weak(
                       word, word | lockedBit, std::memory_order_acquire, std::memory_order_relaxed))
            return;
    }
}

SubscriberList::Entry SubscriberList::enterOrLock() noexcept
{
    auto backoff = Backoff();
    for (;;) {
        auto word = m_word.load(std::memory_order_relaxed);
        if (word & closedBit)
            return Entry::Closed;
        if (word == 0) {
            if (tryEnterLocked())
                return Entry::Delivering;
            continue;
        }
        const auto waits = (word & lockedBit)
            || !(isDeliveredByThisThread() || (word & orphanedBit) || backoff.isLong());
        if (waits)
            backoff.pause();
        else if (m_word.compare_exchange_weak(
                     word, word | lockedBit, std::memory_order_acquire, std::memory_order_relaxed))
            return Entry::Busy;
    }
}

void SubscriberList::queue(Queued* queued) noexcept
{
    queued->number = m_queuedCount++;
    (m_lastQueued ? m_lastQueued->next : m_firstQueued) = queued;
    m_lastQueued = queued;
    add(workBit);
}

SubscriberList::Joining SubscriberList::join(Slot& slot, bool wantsReplay) noexcept
{
    const auto word = m_word.load(std::memory_order_relaxed);
    if (word & closedBit)
        return Joining::Closed;

    slot.m_subscription.retain();
    if (word & deliveringBit) {
        slot.m_since = m_queuedCount;
        slot.m_state.store(Slot::State::Newcomer, std::memory_order_relaxed);
        m_newcomers.append(slot);
        m_replaying += wantsReplay;
        add(workBit);
        return Joining::Newcomer;
    }

    slot.m_state.store(Slot::State::Linked, std::memory_order_relaxed);
    m_linked.append(slot);
    if (!wantsReplay)
        return Joining::Linked;
    add(deliveringBit);
    m_deliverer.store(threadToken(), std::memory_order_relaxed);
    return Joining::Delivering;
}

void SubscriberList::finishReplay(const Counted& owner, Deliver deliver) noexcept
{
    lock();
    --m_replaying;
    const auto word = m_word.load(std::memory_order_relaxed);
    const auto takesOver = m_replaying == 0 && (word & orphanedBit);
    if (takesOver) {
        m_word.store(word & ~orphanedBit, std::memory_order_relaxed);
        m_deliverer.store(threadToken(), std::memory_order_relaxed);
    }
    unlock();
    if (takesOver)
        settle(owner, deliver);
}

void SubscriberList::detach(Slot& slot) noexcept
{
    const auto seen = slot.m_state.load(std::memory_order_relaxed);
    if (seen == Slot::State::Idle || seen == Slot::State::Dead)
        return;

    lock();
    const auto state = slot.m_state.load(std::memory_order_relaxed);
    const auto isDelivering = (m_word.load(std::memory_order_relaxed) & deliveringBit) != 0;
    const auto mustStay = state == Slot::State::Linked && isDelivering;
    if (mustStay) {
        slot.deafen();
        slot.m_state.store(Slot::State::Dead, std::memory_order_relaxed);
        slot.m_nextGrave = std::exchange(m_graves, &slot);
        add(workBit);
    } else if (state == Slot::State::Linked || state == Slot::State::Newcomer) {
        (state == Slot::State::Linked ? m_linked : m_newcomers).remove(slot);
        slot.m_state.store(Slot::State::Idle, std::memory_order_relaxed);
    }
    unlock();
    if (!mustStay && (state == Slot::State::Linked || state == Slot::State::Newcomer))
        slot.m_subscription.release();
}

void SubscriberList::wait(const Slot& slot) noexcept
{
    if (isDeliveredByThisThread())
        return;
    // The deliverer announces a slot and then looks whether it is dead, we mark it dead and then look for the
    // announcement. The barrier orders both sides, so that the deliverer pays nothing for it.
    const auto isOrdered = processBarrier();
    auto backoff = Backoff();
    while (isOrdered ? m_current.load(std::memory_order_acquire) == &slot
                     : (m_word.load(std::memory_order_acquire) & deliveringBit) != 0)
        backoff.pause();
}

void SubscriberList::dropAll(Slot* graves) noexcept
{
    // Without the lock: the last reference destroys the subscriber's callback, which may do anything.
    while (graves) {
        auto* const next = graves->m_nextGrave;
        graves->m_subscription.release();
        graves = next;
    }
}

Slot* SubscriberList::bury() noexcept
{
    auto* const graves = std::exchange(m_graves, nullptr);
    for (auto* slot = graves; slot; slot = slot->m_nextGrave)
        m_linked.remove(*slot);
    return graves;
}

void SubscriberList::admitNewcomers(std::uint64_t number) noexcept
{
    while (m_newcomers.first && m_newcomers.first->m_since <= number) {
        auto& slot = *m_newcomers.first;
        m_newcomers.remove(slot);
        slot.m_state.store(Slot::State::Linked, std::memory_order_relaxed);
        m_linked.append(slot);
    }
}

void SubscriberList::settle(const Counted& owner, Deliver deliver) noexcept
{
    // A burial may drop the last subscription and with it the last share of the owner.
    const auto keeper = Retained<const Counted>::sharing(&owner);
    for (auto isSettled = false; !isSettled;) {
        lock();
        auto* const graves = bury();
        auto word = m_word.load(std::memory_order_relaxed) & closedBit;
        Queued* queued = nullptr;
        if (m_replaying != 0) {
            // Somebody is still inside a first value. Who ends the last such replay takes the queue over.
            word |= deliveringBit | orphanedBit;
            m_deliverer.store(0, std::memory_order_relaxed);
            isSettled = true;
        } else if ((queued = m_firstQueued)) {
            m_firstQueued = queued->next;
            if (!m_firstQueued)
                m_lastQueued = nullptr;
            admitNewcomers(queued->number);
            word |= deliveringBit; // no work bit: this loop comes back in any case
            m_deliverer.store(threadToken(), std::memory_order_relaxed);
        } else {
            admitNewcomers(std::numeric_limits<std::uint64_t>::max());
            m_deliverer.store(0, std::memory_order_relaxed);
            isSettled = true;
        }
        m_word.store(word, std::memory_order_release); // unlocks

        dropAll(graves);
        if (queued)
            deliver(*this, queued);
    }
}

void SubscriberList::removeAll() noexcept
{
    lock();
    Slot* graves = nullptr;
    for (auto* slot = m_linked.first; slot;) {
        auto* const next = slot->m_next;
        if (slot->m_state.load(std::memory_order_relaxed)
            == Slot::State::Linked) { // the dead stay for their burial
            m_linked.remove(*slot);
            slot->m_state.store(Slot::State::Idle, std::memory_order_relaxed);
            slot->m_nextGrave = std::exchange(graves, slot);
        }
        slot = next;
    }
    unlock();
    dropAll(graves);
}

} // namespace orrenby::detail
