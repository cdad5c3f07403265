#include "Orrenby/Platform/Scheduling/OperationQueueCore.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Scheduling/OperationFrame.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr auto source = "Platform/Scheduling/OperationQueue";

/// The classes of priority stand above the number, the highest as 0.
std::uint64_t keyFor(Operation::QueuePriority priority, std::uint64_t number) noexcept
{
    const auto value = static_cast<int>(priority);
    std::uint64_t rank = 0;
    if (value >= 8)
        rank = 0;
    else if (value >= 4)
        rank = 1;
    else if (value > -4)
        rank = 2;
    else if (value > -8)
        rank = 3;
    else
        rank = 4;
    return (rank << 60) | number;
}

} // namespace

const Ref<OperationQueueCore>& OperationQueueCore::main()
{
    static const auto& core = *new Ref<OperationQueueCore>(std::make_shared<OperationQueueCore>(Kind::Main));
    return core;
}

void OperationQueueCore::add(const Ref<Operation>& operation, OperationPlace::Kind kind)
{
    if (!operation)
        fatalError("There is no operation to add", source, 44);
    if (operation->isFinished())
        fatalError("An operation that has finished cannot be added to a queue", source, 46);
    if (operation->isExecuting())
        fatalError("An operation that is executing cannot be added to a queue", source, 48);
    if (operation->m_isQueued.exchange(true))
        fatalError("An operation cannot be added to a queue twice", source, 50);

    {
        const auto lock = std::lock_guard(operation->m_mutex);
        operation->m_place.queue = shared_from_this();
    }
    const auto isReady = operation->isReady();
    {
        auto lock = Lock(m_mutex);
        link(operation, kind);
        if (isReady)
            lineUp(*operation);
        callServer(lock);
    }
    // What it told before it was in the list found nothing.
    if (operation->m_isFinishNoticed)
        remove(*operation);
    else if (!isReady)
        noticeReady(*operation);
}

void OperationQueueCore::noticeReady(Operation& operation, const OperationQueueCore* busy)
{
    if (!operation.isReady())
        return;
    auto lock = Lock(m_mutex);
    lineUp(operation);
    if (busy != this)
        callServer(lock);
}

void OperationQueueCore::changePriority(Operation& operation)
{
    const auto lock = Lock(m_mutex);
    auto& place = operation.m_place;
    const auto key = keyFor(operation.queuePriority(), place.number);
    if (place.number == 0 || place.line == OperationPlace::Line::Begun)
        return;
    const auto isInLine = place.line != OperationPlace::Line::None;
    if (isInLine)
        m_line.remove(operation);
    place.key = key;
    if (isInLine)
        m_line.insert(operation);
}

Ref<Operation> OperationQueueCore::remove(Operation& operation, const OperationQueueCore* busy)
{
    auto kept = std::vector<Ref<Operation>>();
    auto waiters = std::vector<Signal*>();
    auto self = Ref<Operation>();
    {
        auto lock = Lock(m_mutex);
        auto& place = operation.m_place;
        if (place.number == 0)
            return nullptr;
        if (place.line == OperationPlace::Line::Begun)
            --m_running;
        else if (place.line != OperationPlace::Line::None)
            m_line.remove(operation);
        self = std::move(place.self);
        unlink(operation);
        if (place.kind == OperationPlace::Kind::Barrier) {
            ++m_passedBarriers;
            kept = keptBack();
        } else if (m_first != nullptr && m_first->m_place.kind == OperationPlace::Kind::Barrier) {
            kept.push_back(m_first->m_place.self);
        }
        if (m_count == 0)
            waiters.swap(m_waiters);
        if (busy != this)
            callServer(lock);
    }
    for (auto* const waiter : waiters)
        waiter->set();
    for (const auto& next : kept)
        noticeReady(*next, busy);
    return self;
}

void OperationQueueCore::link(const Ref<Operation>& operation, OperationPlace::Kind kind)
{
    auto& place = operation->m_place;
    place.self = operation;
    place.number = ++m_number;
    place.barriers = m_barriers;
    place.key = keyFor(operation->queuePriority(), place.number);
    place.kind = kind;
    m_barriers += kind == OperationPlace::Kind::Barrier;
    place.previous = m_last;
    (m_last != nullptr ? m_last->m_place.next : m_first) = operation.get();
    m_last = operation.get();
    ++m_count;
}

