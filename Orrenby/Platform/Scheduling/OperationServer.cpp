#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationFrame.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueueCore.hpp"
#include "Orrenby/Platform/Scheduling/QueueTurn.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <mutex>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Operations after which a server stands in line again.
constexpr std::size_t operationsPerRun = 256;

} // namespace

/// On the executor. Kept by its queue for the next time.
class OperationQueueCore::Server final : public Job {
public:
    explicit Server(OperationQueueCore& queue) noexcept
        : m_queue(queue)
    {}

    /// Keeps the queue until the server retires.
    void send()
    {
        m_keptQueue = m_queue.shared_from_this();
        World::current().executor().execute(*this);
    }

    void run() noexcept override
    {
        const auto frame = QueueFrame(nullptr, QueueFrame::Chain::Begins);
        if (m_queue.serve(operationsPerRun))
            World::current().executor().execute(*this);
        else
            m_queue.retire(*this);
    }

    void discard() noexcept override
    {
        m_queue.abandon();
        m_queue.retire(*this);
    }

    Ref<OperationQueueCore> leave() noexcept { return std::move(m_keptQueue); }

private:
    OperationQueueCore& m_queue;
    Ref<OperationQueueCore> m_keptQueue;
};

/// On a dispatch queue, for one operation.
class OperationQueueCore::Errand {
public:
    explicit Errand(Ref<OperationQueueCore> queue) noexcept
        : m_queue(std::move(queue))
    {}
    Errand(Errand&& other) noexcept = default;
    Errand& operator=(Errand&& other) = delete;
    ~Errand()
    {
        if (m_queue) // the dispatch queue lets go of work that it will not do
            m_queue->abandon();
    }

    static void send(Ref<OperationQueueCore> queue, const DispatchQueue& place)
    {
        place.async(Errand(std::move(queue)));
    }

    void operator()()
    {
        auto queue = std::move(m_queue);
        if (!queue->serve(1))
            return;
        auto lock = Lock(queue->m_mutex);
        queue->m_isServerCalled = false;
        queue->callServer(lock);
    }

private:
    Ref<OperationQueueCore> m_queue;
};

OperationQueueCore::OperationQueueCore(Kind kind)
    : m_kind(kind)
    , m_limit(kind == Kind::Main ? 1 : -1)
{
    if (kind == Kind::Main)
        m_underlyingQueue = DispatchQueue::main();
}

OperationQueueCore::~OperationQueueCore()
{
    while (m_freeServers != nullptr)
        delete static_cast<Server*>(std::exchange(m_freeServers, m_freeServers->next));
}

bool OperationQueueCore::mayBegin() const noexcept
{
    return !m_isSuspended && !m_line.isEmpty()
        && (m_limit < 0 || m_running < static_cast<std::size_t>(m_limit));
}

void OperationQueueCore::callServer(Lock& lock)
{
    if (m_isServerCalled || !mayBegin()) {
        lock.unlock();
        return;
    }
    m_isServerCalled = true;
    if (m_underlyingQueue) {
        const auto queue = *m_underlyingQueue;
        lock.unlock();
        Errand::send(shared_from_this(), queue);
        return;
    }
    auto* const server = static_cast<Server*>(m_freeServers);
    if (server != nullptr)
        m_freeServers = server->next;
    lock.unlock();
    (server != nullptr ? server : new Server(*this))->send();
}

void OperationQueueCore::retire(Server& server) noexcept
{
    // The last reference perhaps: nothing is touched after it is gone.
    const auto self = server.leave();
    const auto lock = Lock(m_mutex);
    server.next = m_freeServers;
    m_freeServers = &server;
}

bool OperationQueueCore::serve(std::size_t count) noexcept
{
    auto lock = Lock(m_mutex);
    m_isServerCalled = false;
    while (mayBegin()) {
        if (count-- == 0)
            return !std::exchange(m_isServerCalled, true);
        auto& operation = m_line.takeFirst();
        operation.m_place.line = OperationPlace::Line::Begun;
        ++m_running;
        auto self = operation.m_place.self;
        callServer(lock);
        begin(operation);
        self.reset();
        lock.lock();
    }
    return false;
}

void OperationQueueCore::begin(Operation& operation)
{
    if (!operation.isReady()) {
        putBack(operation);
        return;
    }
    {
        const auto frame = OperationFrame(operation, this);
        if (!operation.m_isFinishNoticed)
            operation.start();
    }
    if (!operation.m_isFinishNoticed && operation.isFinished()) // without telling
        operation.noticeFinished(this);
}

void OperationQueueCore::putBack(Operation& operation)
{
    {
        const auto lock = Lock(m_mutex);
        if (operation.m_place.line == OperationPlace::Line::Begun) {
            operation.m_place.line = OperationPlace::Line::None;
            --m_running;
        }
    }
    noticeReady(operation, this); // meanwhile perhaps
}

void OperationQueueCore::abandon() noexcept
{
    auto abandoned = std::vector<Ref<Operation>>();
    auto waiters = std::vector<Signal*>();
    {
        const auto lock = Lock(m_mutex);
        m_isServerCalled = false;
        m_passedBarriers = m_barriers;
        for (auto* next = m_first; next != nullptr;) {
            auto& operation = *std::exchange(next, next->m_place.next);
            auto& place = operation.m_place;
            if (place.line == OperationPlace::Line::Begun) {
                m_passedBarriers -= place.kind == OperationPlace::Kind::Barrier;
                continue;
            }
            if (place.line != OperationPlace::Line::None)
                m_line.remove(operation);
            abandoned.push_back(std::move(place.self));
            unlink(operation);
        }
        if (m_count == 0)
            waiters.swap(m_waiters);
    }
    for (const auto& operation : abandoned) {
        const auto lock = std::lock_guard(operation->m_mutex);
        operation->m_place.queue = nullptr; // which the caller keeps
    }
    for (auto* const waiter : waiters)
        waiter->set();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
