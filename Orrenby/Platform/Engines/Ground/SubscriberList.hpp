#pragma once

/// @file
/// The subscribers of one source, and the right to deliver to them.

#include "Orrenby/Platform/Engines/Ground/Gate.hpp"
#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

class SubscriberList;

/// The place of a subscription in the list of its source. Changed under the list's lock only.
class ORRENBY_EXPORT Slot : public SourceLink {
public:
    Slot(SubscriberList& list, Subscription& subscription) noexcept
        : m_list(list)
        , m_subscription(subscription)
    {}

    Slot* next() const noexcept { return m_next; }

    void detach() noexcept override;
    void wait() noexcept override;

protected:
    /// From here on the slot takes values without passing them on. A deliverer may be reading the slot at
    /// this moment.
    virtual void deafen() noexcept = 0;

private:
    enum class State : std::uint8_t {
        Idle,     // in no list, before and after its life there
        Newcomer, // came during a delivery, joins when that one ends
        Linked,
        Dead, // cancelled during a delivery, still in the list until the deliverer buries it
    };

    SubscriberList& m_list;
    Subscription& m_subscription;
    Slot* m_previous = nullptr;
    Slot* m_next = nullptr;
    union {
        std::uint64_t m_since = 0; // of a newcomer: it gets queued values from this number on
        Slot* m_nextGrave;         // of a dead one
    };
    std::atomic<State> m_state = State::Idle;

    friend class SubscriberList;
};

/// Keeps the subscribers of one source in the order of their coming, and lets one thread at a time deliver to
/// them.
///
/// During a delivery the list is not changed: who cancels is marked dead and buried by the deliverer, who
/// comes waits in a list of newcomers, what is sent is numbered and queued. The deliverer settles all of that
/// before it leaves. A newcomer gets what was sent after it came, nothing earlier.
///
/// The source above supplies the values: see SubjectBase.hpp. Safe to use from several threads.
class ORRENBY_EXPORT SubscriberList : private Gate {
public:
    using Gate::close;
    using Gate::enterOrLock;
    using Gate::Entry;
    using Gate::isClosed;
    using Gate::lock;
    using Gate::queue;
    using Gate::tryEnter;
    using Gate::tryEnterLocked;
    using Gate::unlock;

    /// Ends the delivery, and first everything that gathered during it: burials, newcomers, queued values.
    /// @param owner    The object that holds this list, kept alive as long as needed.
    /// @param deliver  Delivers one queued value and deletes it.
    using Deliver = void (*)(SubscriberList& list, Queued* queued) noexcept;
    void leave(const Counted& owner, Deliver deliver) noexcept
    {
        if (!tryLeave())
            settle(owner, deliver);
    }

    /// Calls `deliver` with every slot in the list, also the deaf ones. For the thread that delivers.
    template <class Function> void forEachSlot(Function deliver) noexcept
    {
        for (auto* slot = m_linked.first; slot; slot = slot->next()) {
            m_current.store(slot, std::memory_order_relaxed);
            std::atomic_signal_fence(
                std::memory_order_seq_cst); // announce, then read the receiver: see wait()
            deliver(*slot);
        }
        m_current.store(nullptr, std::memory_order_release);
    }

    /// Takes everybody off the list. For the thread that delivers the end.
    void removeAll() noexcept;

    /// How a subscriber joined.
    enum class Joining {
        Closed,     // not at all: the source has ended
        Linked,     // in the list; nobody delivers
        Delivering, // in the list, and this thread has the right to deliver (only if asked for)
        Newcomer,   // waits for the end of somebody's delivery
    };

    /// Joins a slot. Needs the lock and keeps it. With `wantsReplay` the caller delivers a first value to the
    /// slot after `unlock()`, then calls `leave` (if it is `Delivering`) or `finishReplay` (if it is a
    /// `Newcomer`).
    Joining join(Slot& slot, bool wantsReplay) noexcept;

    /// Ends the replay to a newcomer. If the deliverer has gone meanwhile, this thread takes over what is
    /// queued.
    void finishReplay(const Counted& owner, Deliver deliver) noexcept;

private:
    struct Chain {
        Slot* first = nullptr;
        Slot* last = nullptr;
        void append(Slot& slot) noexcept;
        void remove(Slot& slot) noexcept;
    };

    void detach(Slot& slot) noexcept;
    void wait(const Slot& slot) noexcept;
    void settle(const Counted& owner, Deliver deliver) noexcept;
    Slot* bury() noexcept;
    static void dropAll(Slot* graves) noexcept;
    void admitNewcomers(std::uint64_t number) noexcept;

    std::uint32_t m_replaying = 0;
    std::atomic<const Slot*> m_current = nullptr;
    Chain m_linked;
    Chain m_newcomers;
    Slot* m_graves = nullptr;

    friend class Slot;
};

} // namespace orrenby::detail
