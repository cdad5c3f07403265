#include "Orrenby/Utilities/Discover/ContextCore.hpp"

#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

ContextCore::ContextCore(Workers workers, Ref<Worker> analytics)
{
    workers.push_back(std::move(analytics));
    m_workerController = make<WorkerController>(std::move(workers));
}

ContextCore::~ContextCore() = default;

bool ContextCore::isActive() const { return m_isActive; }

void ContextCore::activate()
{
    if (isActive())
        return;
    m_isActive = true;
    didBecomeActive();
    m_workerController->startWorkers();
}

void ContextCore::deactivate()
{
    if (!isActive())
        return;
    m_workerController->stopWorkers();
    willResignActive();
    cancelCancellables();
    m_isActive = false;
}

Workers ContextCore::workers() const { return m_workerController->workers(); }

void ContextCore::didBecomeActive() {}

void ContextCore::willResignActive() {}

} // namespace orrenby::detail
