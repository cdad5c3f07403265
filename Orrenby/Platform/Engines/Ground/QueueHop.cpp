#include "Orrenby/Platform/Engines/Ground/QueueHop.hpp"

#include "Orrenby/Platform/Engines/Ground/ProcessBarrier.hpp"
#include "Orrenby/Platform/Engines/Ground/ThreadToken.hpp"
#include "Orrenby/Platform/Scheduling/Backoff.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// The job of a hop in a queue. It keeps the subscription while it is there.
class QueueHop::Posted {
public:
    explicit Posted(QueueHop& hop) noexcept
        : m_hop(&hop)
    {
        hop.m_subscription.retain();
    }

    Posted(Posted&& other) noexcept
        : m_hop(std::exchange(other.m_hop, nullptr))
    {}
    Posted& operator=(Posted&&) = delete;

    ~Posted()
    {
        if (m_hop)
            std::exchange(m_hop, nullptr)->drop();
    }

    void operator()() noexcept { std::exchange(m_hop, nullptr)->run(); }

private:
    QueueHop* m_hop;
};

void QueueHop::post() noexcept { m_scheduler.post(Posted(*this)); }

void QueueHop::drop() noexcept
{
    lock();
    m_isPosted = false;
    m_lock.unlock();
    m_subscription.release();
}

void QueueHop::letGather() const noexcept
{
    // Whoever sends value upon value would post a job for each few of them, and wake a thread for it, which
    // costs far more than to wait some microseconds for more. A batch that was large shows that they gather
    // by themselves.
    constexpr auto rounds = 4;
    if (!m_wasSmall.load(std::memory_order_relaxed))
        return;
    for (auto round = 0; round < rounds; ++round)
        for (auto backoff = Backoff(); !backoff.isLong();)
            backoff.pause();
}

bool QueueHop::takeNext() noexcept
{
    constexpr std::size_t smallCount = 16;
    const auto count = takeBatch();
    m_wasSmall.store(count < smallCount, std::memory_order_relaxed);
    return count != 0;
}

void QueueHop::run() noexcept
{
    letGather();
    lock();
    m_isPosted = false;
    m_isBehind = m_deliverer.load(std::memory_order_relaxed) != 0;
    if (!m_isBehind && takeNext()) {
        m_deliverer.store(threadToken(), std::memory_order_relaxed);
        do {
            m_isBehind = false;
            m_lock.unlock();
            std::atomic_signal_fence(std::memory_order_seq_cst); // announce, then look: see wait()
            deliverBatch();
            lock();
        } while (m_isBehind && takeNext());
        m_deliverer.store(0, std::memory_order_release);
    }
    m_lock.unlock();
    m_subscription.release();
}

void QueueHop::wait() noexcept
{
    // The deliverer announces itself and then looks whether the subscription is cancelled; here it is the
    // other way round. The barrier orders both sides. Without it, the lock that each batch takes must do.
    if (m_deliverer.load(std::memory_order_relaxed) == threadToken())
        return;
    if (!processBarrier()) {
        lock();
        m_lock.unlock();
    }
    auto backoff = Backoff();
    while (m_deliverer.load(std::memory_order_acquire) != 0)
        backoff.pause();
}

} // namespace orrenby::detail
