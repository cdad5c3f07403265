#include "UploadOperation.hpp"

#include "UploadService.hpp"
#include <utility>

namespace fieldbook {

using Step = UploadProgress::Step;

UploadOperation::UploadOperation(EventLoop& loop, int number, Progress progress, double secondLength)
    : m_loop(loop)
    , m_number(number)
    , m_progress(std::move(progress))
    , m_secondLength(secondLength)
{}

void UploadOperation::execute(Completion) { attempt(); }

void UploadOperation::cancel()
{
    AsyncBaseOperation::cancel();
    m_timer = {};
    if (isExecuting())
        finish();
}

void UploadOperation::attempt()
{
    ++m_attempt;
    tell(Step::begins);
    wait(UploadService::latency, [this] { hear(UploadService::accepts(m_number, m_attempt)); });
}

void UploadOperation::hear(bool isAccepted)
{
    if (isAccepted)
        return end(Step::isSent);
    const auto seconds = m_retry.nextInterval();
    if (!seconds)
        return end(Step::isGivenUp);
    tell(Step::waits, *seconds);
    wait(*seconds, [this] { attempt(); });
}

void UploadOperation::end(Step step)
{
    m_timer = {};
    tell(step);
    finish();
}

void UploadOperation::tell(Step step, double seconds)
{
    m_progress.send({step, m_number, m_attempt, seconds});
}

void UploadOperation::wait(double seconds, EventLoop::Callback callback)
{
    // The queue keeps the operation until it has finished, and it cancels the timer before.
    m_timer = m_loop.after(
        std::chrono::milliseconds(static_cast<long>(seconds * m_secondLength * 1000)), std::move(callback));
}

} // namespace fieldbook
