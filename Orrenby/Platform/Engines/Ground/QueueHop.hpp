#pragma once

/// @file
/// The part of a hop to a queue that does not depend on the type of its values.

#include "Orrenby/Platform/Engines/Ground/QueueScheduler.hpp"
#include "Orrenby/Platform/Engines/Ground/Subscription.hpp"
#include "Orrenby/Platform/Scheduling/SpinLock.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Posts one job for all values that gather until it begins, and lets one job at a time deliver.
///
/// So the place of a batch among other work of the queue is that of its first value. A job that begins while
/// another one delivers, as a concurrent queue may have it, leaves its batch to that one: the order is kept.
///
/// A job that the queue drops without running it loses nothing: the next one takes its values too.
class ORRENBY_EXPORT QueueHop : public SourceLink {
public:
    QueueHop(Subscription& subscription, const QueueScheduler& scheduler) noexcept
        : m_subscription(subscription)
        , m_scheduler(scheduler)
    {}

    void detach() noexcept override {} // deliveries look at the subscription themselves
    void wait() noexcept override;

protected:
    void lock() noexcept { m_lock.lock(); }

    /// Sees to it that what has gathered is delivered.
    void unlockAndPost() noexcept
    {
        const auto posts = !std::exchange(m_isPosted, true);
        m_lock.unlock();
        if (posts)
            post();
    }

    bool isCancelled() const noexcept { return m_subscription.isCancelled(); }

private:
    class Posted;

    /// Makes what has gathered the batch to deliver, and gives how much that is. Under the lock.
    virtual std::size_t takeBatch() noexcept = 0;
    virtual void deliverBatch() noexcept = 0;

    void post() noexcept;
    void run() noexcept;
    bool takeNext() noexcept;
    void letGather() const noexcept;
    void drop() noexcept;

    Subscription& m_subscription;
    const QueueScheduler& m_scheduler;
    SpinLock m_lock;
    std::atomic<bool> m_wasSmall = false;        // the batch before
    bool m_isPosted = false;                     // a job waits in the queue
    bool m_isBehind = false;                     // a job came while another one delivered
    std::atomic<std::uintptr_t> m_deliverer = 0; // 0 while nobody delivers
};

} // namespace orrenby::detail
