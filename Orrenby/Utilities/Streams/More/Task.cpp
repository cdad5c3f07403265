#include "Orrenby/Utilities/Streams/More/Task.hpp"

#include "Orrenby/Platform/Engines/Ground/ThreadToken.hpp"
#include "Orrenby/Platform/Scheduling/Backoff.hpp"
#include <mutex>

namespace orrenby::inline ORRENBY_ABI::detail {

void TaskCore::resume() noexcept
{
    {
        const auto lock = std::lock_guard(m_mutex);
        if (!m_frame)
            return;
        if (m_runner != 0) {
            m_mustGoOn = true;
            return;
        }
        m_runner = threadToken();
    }
    run();
}

void TaskCore::run() noexcept
{
    for (;;) {
        m_frame.resume(); // nobody else changes it while it runs
        auto finished = std::coroutine_handle<>();
        {
            const auto lock = std::lock_guard(m_mutex);
            if (m_frame.done() || m_isCancelled)
                finished = m_frame;
            else if (!std::exchange(m_mustGoOn, false)) {
                m_runner = 0;
                return;
            }
        }
        if (!finished)
            continue;
        finished.destroy(); // before anybody stops waiting for it
        const auto lock = std::lock_guard(m_mutex);
        m_frame = nullptr;
        m_runner = 0;
        return;
    }
}

void TaskCore::cancel() noexcept
{
    auto waiting = std::coroutine_handle<>();
    {
        const auto lock = std::lock_guard(m_mutex);
        m_isCancelled = true;
        if (m_runner == 0)
            waiting = std::exchange(m_frame, nullptr);
    }
    if (waiting)
        waiting.destroy();
}

void TaskCore::cancelAndWait() noexcept
{
    cancel();
    auto backoff = Backoff();
    while (isRunningElsewhere())
        backoff.pause();
}

bool TaskCore::isRunningElsewhere() const noexcept
{
    const auto lock = std::lock_guard(m_mutex);
    return m_runner != 0 && m_runner != threadToken();
}

bool TaskCore::isDone() const noexcept
{
    const auto lock = std::lock_guard(m_mutex);
    return !m_frame;
}

} // namespace orrenby::detail
