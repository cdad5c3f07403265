#pragma once

/// @file
/// The serial queue. Not in the umbrella header: part of the queues' own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Scheduling/QueueCore.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Has an owner or not: the job that drains it, or a caller of `sync` whose turn it is. Who finds it without
/// one becomes the owner; everybody else appends to what waits, and the owner sees to that.
///
/// What waits stands in two buffers: one that is appended to, one that the job takes from without a lock.
/// They change places when the latter is empty. One word is both the lock of the former, held for a few
/// instructions, and the mark of an owner, so that a turn on an idle queue costs two compare-and-swaps.
class SerialQueueCore : public QueueCore, protected Job {
public:
    explicit SerialQueueCore(std::string label);

    void append(QueueTask task) final;
    void enter(QueueTurn::Kind kind) final;
    void leave(QueueTurn::Kind kind) noexcept final;

protected:
    SerialQueueCore(DispatchQueue::Kind kind, std::string label);

private:
    using State = std::uint32_t;
    static constexpr State lockedBit = 1;
    static constexpr State ownedBit = 2;
    static constexpr State waitingBit = 4; ///< Something may wait; the owner looks before it leaves.

    enum class Treatment { Run, Drop };

    /// Hands the job over to where the queue's work runs.
    virtual void schedule(Job& job);

    void run() noexcept final { drain(Treatment::Run); }
    void discard() noexcept final { drain(Treatment::Drop); }
    void drain(Treatment treatment) noexcept;
    /// The next task of the job, or nothing when the queue is idle now and the core may be gone.
    bool refill() noexcept;
    void passTurn(Signal& turn) noexcept;

    State lock() noexcept;
    void unlock(State state) noexcept { m_state.store(state & ~lockedBit, std::memory_order_release); }

    std::atomic<State> m_state = 0;
    std::vector<QueueTask> m_waiting; ///< Guarded by the lock; the rest belongs to the owner.
    std::vector<QueueTask> m_batch;
    std::size_t m_next = 0;
    std::shared_ptr<QueueCore> m_self; ///< While the job is the owner.
};

} // namespace orrenby::detail
