#include "Orrenby/Platform/Scheduling/Operation.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationExtras.hpp"
#include "Orrenby/Platform/Scheduling/OperationFrame.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueueCore.hpp"
#include <mutex>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr auto source = "Platform/Scheduling/Operation";

} // namespace

/// Brings what a subclass tells of itself back to its operation. One serves all.
class Operation::Watcher final : public KeyValueObserver {
public:
    void observeValue(const std::string& keyPath, ObservableObject& object, const KeyValueChange&) override
    {
        auto& operation = static_cast<Operation&>(object);
        if (keyPath == "isReady")
            operation.noticeReady();
        else if (operation.isFinished())
            operation.noticeFinished();
    }

    static const Ref<KeyValueObserver>& shared()
    {
        static const auto& watcher = *new Ref<KeyValueObserver>(std::make_shared<Watcher>());
        return watcher;
    }
};

Operation::Operation() = default;
Operation::~Operation() = default;

void Operation::release() noexcept { letGoOfDependencies(); }
void Operation::letGoOfWork() noexcept {}

void Operation::watch(std::string_view key) { addObserver(Watcher::shared(), key); }

void Operation::start()
{
    if (isFinished())
        return;
    const auto isStartedByQueue = detail::OperationFrame::isStarting(*this);
    if (!isStartedByQueue && !isReady())
        fatalError("start() of an operation that is not ready", source, 48);
    if (m_isStarted.exchange(true)) {
        if (m_state == State::Finished)
            return; // meanwhile
        fatalError("start() of an operation that has begun already", source, 52);
    }
    if (!isCancelled()) {
        willChangeValue("isExecuting");
        m_state = State::Executing;
        didChangeValue("isExecuting");
        if (isStartedByQueue) {
            runMain();
        } else {
            const auto frame = detail::OperationFrame(*this, nullptr);
            runMain();
        }
    }
    becomeFinished();
}

void Operation::runMain() noexcept { main(); }

void Operation::main() {}

void Operation::becomeFinished()
{
    const auto wasExecuting = m_state == State::Executing;
    willChangeValue("isFinished");
    if (wasExecuting)
        willChangeValue("isExecuting");
    m_state = State::Finished;
    if (wasExecuting)
        didChangeValue("isExecuting");
    didChangeValue("isFinished");
    // For subclasses with a start() of their own the watcher was quicker, so this is the end of the start.
    noticeFinished(detail::OperationFrame::isStarting(*this) ? detail::OperationFrame::queue() : nullptr);
}

void Operation::cancel()
{
    if (isFinished() || m_isCancelRequested.exchange(true))
        return;
    const auto getsReady = !isReady();
    willChangeValue("isCancelled");
    if (getsReady)
        willChangeValue("isReady");
    m_isCancelled = true;
    if (getsReady)
        didChangeValue("isReady");
    didChangeValue("isCancelled");
    if (getsReady)
        noticeReady();
}

bool Operation::isReady() const { return m_isCancelled || m_openDependencies == 0; }
bool Operation::isExecuting() const { return m_state == State::Executing; }
bool Operation::isFinished() const { return m_state == State::Finished; }
bool Operation::isAsynchronous() const { return false; }
bool Operation::isCancelled() const noexcept { return m_isCancelled; }
Operation::QueuePriority Operation::queuePriority() const noexcept { return m_queuePriority; }

void Operation::setQueuePriority(QueuePriority priority)
{
    willChangeValue("queuePriority");
    m_queuePriority = priority;
    didChangeValue("queuePriority");
    if (const auto queue = this->queue())
        queue->changePriority(*this);
}

void Operation::setCompletionBlock(UniqueFunction<void()> block)
{
    {
        const auto lock = std::lock_guard(m_mutex);
        if (!m_isFinishNoticed) {
            if (block || m_extras)
                std::swap(extras().completionBlock, block);
            return; // the old one ends after the lock does: it was declared before
        }
    }
    if (block)
        DispatchQueue::global().async(std::move(block));
}

void Operation::waitUntilFinished()
{
    if (isFinished())
        return;
    if (detail::OperationFrame::has(*this))
        fatalError("An operation waits for itself to finish", source, 134);
    auto finished = detail::Signal();
    {
        const auto lock = std::lock_guard(m_mutex);
        if (m_isFinishNoticed)
            return;
        extras().waiters.push_back(&finished);
    }
    finished.wait();
}

std::string Operation::name() const
{
    const auto lock = std::lock_guard(m_mutex);
    return m_extras ? m_extras->name : std::string();
}

void Operation::setName(std::string name)
{
    willChangeValue("name");
    {
        const auto lock = std::lock_guard(m_mutex);
        extras().name.swap(name);
    }
    didChangeValue("name");
}

std::optional<Any> Operation::valueForUndefinedKey(std::string_view key) const
{
    if (key == "isReady")
        return isReady();
    if (key == "isCancelled")
        return isCancelled();
    if (key == "isExecuting")
        return isExecuting();
    if (key == "isFinished")
        return isFinished();
    if (key == "isAsynchronous")
        return isAsynchronous();
    if (key == "queuePriority")
        return static_cast<std::int64_t>(queuePriority());
    if (key == "name")
        return name();
    if (key == "dependencies")
        return dependencies();
    return std::nullopt;
}

void Operation::noticeFinished(const detail::OperationQueueCore* busy)
{
    auto dependents = std::vector<Ref<Edge>>();
    auto waiters = std::vector<detail::Signal*>();
    auto completionBlock = UniqueFunction<void()>();
    auto queue = Ref<detail::OperationQueueCore>();
    {
        const auto lock = std::lock_guard(m_mutex);
        if (m_isFinishNoticed.exchange(true))
            return;
        queue = std::move(m_place.queue);
        if (m_extras) {
            dependents = std::move(m_extras->dependents);
            waiters = std::move(m_extras->waiters);
            completionBlock = std::move(m_extras->completionBlock);
        }
    }
    letGoOfWork();
    letGoOfDependencies();
    // Keeps this operation, which may have been in the hands of its queue alone.
    const auto self = queue ? queue->remove(*this, busy) : nullptr;
    for (const auto& edge : dependents)
        edge->close(busy);
    for (auto* const waiter : waiters)
        waiter->set();
    if (completionBlock)
        DispatchQueue::global().async(std::move(completionBlock));
}

void Operation::noticeReady(const detail::OperationQueueCore* busy)
{
    if (const auto queue = this->queue())
        queue->noticeReady(*this, busy);
}

Ref<detail::OperationQueueCore> Operation::queue() const
{
    const auto lock = std::lock_guard(m_mutex);
    return m_place.queue;
}

detail::OperationExtras& Operation::extras()
{
    if (!m_extras)
        m_extras = detail::Owned<detail::OperationExtras>::make();
    return *m_extras;
}

} // namespace orrenby
