#include "Orrenby/Utilities/Discover/WorkerController.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

WorkerController::WorkerController(Workers workers)
    : m_workers(std::move(workers))
{
    for (const auto& worker : m_workers)
        if (!worker)
            fatalError("Empty reference in a list of workers", "Utilities/Discover");
}

WorkerController::~WorkerController() = default;

void WorkerController::startWorkers()
{
    // Copied, because a worker may drop the last reference to this controller.
    for (const auto& worker : Workers(m_workers))
        worker->start();
}

void WorkerController::stopWorkers()
{
    for (const auto& worker : Workers(m_workers))
        worker->stop();
}

void WorkerController::release() noexcept
{
    stopWorkers();
    for (auto& worker : std::exchange(m_workers, {}))
        worker.reset();
}

} // namespace orrenby
