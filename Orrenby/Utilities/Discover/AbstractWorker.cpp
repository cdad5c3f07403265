#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"

namespace orrenby::inline ORRENBY_ABI {

AbstractWorker::AbstractWorker() = default;
AbstractWorker::~AbstractWorker() = default;

bool AbstractWorker::isWorking() const { return m_isWorking; }

void AbstractWorker::start()
{
    if (isWorking())
        return;
    m_isWorking = true;
    didStart();
}

void AbstractWorker::stop()
{
    if (!isWorking())
        return;
    willStop();
    cancelCancellables();
    m_isWorking = false;
}

void AbstractWorker::didStart() {}

void AbstractWorker::willStop() {}

void AbstractWorker::release() noexcept
{
    stop();
    releaseCancellables();
}

} // namespace orrenby
