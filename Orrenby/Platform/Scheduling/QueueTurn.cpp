#include "Orrenby/Platform/Scheduling/QueueTurn.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Scheduling/QueueCore.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constinit thread_local const QueueFrame* innermost = nullptr;

/// @param mayNest  Whether a caller that is on the queue may go on at once.
/// @returns Whether it is one that does.
bool isInside(const QueueCore& queue, bool mayNest)
{
    if (!queue.isCurrent())
        return false;
    if (!mayNest)
        fatalError("sync would wait for itself: the caller is on the queue \"" + queue.label() + "\" already",
            "Platform/Scheduling/DispatchQueue", 61);
    return true;
}

} // namespace

QueueFrame::QueueFrame(const QueueCore* queue, Chain chain) noexcept
    : m_queue(queue)
    , m_chain(chain)
    , m_previous(innermost)
{
    innermost = this;
}

QueueFrame::~QueueFrame() { innermost = m_previous; }

QueueFrame::Answer QueueFrame::find(const QueueCore& queue) noexcept
{
    for (const auto* frame = innermost; frame; frame = frame->m_previous) {
        if (frame->m_queue == &queue)
            return Answer::Yes;
        if (frame->m_chain == Chain::Begins)
            return Answer::No;
    }
    return Answer::NoFrame;
}

QueueTurn::QueueTurn(const std::shared_ptr<QueueCore>& queue, Kind kind)
    : m_queue(queue)
    , m_kind(kind)
    , m_isInside(isInside(*queue, kind == Kind::Shared && queue->kind() == DispatchQueue::Kind::Concurrent))
{
    if (!m_isInside)
        queue->enter(kind);
    m_frame.emplace(queue.get(), QueueFrame::Chain::GoesOn);
}

QueueTurn::~QueueTurn()
{
    m_frame.reset();
    if (!m_isInside)
        m_queue->leave(m_kind);
}

bool QueueTurn::isElsewhere(const QueueCore& queue) noexcept
{
    return queue.kind() == DispatchQueue::Kind::Main;
}

void QueueTurn::takeElsewhere(
    const std::shared_ptr<QueueCore>& queue, void (*call)(void*) noexcept, void* context)
{
    isInside(*queue, false);
    auto done = Signal();
    queue->append({[call, context, &done] {
        call(context);
        done.set();
    }});
    done.wait();
}

} // namespace orrenby::detail
