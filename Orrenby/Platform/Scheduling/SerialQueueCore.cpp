#include "Orrenby/Platform/Scheduling/SerialQueueCore.hpp"

#include "Orrenby/Platform/Scheduling/Backoff.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// What a queue keeps for the next work when it has none: a burst should not hold its memory for ever.
constexpr std::size_t keptCapacity = 4096;

void clear(std::vector<QueueTask>& tasks) noexcept
{
    if (tasks.capacity() > keptCapacity)
        std::vector<QueueTask>().swap(tasks);
    else
        tasks.clear();
}

} // namespace

SerialQueueCore::SerialQueueCore(std::string label)
    : SerialQueueCore(DispatchQueue::Kind::Serial, std::move(label))
{}

SerialQueueCore::SerialQueueCore(DispatchQueue::Kind kind, std::string label)
    : QueueCore(kind, std::move(label))
{}

void SerialQueueCore::append(QueueTask task)
{
    const auto state = lock();
    try {
        m_waiting.push_back(std::move(task));
    } catch (...) {
        unlock(state);
        throw;
    }
    if ((state & ownedBit) == 0)
        m_self = shared_from_this();
    unlock(state | ownedBit | waitingBit);
    if ((state & ownedBit) == 0)
        schedule(*this);
}

void SerialQueueCore::enter(QueueTurn::Kind)
{
    auto idle = State(0);
    if (m_state.compare_exchange_strong(idle, ownedBit, std::memory_order_acquire))
        return;
    const auto state = lock();
    if ((state & ownedBit) == 0) {
        unlock(state | ownedBit);
        return;
    }
    auto turn = Signal();
    try {
        m_waiting.push_back({{}, &turn});
    } catch (...) {
        unlock(state);
        throw;
    }
    unlock(state | waitingBit);
    turn.wait();
}

void SerialQueueCore::leave(QueueTurn::Kind) noexcept
{
    auto owned = ownedBit;
    if (m_state.compare_exchange_strong(owned, 0, std::memory_order_release))
        return;
    const auto state = lock();
    if ((state & waitingBit) == 0) {
        unlock(0);
        return;
    }
    m_self = shared_from_this();
    unlock(state);
    schedule(*this);
}

void SerialQueueCore::schedule(Job& job) { World::current().executor().execute(job); }

void SerialQueueCore::drain(Treatment treatment) noexcept
{
    const auto frame = QueueFrame(this, QueueFrame::Chain::Begins);
    for (std::size_t count = 0; m_next < m_batch.size() || refill(); ++count) {
        if (count == workPerRun) {
            schedule(*this);
            return;
        }
        auto task = std::move(m_batch[m_next++]);
        if (task.turn) {
            passTurn(*task.turn);
            return;
        }
        if (treatment == Treatment::Run)
            task.work();
    }
}

bool SerialQueueCore::refill() noexcept
{
    clear(m_batch);
    m_next = 0;
    const auto state = lock();
    if (m_waiting.empty()) {
        const auto self = std::move(
            m_self); // the last reference perhaps: nothing is touched after the unlock
        unlock(0);
        return false;
    }
    m_batch.swap(m_waiting);
    unlock(state);
    return true;
}

void SerialQueueCore::passTurn(Signal& turn) noexcept
{
    // The waiting caller holds the queue, and owns it from the signal on.
    const auto self = std::move(m_self);
    const auto state = lock();
    const auto isEmpty = m_next == m_batch.size() && m_waiting.empty();
    unlock(isEmpty ? state & ~waitingBit : state);
    turn.set();
}

SerialQueueCore::State SerialQueueCore::lock() noexcept
{
    auto backoff = Backoff();
    for (;;) {
        auto state = m_state.load(std::memory_order_relaxed);
        if ((state & lockedBit) == 0
            && m_state.compare_exchange_weak(
                state, state | lockedBit, std::memory_order_acquire, std::memory_order_relaxed))
            return state;
        backoff.pause();
    }
}

} // namespace orrenby::detail
