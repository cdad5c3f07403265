#include "Orrenby/Platform/Engines/Ground/SubscriberList.hpp"

#include "Orrenby/Platform/Engines/Ground/ProcessBarrier.hpp"
#include "Orrenby/Platform/Scheduling/Backoff.hpp"
#include <limits>

namespace orrenby::inline ORRENBY_ABI::detail {

void Slot::detach() noexcept { m_list.detach(*this); }

void Slot::wait() noexcept { m_list.wait(*this); }

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

SubscriberList::Joining SubscriberList::join(Slot& slot, bool wantsReplay) noexcept
{
    if (isClosed())
        return Joining::Closed;

    slot.m_subscription.retain();
    if (word() & deliveringBit) {
        slot.m_since = queuedCount();
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
    setDeliverer(threadToken());
    return Joining::Delivering;
}

void SubscriberList::finishReplay(const Counted& owner, Deliver deliver) noexcept
{
    lock();
    --m_replaying;
    const auto takesOver = m_replaying == 0 && (word() & orphanedBit);
    if (takesOver)
        setDeliverer(threadToken());
    unlockAs(word() & ~(lockedBit | (takesOver ? orphanedBit : 0)));
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
    const auto mustStay = state == Slot::State::Linked && (word() & deliveringBit);
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
    while (isOrdered ? m_current.load(std::memory_order_acquire) == &slot : isDelivering())
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
        auto rest = word() & closedBit;
        Queued* queued = nullptr;
        if (m_replaying != 0) {
            // Somebody is still inside a first value. Who ends the last such replay takes the queue over.
            rest |= deliveringBit | orphanedBit;
            isSettled = true;
        } else if ((queued = takeQueued())) {
            admitNewcomers(queued->number);
            rest |= deliveringBit; // no work bit: this loop comes back in any case
        } else {
            admitNewcomers(std::numeric_limits<std::uint64_t>::max());
            isSettled = true;
        }
        setDeliverer(queued ? threadToken() : 0);
        unlockAs(rest);

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
