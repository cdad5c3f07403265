#include "Orrenby/Testing/VirtualExecutor.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Scheduling/QueueCore.hpp"
#include "Orrenby/Platform/Scheduling/QueueTurn.hpp"
#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include "Orrenby/Testing/TestAccess.hpp"
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::testing {

namespace {

using detail::QueueFrame;

constexpr auto infinity = std::numeric_limits<double>::infinity();
constexpr auto shortWait = 0.001; // seconds of real time, for what only real threads can bring

/// Far beyond what a test does, and reached within seconds.
constexpr std::size_t mostCallsAtOneMoment = 10'000'000;

std::string modeOf(const RunLoop& loop)
{
    return loop.currentMode().value_or(std::string(NSDefaultRunLoopMode));
}

bool turnMainLoop()
{
    const auto frame = QueueFrame(detail::mainQueueCore().get(), QueueFrame::Chain::Begins);
    return TestAccess::turn(RunLoop::main(), modeOf(RunLoop::main()));
}

/// The real time, after which nothing that is pending can have brought what is waited for.
double endOfPatience(double seconds) { return Clock::system()->monotonicSeconds() + seconds; }

void testPatience(double end)
{
    if (Clock::system()->monotonicSeconds() > end)
        fatalError("Waiting for what nothing that is pending can bring", "Testing/VirtualWorld", 52);
}

} // namespace

VirtualExecutor::VirtualExecutor(std::shared_ptr<VirtualClock> clock, double patience)
    : m_clock(std::move(clock))
    , m_patience(patience)
{}

VirtualExecutor::~VirtualExecutor() = default;

void VirtualExecutor::execute(Job& job)
{
    const auto lock = std::lock_guard(m_mutex);
    appendLocked(job);
}

void VirtualExecutor::executeAt(double deadline, Job& job)
{
    const auto lock = std::lock_guard(m_mutex);
    m_delayed.push_back({deadline, ++m_number, &job});
    std::push_heap(m_delayed.begin(), m_delayed.end(), Later());
}

void VirtualExecutor::wait(Waiter& waiter, double deadline)
{
    if (std::this_thread::get_id() != m_thread) {
        waiter.block(shortWait);
        return;
    }
    const auto isMain = detail::mainQueueCore()->isCurrent();
    const auto blocksMain = isMain && !waiter.isLoop();
    // Work that waits in the name of others lets the main loop go on, unless that is what waits further out.
    const auto turnsMainLoop = !isMain && Thread::isMainThread() && m_mainBlocks == 0;
    auto patience = infinity; // runs once nothing is pending
    m_mainBlocks += blocksMain;
    while (!waiter.isSignalled()) {
        if (runOne() || (turnsMainLoop && turnMainLoop())) {
            patience = infinity;
            continue;
        }
        if (!(m_clock->monotonicSeconds() < deadline))
            break;
        auto moment = std::min(deadline, earliestDeadline());
        if (turnsMainLoop)
            moment = std::min(moment, TestAccess::latestMoment(RunLoop::main(), modeOf(RunLoop::main())));
        if (moment < infinity) {
            m_callsAtThisMoment = 0;
            m_clock->moveTo(moment);
            continue;
        }
        if (patience == infinity)
            patience = endOfPatience(m_patience);
        testPatience(patience);
        waiter.block(shortWait);
    }
    m_mainBlocks -= blocksMain;
}

bool VirtualExecutor::drive(double limit, std::size_t jumps)
{
    // Moments are sums of whole nanoseconds, give or take the rounding of the last digit.
    constexpr auto tolerance = 0.5e-9;
    auto& loop = RunLoop::current();
    m_callsAtThisMoment = 0;
    for (;;) {
        while (runOne()) {}
        if (TestAccess::turn(loop, NSDefaultRunLoopMode)) {
            countCall();
            continue;
        }
        const auto moment = std::min(
            earliestDeadline(), TestAccess::latestMoment(loop, NSDefaultRunLoopMode));
        if (moment == infinity || moment > limit + tolerance)
            break;
        if (moment > m_clock->monotonicSeconds()) {
            if (jumps-- == 0)
                return false;
            m_callsAtThisMoment = 0;
            m_clock->moveTo(moment);
        }
    }
    if (limit < infinity)
        m_clock->moveTo(limit);
    return true;
}

void VirtualExecutor::discardAll() noexcept
{
    auto lock = std::unique_lock(m_mutex);
    while (m_first || !m_delayed.empty()) {
        for (; !m_delayed.empty(); m_delayed.pop_back()) {
            std::pop_heap(m_delayed.begin(), m_delayed.end(), Later());
            appendLocked(*m_delayed.back().job);
        }
        auto* job = std::exchange(m_first, m_first->next);
        --m_readyCount;
        lock.unlock();
        job->discard();
        lock.lock();
    }
}

std::size_t VirtualExecutor::pendingCount() const
{
    const auto lock = std::lock_guard(m_mutex);
    return m_readyCount + m_delayed.size();
}

bool VirtualExecutor::runOne() noexcept
{
    auto* job = takeReady();
    if (!job)
        return false;
    countCall();
    // Whatever this thread is on, the job is not.
    const auto frame = QueueFrame(nullptr, QueueFrame::Chain::Begins);
    job->run();
    return true;
}

Job* VirtualExecutor::takeReady() noexcept
{
    const auto now = m_clock->monotonicSeconds();
    const auto lock = std::lock_guard(m_mutex);
    while (!m_delayed.empty() && m_delayed.front().deadline <= now) {
        appendLocked(*m_delayed.front().job);
        std::pop_heap(m_delayed.begin(), m_delayed.end(), Later());
        m_delayed.pop_back();
    }
    auto* job = m_first;
    if (job) {
        m_first = job->next;
        --m_readyCount;
    }
    return job;
}

void VirtualExecutor::appendLocked(Job& job) noexcept
{
    job.next = nullptr;
    (m_first ? m_last->next : m_first) = &job;
    m_last = &job;
    ++m_readyCount;
}

double VirtualExecutor::earliestDeadline() const
{
    const auto lock = std::lock_guard(m_mutex);
    if (m_first)
        return -infinity; // another thread has handed it over meanwhile
    return m_delayed.empty() ? infinity : m_delayed.front().deadline;
}

void VirtualExecutor::countCall() noexcept
{
    if (++m_callsAtThisMoment > mostCallsAtOneMoment)
        fatalError("Work hands over work without an end", "Testing/VirtualWorld", 190);
}

} // namespace orrenby::testing
