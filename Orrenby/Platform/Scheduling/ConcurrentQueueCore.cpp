#include "Orrenby/Platform/Scheduling/ConcurrentQueueCore.hpp"

#include "Orrenby/Platform/World/World.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

class ConcurrentQueueCore::Lane final : public Job {
public:
    explicit Lane(ConcurrentQueueCore& queue) noexcept
        : m_queue(queue)
    {}

    void run() noexcept override { m_queue.drain(*this, true); }
    void discard() noexcept override { m_queue.drain(*this, false); }

    const Executor* executor = nullptr; ///< Which has it.

private:
    ConcurrentQueueCore& m_queue;
};

ConcurrentQueueCore::ConcurrentQueueCore(std::string label)
    : QueueCore(DispatchQueue::Kind::Concurrent, std::move(label))
{}

ConcurrentQueueCore::~ConcurrentQueueCore()
{
    while (m_freeLanes)
        delete static_cast<Lane*>(std::exchange(m_freeLanes, m_freeLanes->next));
}

void ConcurrentQueueCore::append(QueueTask task)
{
    auto lock = Guard(m_lock);
    appendLocked(std::move(task));
    callLane(lock);
}

void ConcurrentQueueCore::enter(QueueTurn::Kind kind)
{
    auto lock = Guard(m_lock);
    if (mayEnter(kind)) {
        begin(kind);
        return;
    }
    auto turn = Signal();
    appendLocked({{}, &turn, kind});
    callLane(lock);
    turn.wait();
}

void ConcurrentQueueCore::leave(QueueTurn::Kind kind) noexcept
{
    auto lock = Guard(m_lock);
    end(kind);
    callLane(lock);
}

bool ConcurrentQueueCore::mayBegin() const noexcept
{
    return !m_tasks.isEmpty() && !m_isAlone
        && (m_running == 0 || m_tasks.front().kind == QueueTurn::Kind::Shared);
}

bool ConcurrentQueueCore::mayEnter(QueueTurn::Kind kind) const noexcept
{
    if (kind == QueueTurn::Kind::Shared)
        return !m_isAlone && m_alone == 0; // work in line has no need to begin before
    return m_running == 0 && m_tasks.isEmpty();
}

void ConcurrentQueueCore::appendLocked(QueueTask&& task)
{
    const auto kind = task.kind;
    m_tasks.append(std::move(task));
    m_alone += kind == QueueTurn::Kind::Alone;
}

QueueTask ConcurrentQueueCore::takeFirst() noexcept
{
    auto task = m_tasks.takeFirst();
    m_alone -= task.kind == QueueTurn::Kind::Alone;
    return task;
}

void ConcurrentQueueCore::begin(QueueTurn::Kind kind) noexcept
{
    ++m_running;
    m_isAlone = kind == QueueTurn::Kind::Alone;
}

void ConcurrentQueueCore::end(QueueTurn::Kind) noexcept
{
    --m_running;
    m_isAlone = false; // if it was, this was the one
}

void ConcurrentQueueCore::callLane(Guard& lock)
{
    if (!mayBegin()) {
        lock.unlock();
        return;
    }
    auto& executor = World::current().executor();
    if (m_isLaneWaiting && m_executor == &executor) {
        lock.unlock();
        return;
    }
    m_isLaneWaiting = true;
    m_executor = &executor;
    if (m_lanes++ == 0)
        m_self = shared_from_this();
    auto* lane = static_cast<Lane*>(m_freeLanes);
    if (lane)
        m_freeLanes = lane->next;
    lock.unlock();
    if (!lane)
        lane = new Lane(*this);
    lane->executor = &executor;
    executor.execute(*lane);
}

void ConcurrentQueueCore::drain(Lane& lane, bool runs) noexcept
{
    const auto frame = QueueFrame(this, QueueFrame::Chain::Begins);
    auto lock = Guard(m_lock);
    if (lane.executor == m_executor)
        m_isLaneWaiting = false;
    for (std::size_t count = 0; count < workPerRun && mayBegin() && lane.executor == m_executor; ++count) {
        auto task = takeFirst();
        begin(task.kind);
        if (task.turn) {
            lock.unlock();
            task.turn->set();
            lock.lock();
            continue;
        }
        callLane(lock);
        if (runs)
            task.work();
        task.work = nullptr;
        lock.lock();
        end(task.kind);
    }
    auto self = std::shared_ptr<QueueCore>();
    lane.next = m_freeLanes;
    m_freeLanes = &lane;
    // The last reference perhaps: nothing is touched after it is gone.
    if (--m_lanes == 0)
        self = std::move(m_self);
    callLane(lock);
}

} // namespace orrenby::detail
