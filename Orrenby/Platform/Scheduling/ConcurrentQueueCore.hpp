#pragma once

/// @file
/// The concurrent queue. Not in the umbrella header: part of the queues' own workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Scheduling/QueueCore.hpp"
#include "Orrenby/Platform/Scheduling/SpinLock.hpp"
#include "Orrenby/Platform/Scheduling/TaskRing.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Work runs in lanes: jobs that take one task after the other. One lane at most waits in the executor's
/// line, and calls the next when it begins; so there are as many as the executor lets run at once, without
/// the queue knowing how many that is.
class ConcurrentQueueCore final : public QueueCore {
public:
    explicit ConcurrentQueueCore(std::string label);
    ~ConcurrentQueueCore() override;

    void append(QueueTask task) override;
    void enter(QueueTurn::Kind kind) override;
    void leave(QueueTurn::Kind kind) noexcept override;

private:
    class Lane;
    using Guard = std::unique_lock<SpinLock>;

    /// Whether the first task may begin now.
    bool mayBegin() const noexcept;
    bool mayEnter(QueueTurn::Kind kind) const noexcept;
    void appendLocked(QueueTask&& task);
    QueueTask takeFirst() noexcept;
    void begin(QueueTurn::Kind kind) noexcept;
    void end(QueueTurn::Kind kind) noexcept;
    /// Puts a lane in line if there is something for it to do and none waits there. Releases the lock.
    void callLane(Guard& lock);
    void drain(Lane& lane, bool runs) noexcept;

    SpinLock m_lock; ///< Guards what follows.
    TaskRing m_tasks;
    std::size_t m_alone = 0;   ///< Tasks in line that must run alone.
    std::size_t m_running = 0; ///< Tasks and turns that have begun.
    bool m_isAlone = false;    ///< The one that runs must run alone.
    bool m_isLaneWaiting = false;
    /// That of the world in which a lane was called last. A lane that another one still has when the world is
    /// replaced does nothing any more. Only compared.
    const Executor* m_executor = nullptr;
    std::size_t m_lanes = 0; ///< In line or running.
    Job* m_freeLanes = nullptr;
    std::shared_ptr<QueueCore> m_self; ///< While there are lanes.
};

} // namespace orrenby::detail
