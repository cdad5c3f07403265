#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"

#include "Orrenby/Platform/Scheduling/ConcurrentQueueCore.hpp"
#include "Orrenby/Platform/Scheduling/QueueCore.hpp"
#include "Orrenby/Platform/Scheduling/SerialQueueCore.hpp"

namespace orrenby::inline ORRENBY_ABI {

DispatchQueue::DispatchQueue(std::shared_ptr<detail::QueueCore> core) noexcept
    : m_core(std::move(core))
{}

DispatchQueue DispatchQueue::serial(std::string label)
{
    return DispatchQueue(std::make_shared<detail::SerialQueueCore>(std::move(label)));
}

DispatchQueue DispatchQueue::concurrent(std::string label)
{
    return DispatchQueue(std::make_shared<detail::ConcurrentQueueCore>(std::move(label)));
}

DispatchQueue DispatchQueue::main() { return DispatchQueue(detail::mainQueueCore()); }

DispatchQueue DispatchQueue::global()
{
    static const auto& queue = *new DispatchQueue(concurrent("global"));
    return queue;
}

void DispatchQueue::async(UniqueFunction<void()> work, [[maybe_unused]] TraceSite site) const
{
    Trace::report(Trace::Kind::Schedule, "DispatchQueue", site);
    m_core->append({std::move(work)});
}

void DispatchQueue::barrierAsync(UniqueFunction<void()> work, [[maybe_unused]] TraceSite site) const
{
    Trace::report(Trace::Kind::Schedule, "DispatchQueue", site);
    m_core->append({std::move(work), nullptr, detail::QueueTurn::Kind::Alone});
}

void DispatchQueue::asyncAfter(
    double seconds, UniqueFunction<void()> work, [[maybe_unused]] TraceSite site) const
{
    Trace::report(Trace::Kind::Schedule, "DispatchQueue", site);
    m_core->appendAfter(seconds, std::move(work));
}

bool DispatchQueue::isCurrent() const noexcept { return m_core->isCurrent(); }
const std::string& DispatchQueue::label() const noexcept { return m_core->label(); }
DispatchQueue::Kind DispatchQueue::kind() const noexcept { return m_core->kind(); }

} // namespace orrenby