void OperationQueueCore::unlink(Operation& operation) noexcept
{
    auto& place = operation.m_place;
    (place.previous != nullptr ? place.previous->m_place.next : m_first) = place.next;
    (place.next != nullptr ? place.next->m_place.previous : m_last) = place.previous;
    place.previous = nullptr;
    place.next = nullptr;
    place.number = 0;
    place.line = OperationPlace::Line::None;
    --m_count;
}

bool OperationQueueCore::isInFrontOfBarriers(const Operation& operation) const noexcept
{
    const auto& place = operation.m_place;
    return place.kind == OperationPlace::Kind::Barrier ? m_first == &operation
                                                       : place.barriers == m_passedBarriers;
}

void OperationQueueCore::lineUp(Operation& operation)
{
    const auto& place = operation.m_place;
    if (place.number != 0 && place.line == OperationPlace::Line::None && isInFrontOfBarriers(operation))
        m_line.insert(operation);
}

std::vector<Ref<Operation>> OperationQueueCore::keptBack() const
{
    auto result = std::vector<Ref<Operation>>();
    for (auto* operation = m_first; operation != nullptr && isInFrontOfBarriers(*operation);
         operation = operation->m_place.next)
        result.push_back(operation->m_place.self);
    return result;
}

void OperationQueueCore::waitUntilEmpty()
{
    if (OperationFrame::queue() == this)
        fatalError("An operation waits for its own queue to become empty", source, 184);
    auto isEmpty = Signal();
    {
        const auto lock = Lock(m_mutex);
        if (m_count == 0)
            return;
        m_waiters.push_back(&isEmpty);
    }
    isEmpty.wait();
}

bool OperationQueueCore::isCurrent() const noexcept
{
    if (const auto* const queue = OperationFrame::queue())
        return queue == this;
    return m_kind == Kind::Main && DispatchQueue::main().isCurrent();
}

std::vector<Ref<Operation>> OperationQueueCore::operations() const
{
    const auto lock = Lock(m_mutex);
    auto result = std::vector<Ref<Operation>>();
    result.reserve(m_count);
    for (auto* operation = m_first; operation != nullptr; operation = operation->m_place.next)
        result.push_back(operation->m_place.self);
    return result;
}

std::size_t OperationQueueCore::count() const
{
    const auto lock = Lock(m_mutex);
    return m_count;
}

bool OperationQueueCore::isSuspended() const
{
    const auto lock = Lock(m_mutex);
    return m_isSuspended;
}

void OperationQueueCore::setSuspended(bool isSuspended)
{
    auto lock = Lock(m_mutex);
    m_isSuspended = isSuspended;
    callServer(lock);
}

int OperationQueueCore::limit() const
{
    const auto lock = Lock(m_mutex);
    return m_limit;
}

void OperationQueueCore::setLimit(int limit)
{
    if (limit < OperationQueue::defaultMaxConcurrentOperationCount)
        fatalError("A queue cannot have a negative limit", source, 238);
    if (m_kind == Kind::Main)
        return;
    auto lock = Lock(m_mutex);
    m_limit = limit;
    callServer(lock);
}

std::optional<DispatchQueue> OperationQueueCore::underlyingQueue() const
{
    const auto lock = Lock(m_mutex);
    return m_underlyingQueue;
}

void OperationQueueCore::setUnderlyingQueue(std::optional<DispatchQueue> queue)
{
    if (m_kind == Kind::Main)
        fatalError("The main queue keeps its underlying queue", source, 255);
    const auto lock = Lock(m_mutex);
    if (m_count != 0)
        fatalError("The underlying queue cannot change while there are operations", source, 258);
    m_underlyingQueue.swap(queue);
}

std::string OperationQueueCore::name() const
{
    const auto lock = Lock(m_mutex);
    return m_name;
}

void OperationQueueCore::setName(std::string name)
{
    const auto lock = Lock(m_mutex);
    m_name.swap(name);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
