#include "Orrenby/Platform/Scheduling/OperationFrame.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constinit thread_local const OperationFrame* innermost = nullptr;

} // namespace

OperationFrame::OperationFrame(const Operation& operation, OperationQueueCore* queue) noexcept
    : m_operation(operation)
    , m_queue(queue)
    , m_previous(innermost)
{
    innermost = this;
}

OperationFrame::~OperationFrame() { innermost = m_previous; }

OperationQueueCore* OperationFrame::queue() noexcept
{
    const auto* frame = innermost;
    while (frame != nullptr && frame->m_queue == nullptr)
        frame = frame->m_previous;
    return frame != nullptr ? frame->m_queue : nullptr;
}

bool OperationFrame::isStarting(const Operation& operation) noexcept
{
    return innermost != nullptr && &innermost->m_operation == &operation && innermost->m_queue != nullptr;
}

bool OperationFrame::has(const Operation& operation) noexcept
{
    for (const auto* frame = innermost; frame != nullptr; frame = frame->m_previous) {
        if (&frame->m_operation == &operation)
            return true;
        if (frame->m_queue != nullptr)
            return false;
    }
    return false;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
