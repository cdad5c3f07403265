#pragma once

/// @file
/// A stream that goes on in a queue.

#include "Orrenby/Platform/Engines/Ground/MapPublication.hpp"
#include "Orrenby/Platform/Engines/Ground/QueueHop.hpp"
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Gathers values and delivers them on the queue, whole batches at a time.
template <class T> class ReceiveOnNode final : public QueueHop {
public:
    ReceiveOnNode(
        Subscription& subscription, const QueueScheduler& scheduler, Receiver<T>& downstream) noexcept
        : QueueHop(subscription, scheduler)
        , m_downstream(downstream)
    {}

    void receive(Pass<T> value) noexcept
    {
        auto copy = T(value); // outside of the lock: it may run foreign code
        lock();
        m_gathered.push_back(std::move(copy));
        unlockAndPost();
    }

    void finish() noexcept
    {
        lock();
        m_hasEnded = true;
        unlockAndPost();
    }

private:
    std::size_t takeBatch() noexcept override
    {
        std::swap(m_gathered, m_batch);
        m_batchEnds = std::exchange(m_hasEnded, false);
        return m_batch.size() + m_batchEnds;
    }

    void deliverBatch() noexcept override
    {
        for (const auto& value : m_batch) {
            if (isCancelled())
                break;
            m_downstream.receive(value);
        }
        m_batch.clear();
        if (m_batchEnds && !isCancelled())
            m_downstream.finish();
    }

    Receiver<T>& m_downstream;
    std::vector<T> m_gathered; // under the lock
    bool m_hasEnded = false;   // under the lock
    std::vector<T> m_batch;    // of whoever delivers, like the next
    bool m_batchEnds = false;
};

/// Where the values come in.
template <class T> class ReceiveOnInlet final : public Receiver<T> {
public:
    explicit ReceiveOnInlet(ReceiveOnNode<T>& node) noexcept
        : m_node(node)
    {}

    void receive(Pass<T> value) noexcept override { m_node.receive(value); }
    void finish() noexcept override { m_node.finish(); }

private:
    ReceiveOnNode<T>& m_node;
};

/// Delivers the values of another stream on a queue, in their order also where the queue runs several jobs at
/// a time.
template <class T> class ReceiveOnPublication final : public Operator<T, T> {
public:
    ReceiveOnPublication(Retained<const Publication<T>> upstream, Retained<const QueueScheduler> scheduler)
        : Operator<T, T>(std::move(upstream),
            Subscription::bytesFor<ReceiveOnNode<T>>() + Subscription::bytesFor<ReceiveOnInlet<T>>())
        , m_scheduler(std::move(scheduler))
    {}

    void connect(Subscription::Builder& builder, Receiver<T>& downstream) const override
    {
        auto& node = builder.template addSource<ReceiveOnNode<T>>(
            builder.subscription(), *m_scheduler, downstream);
        this->m_upstream->connect(builder, builder.template add<ReceiveOnInlet<T>>(node));
    }

private:
    const Retained<const QueueScheduler> m_scheduler;
};

} // namespace orrenby::detail
