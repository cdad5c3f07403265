#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Scheduling/Operation.hpp"
#include "Orrenby/Platform/Scheduling/OperationExtras.hpp"
#include <algorithm>
#include <mutex>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr auto source = "Platform/Scheduling/Operation";

/// Lets go of them one after the other. What they let go of in turn joins the line, so that a chain of any
/// length ends without recursion.
void letGo(std::vector<Ref<Operation>> operations)
{
    constinit static thread_local std::vector<Ref<Operation>>* line = nullptr;
    if (line != nullptr) {
        line->insert(line->end(), std::make_move_iterator(operations.begin()),
            std::make_move_iterator(operations.end()));
        return;
    }
    line = &operations;
    while (!operations.empty()) {
        const auto last = std::move(operations.back());
        operations.pop_back();
    }
    line = nullptr;
}

} // namespace

void Operation::Edge::close(const detail::OperationQueueCore* busy)
{
    if (m_isOpen.exchange(false))
        if (const auto dependent = m_dependent.lock())
            dependent->closeDependency(busy);
}

void Operation::addDependency(const Ref<Operation>& operation)
{
    if (!operation)
        fatalError("There is no operation to depend on", source, 48);
    if (operation.get() == this)
        fatalError("An operation cannot depend on itself", source, 50);
    auto self = weak_from_this();
    if (self.expired())
        fatalError("An operation with dependencies is held by Ref: make it with make<T>", source, 53);
    {
        const auto lock = std::lock_guard(m_mutex);
        if (m_isFinishNoticed || (m_extras && m_extras->dependencies.count(operation.get()) != 0))
            return;
    }
    const auto mustWait = !operation->isFinished();
    const auto edge = std::make_shared<Edge>(std::move(self), mustWait);
    willChangeValue("dependencies");
    if (mustWait)
        openDependency();
    auto isAdded = false;
    {
        const auto lock = std::lock_guard(m_mutex);
        if (!m_isFinishNoticed) {
            auto& all = extras();
            auto dependency = detail::OperationExtras::Dependency{operation, edge, all.dependencyCount};
            isAdded = all.dependencies.emplace(operation.get(), std::move(dependency)).second;
            all.dependencyCount += isAdded;
        }
    }
    didChangeValue("dependencies");
    if (!mustWait)
        return;
    // It may have finished meanwhile, and let others know before the edge was there.
    if (!isAdded || !operation->addDependent(edge) || operation->isFinished())
        edge->close();
}

bool Operation::addDependent(const Ref<Edge>& edge)
{
    const auto lock = std::lock_guard(m_mutex);
    if (m_isFinishNoticed)
        return false;
    auto& dependents = extras().dependents;
    if (dependents.size() == dependents.capacity()) {
        // Who adds and removes for ever should not fill the list. Once swept it has room for as many again.
        dependents.erase(std::remove_if(dependents.begin(), dependents.end(),
                             [](const Ref<Edge>& other) { return other->isSettled(); }),
            dependents.end());
        dependents.reserve(2 * dependents.size() + 1);
    }
    dependents.push_back(edge);
    return true;
}

void Operation::removeDependency(const Ref<Operation>& operation)
{
    {
        const auto lock = std::lock_guard(m_mutex);
        if (!m_extras || m_extras->dependencies.count(operation.get()) == 0)
            return;
    }
    willChangeValue("dependencies");
    auto edge = Ref<Edge>();
    {
        const auto lock = std::lock_guard(m_mutex);
        const auto found = m_extras->dependencies.find(operation.get());
        if (found != m_extras->dependencies.end()) {
            edge = std::move(found->second.edge);
            m_extras->dependencies.erase(found); // the caller holds the operation
        }
    }
    didChangeValue("dependencies");
    if (edge)
        edge->close();
}

std::vector<Ref<Operation>> Operation::dependencies() const
{
    auto numbered = std::vector<std::pair<std::uint64_t, Ref<Operation>>>();
    {
        const auto lock = std::lock_guard(m_mutex);
        if (m_extras)
            for (const auto& [address, dependency] : m_extras->dependencies)
                numbered.emplace_back(dependency.number, dependency.operation);
    }
    std::sort(numbered.begin(), numbered.end());
    auto result = std::vector<Ref<Operation>>();
    result.reserve(numbered.size());
    for (auto& [number, operation] : numbered)
        result.push_back(std::move(operation));
    return result;
}

void Operation::openDependency()
{
    const auto wasReady = m_openDependencies == 0 && !m_isCancelled;
    if (wasReady)
        willChangeValue("isReady");
    ++m_openDependencies;
    if (wasReady)
        didChangeValue("isReady");
}

void Operation::closeDependency(const detail::OperationQueueCore* busy)
{
    // Others may close theirs at this moment: then nobody, or somebody else, announced the change in time.
    const auto seemsLast = m_openDependencies == 1 && !m_isCancelled;
    if (seemsLast)
        willChangeValue("isReady");
    const auto isLast = --m_openDependencies == 0;
    const auto isLastAfterAll = isLast && !seemsLast && !m_isCancelled;
    if (isLastAfterAll)
        willChangeValue("isReady");
    if (seemsLast || isLastAfterAll)
        didChangeValue("isReady");
    if (isLast)
        noticeReady(busy);
}

void Operation::letGoOfDependencies() noexcept
{
    auto operations = std::vector<Ref<Operation>>();
    {
        const auto lock = std::lock_guard(m_mutex);
        if (!m_extras || m_extras->dependencies.empty())
            return;
        operations.reserve(m_extras->dependencies.size());
        for (auto& [address, dependency] : m_extras->dependencies)
            operations.push_back(std::move(dependency.operation));
        m_extras->dependencies.clear();
    }
    letGo(std::move(operations));
}

} // namespace orrenby
