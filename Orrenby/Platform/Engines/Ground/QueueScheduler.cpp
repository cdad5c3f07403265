#include "Orrenby/Platform/Engines/Ground/QueueScheduler.hpp"

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

class DispatchScheduler final : public QueueScheduler {
public:
    explicit DispatchScheduler(const DispatchQueue& queue)
        : m_queue(queue)
    {}
    void post(UniqueFunction<void()> work) const override { m_queue.async(std::move(work)); }

private:
    const DispatchQueue m_queue;
};

class OperationScheduler final : public QueueScheduler {
public:
    explicit OperationScheduler(const OperationQueue& queue)
        : m_queue(queue)
    {}
    void post(UniqueFunction<void()> work) const override { m_queue.addOperation(std::move(work)); }

private:
    const OperationQueue m_queue;
};

template <class Scheduler, class Queue> Retained<const QueueScheduler> make(const Queue& queue)
{
    return Retained<const Scheduler>::adopting(new Scheduler(queue));
}

} // namespace

Retained<const QueueScheduler> schedulerOn(const DispatchQueue& queue)
{
    return make<DispatchScheduler>(queue);
}

Retained<const QueueScheduler> schedulerOn(const OperationQueue& queue)
{
    return make<OperationScheduler>(queue);
}

} // namespace orrenby::detail
