#pragma once

/// @file
/// Lets one thread at a time deliver, without a lock held while it does.

#include "Orrenby/Platform/Engines/Ground/ThreadToken.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <atomic>
#include <cstdint>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Something, or the end, that came during a delivery and waits for its turn.
struct ORRENBY_EXPORT Queued {
    explicit Queued(bool end) noexcept
        : isEnd(end)
    {}
    virtual ~Queued();

    const bool isEnd;
    std::uint64_t number = 0;
    Queued* next = nullptr;
};

/// The right to deliver, and the queue of what comes while somebody has it.
///
/// One word is both a tiny lock, held for a few instructions and never during a callback, and the mark that a
/// delivery runs. Who finds a delivery running queues what he has, and the deliverer takes care of it before
/// it leaves: so nobody is called twice at a time, the order is one, and the stack does not grow.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT Gate {
public:
    /// What a thread that wants to deliver has got. The gate is locked, except when it is closed.
    enum class Entry {
        Closed,     // nothing: the source has ended
        Delivering, // the right to deliver: `unlock()`, deliver, `leave()`
        Busy,       // another delivery runs: `queue()`, then `unlock()`
    };

    Gate() = default;
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate();

    /// Gets the right to deliver if nobody else is here: the common case, one compare-and-swap.
    bool tryEnter() noexcept { return tryChangeFromIdle(deliveringBit); }

    /// As `tryEnter()`, and keeps the gate locked until `unlock()`, so that something can be stored first.
    bool tryEnterLocked() noexcept { return tryChangeFromIdle(deliveringBit | lockedBit); }

    /// Gets the right to deliver, or at least the lock during somebody else's delivery. Before it settles for
    /// the latter it waits some microseconds for the other delivery to end, unless that is this thread's own.
    Entry enterOrLock() noexcept;

    /// Ends the delivery, and first everything that was queued during it.
    /// @param deliver  Takes one `Queued*`, delivers it and deletes it.
    template <class Deliver> void leave(Deliver deliver) noexcept
    {
        if (tryLeave())
            return;
        while (auto* const queued = takeOrLeave())
            deliver(queued);
    }

    /// Waits for the lock, which others hold for a few instructions at most.
    void lock() noexcept;
    void unlock() noexcept { m_word.store(word() & ~lockedBit, std::memory_order_release); }

    bool isClosed() const noexcept { return (word() & closedBit) != 0; }

    /// From here on nobody gets the right to deliver any more. Needs the lock.
    void close() noexcept { add(closedBit); }

    /// Appends to the queue of the running delivery. Needs the lock, got as `Entry::Busy`.
    void queue(Queued* queued) noexcept;

protected:
    using Word = std::uint32_t;
    static constexpr Word lockedBit = 1;
    static constexpr Word deliveringBit = 2;
    static constexpr Word workBit = 4; // something gathered during the delivery
    static constexpr Word orphanedBit
        = 8; // the deliverer left while others go on in its place; the last of them takes over
    static constexpr Word closedBit = 16;

    Word word() const noexcept { return m_word.load(std::memory_order_relaxed); }

    /// Under the lock.
    void add(Word bits) noexcept { m_word.store(word() | bits, std::memory_order_relaxed); }

    /// Replaces the whole word, and with it the lock.
    void unlockAs(Word word) noexcept { m_word.store(word, std::memory_order_release); }

    /// Ends a delivery during which nothing gathered.
    bool tryLeave() noexcept
    {
        m_deliverer.store(0, std::memory_order_relaxed);
        auto expected = deliveringBit;
        return m_word.compare_exchange_strong(
            expected, 0, std::memory_order_release, std::memory_order_relaxed);
    }

    bool isDelivering() const noexcept
    {
        return (m_word.load(std::memory_order_acquire) & deliveringBit) != 0;
    }
    bool isDeliveredByThisThread() const noexcept
    {
        return m_deliverer.load(std::memory_order_relaxed) == threadToken();
    }
    void setDeliverer(std::uintptr_t thread) noexcept
    {
        m_deliverer.store(thread, std::memory_order_relaxed);
    }

    std::uint64_t queuedCount() const noexcept { return m_queuedCount; }

    /// The queue's first, or nothing. Under the lock.
    Queued* takeQueued() noexcept;

private:
    bool tryChangeFromIdle(Word word) noexcept
    {
        auto expected = Word(0);
        if (!m_word.compare_exchange_strong(
                expected, word, std::memory_order_acquire, std::memory_order_relaxed))
            return false;
        setDeliverer(threadToken());
        return true;
    }

    Queued* takeOrLeave() noexcept;

    std::atomic<Word> m_word = 0;
    std::atomic<std::uintptr_t> m_deliverer = 0;
    Queued* m_firstQueued = nullptr;
    Queued* m_lastQueued = nullptr;
    std::uint64_t m_queuedCount = 0;
};

} // namespace orrenby::detail
