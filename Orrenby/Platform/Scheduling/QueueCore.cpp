#include "Orrenby/Platform/Scheduling/QueueCore.hpp"

#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/Executor.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Work until its moment. The executor may run several of them side by side, so each sees to it that all
/// earlier ones are appended before it.
class DelayedWork final : public Job {
public:
    DelayedWork(std::shared_ptr<QueueCore> queue, UniqueFunction<void()> work)
        : m_queue(std::move(queue))
        , m_work(std::move(work))
    {}

    void run() noexcept override
    {
        const auto self = std::unique_ptr<DelayedWork>(this);
        m_queue->appendDelayed(*this);
    }

    void discard() noexcept override
    {
        const auto self = std::unique_ptr<DelayedWork>(this);
        m_queue->discardDelayed(*this);
    }

private:
    friend class QueueCore;

    static bool isLater(const DelayedWork* a, const DelayedWork* b) noexcept
    {
        return a->deadline != b->deadline ? a->deadline > b->deadline : a->m_number > b->m_number;
    }

    const std::shared_ptr<QueueCore> m_queue;
    UniqueFunction<void()> m_work;
    std::size_t m_number = 0;
};

QueueCore::QueueCore(DispatchQueue::Kind kind, std::string label)
    : m_kind(kind)
    , m_label(std::move(label))
{}

QueueCore::~QueueCore() = default;

void QueueCore::appendAfter(double seconds, UniqueFunction<void()> work)
{
    if (!(seconds > 0)) {
        append({std::move(work)});
        return;
    }
    auto delayed = std::make_unique<DelayedWork>(shared_from_this(), std::move(work));
    const auto& world = World::current();
    const auto lock = std::lock_guard(m_delayMutex);
    delayed->deadline = world.clock().monotonicSeconds() + seconds;
    delayed->m_number = ++m_delayNumber;
    m_delayed.push_back(delayed.get());
    std::push_heap(m_delayed.begin(), m_delayed.end(), DelayedWork::isLater);
    world.executor().executeAt(delayed->deadline, *delayed);
    delayed.release(); // until it runs
}

void QueueCore::appendDelayed(const DelayedWork& last)
{
    const auto lock = std::lock_guard(m_delayMutex);
    while (!m_delayed.empty() && !DelayedWork::isLater(m_delayed.front(), &last)) {
        append({std::move(m_delayed.front()->m_work)});
        std::pop_heap(m_delayed.begin(), m_delayed.end(), DelayedWork::isLater);
        m_delayed.pop_back();
    }
}

void QueueCore::discardDelayed(const DelayedWork& work) noexcept
{
    const auto lock = std::lock_guard(m_delayMutex);
    std::erase(m_delayed, &work);
    std::make_heap(m_delayed.begin(), m_delayed.end(), DelayedWork::isLater);
}

} // namespace orrenby::detail
