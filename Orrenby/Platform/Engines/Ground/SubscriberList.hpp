#pragma once

/// @file
/// The subscribers of one source, and the right to deliver to them.

#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"
#include "Orrenby/Platform/Engines/Ground/ThreadToken.hpp"

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

/// A value, or the end, that was sent during a delivery and waits for its turn.
struct ORRENBY_EXPORT Queued {
    explicit Queued(bool end) noexcept
        : isEnd(end)
    {}
    virtual ~Queued();

    const bool isEnd;
    std::uint64_t number = 0;
    Queued* next = nullptr;
};

/// Keeps the subscribers of one source in the order of their coming, and lets one thread at a time deliver to
/// them.
///
/// One word is both a tiny lock, held for a few instructions and never during a callback, and the mark that a
/// delivery runs. During a delivery the list is not changed: who cancels is marked dead and buried by the
/// deliverer, who comes waits in a list of newcomers, what is sent is numbered and queued. The deliverer
/// settles all of that before it leaves. A newcomer gets what was sent after it came, nothing earlier.
///
/// The source above supplies the values: see SubjectBase.hpp. Safe to use from several threads.
class ORRENBY_EXPORT SubscriberList {
public:
    /// What a thread that wants to deliver has got. The list is locked, except when it is closed.
    enum class Entry {
        Closed,     // nothing: the source has ended
        Delivering, // the right to deliver: `unlock()`, deliver, `leave()`
        Busy,       // another delivery runs: `queue()`, then `unlock()`
    };

    SubscriberList() = default;
    SubscriberList(const SubscriberList&) = delete;
    SubscriberList& operator=(const SubscriberList&) = delete;
    ~SubscriberList();

    // --- The right to deliver

    /// Gets the right to deliver if nobody else is here: the common case, one compare-and-swap.
    bool tryEnter() noexcept { return tryChangeFromIdle(deliveringBit); }

    /// As `tryEnter()`, and keeps the list locked until `unlock()`, so that a current value can be stored
    /// first.
    bool tryEnterLocked() noexcept { return tryChangeFromIdle(deliveringBit | lockedBit); }

    /// Gets the right to deliver, or at least the lock during somebody else's delivery. Before it settles for
    /// the latter it waits some microseconds for the other delivery to end, unless that is this thread's own.
    Entry enterOrLock() noexcept;

    /// Ends the delivery, and first everything that gathered during it: burials, newcomers, queued values.
    /// @param owner    The object that holds this list, kept alive as long as needed.
    /// @param deliver  Delivers one queued value and deletes it.
    using Deliver = void (*)(SubscriberList& list, Queued* queued) noexcept;
    void leave(const Counted& owner, Deliver deliver) noexcept
    {
        m_deliverer.store(0, std::memory_order_relaxed);
        auto expected = deliveringBit;
        if (!m_word.compare_exchange_strong(
                expected, 0, std::memory_order_release, std::memory_order_relaxed))
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

    // --- Under the lock

    /// Waits for the lock, which others hold for a few instructions at most.
    void lock() noexcept;
    void unlock() noexcept
    {
        m_word.store(m_word.load(std::memory_order_relaxed) & ~lockedBit, std::memory_order_release);
    }

    bool isClosed() const noexcept { return (m_word.load(std::memory_order_relaxed) & closedBit) != 0; }

    /// From here on nothing more is sent and nobody more comes. Needs the lock.
    void close() noexcept
    {
        m_word.store(m_word.load(std::memory_order_relaxed) | closedBit, std::memory_order_relaxed);
    }

    /// Appends to the queue of the running delivery. Needs the lock, got as `Entry::Busy`.
    void queue(Queued* queued) noexcept;

    // --- Joining

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
    using Word = std::uint32_t;
    static constexpr Word lockedBit = 1;
    static constexpr Word deliveringBit = 2;
    static constexpr Word workBit = 4; // something gathered during the delivery
    static constexpr Word orphanedBit
        = 8; // the deliverer left while replays ran; the last of them takes over
    static constexpr Word closedBit = 16;

    struct Chain {
        Slot* first = nullptr;
        Slot* last = nullptr;
        void append(Slot& slot) noexcept;
        void remove(Slot& slot) noexcept;
    };

    bool tryChangeFromIdle(Word word) noexcept
    {
        auto expected = Word(0);
        if (!m_word.compare_exchange_strong(
                expected, word, std::memory_order_acquire, std::memory_order_relaxed))
            return false;
        m_deliverer.store(threadToken(), std::memory_order_relaxed);
        return true;
    }

    bool isDeliveredByThisThread() const noexcept
    {
        return m_deliverer.load(std::memory_order_relaxed) == threadToken();
    }
    void add(Word bits) noexcept
    {
        m_word.store(m_word.load(std::memory_order_relaxed) | bits, std::memory_order_relaxed);
    }
    void detach(Slot& slot) noexcept;
    void wait(const Slot& slot) noexcept;
    void settle(const Counted& owner, Deliver deliver) noexcept;
    Slot* bury() noexcept;
    static void dropAll(Slot* graves) noexcept;
    void admitNewcomers(std::uint64_t number) noexcept;

    std::atomic<Word> m_word = 0;
    std::uint32_t m_replaying = 0;
    std::atomic<std::uintptr_t> m_deliverer = 0;
    std::atomic<const Slot*> m_current = nullptr;
    Chain m_linked;
    Chain m_newcomers;
    Slot* m_graves = nullptr;
    Queued* m_firstQueued = nullptr;
    Queued* m_lastQueued = nullptr;
    std::uint64_t m_queuedCount = 0;

    friend class Slot;
};

} // namespace orrenby::detail
