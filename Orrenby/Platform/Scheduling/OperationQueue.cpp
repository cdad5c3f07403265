#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"

#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Platform/Scheduling/OperationFrame.hpp"
#include "Orrenby/Platform/Scheduling/OperationPlace.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueueCore.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

using detail::OperationPlace;
using detail::OperationQueueCore;

OperationQueue::OperationQueue()
    : OperationQueue(std::make_shared<OperationQueueCore>(OperationQueueCore::Kind::Usual))
{}

OperationQueue::OperationQueue(Ref<OperationQueueCore> core) noexcept
    : m_core(std::move(core))
{}

OperationQueue OperationQueue::main() { return OperationQueue(OperationQueueCore::main()); }

std::optional<OperationQueue> OperationQueue::current()
{
    if (auto* const queue = detail::OperationFrame::queue())
        return OperationQueue(queue->shared_from_this());
    if (OperationQueueCore::main()->isCurrent())
        return main();
    return std::nullopt;
}

bool OperationQueue::isCurrent() const noexcept { return m_core->isCurrent(); }

void OperationQueue::addOperation(Ref<Operation> operation, [[maybe_unused]] TraceSite site) const
{
    Trace::report(Trace::Kind::Schedule, "OperationQueue", site);
    m_core->add(operation, OperationPlace::Kind::Usual);
}

void OperationQueue::addOperation(UniqueFunction<void()> block, [[maybe_unused]] TraceSite site) const
{
    Trace::report(Trace::Kind::Schedule, "OperationQueue", site);
    m_core->add(make<BlockOperation>(std::move(block)), OperationPlace::Kind::Usual);
}

void OperationQueue::addOperations(
    const std::vector<Ref<Operation>>& operations, AddOperationsOptions options, TraceSite site) const
{
    for (const auto& operation : operations)
        addOperation(operation, site);
    if (options.waitUntilFinished)
        for (const auto& operation : operations)
            operation->waitUntilFinished();
}

void OperationQueue::addBarrierBlock(UniqueFunction<void()> block, [[maybe_unused]] TraceSite site) const
{
    Trace::report(Trace::Kind::Schedule, "OperationQueue", site);
    m_core->add(make<BlockOperation>(std::move(block)), OperationPlace::Kind::Barrier);
}

void OperationQueue::cancelAllOperations() const
{
    for (const auto& operation : operations())
        operation->cancel();
}

void OperationQueue::waitUntilAllOperationsAreFinished() const { m_core->waitUntilEmpty(); }

std::vector<Ref<Operation>> OperationQueue::operations() const { return m_core->operations(); }
std::size_t OperationQueue::operationCount() const { return m_core->count(); }

bool OperationQueue::isSuspended() const { return m_core->isSuspended(); }
void OperationQueue::setSuspended(bool isSuspended) const { m_core->setSuspended(isSuspended); }

int OperationQueue::maxConcurrentOperationCount() const { return m_core->limit(); }
void OperationQueue::setMaxConcurrentOperationCount(int count) const { m_core->setLimit(count); }

std::optional<DispatchQueue> OperationQueue::underlyingQueue() const { return m_core->underlyingQueue(); }
void OperationQueue::setUnderlyingQueue(std::optional<DispatchQueue> queue) const
{
    m_core->setUnderlyingQueue(std::move(queue));
}

std::string OperationQueue::name() const { return m_core->name(); }
void OperationQueue::setName(std::string name) const { m_core->setName(std::move(name)); }

} // namespace orrenby
