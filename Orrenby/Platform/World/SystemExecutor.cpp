#include "Orrenby/Platform/World/SystemExecutor.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include <algorithm>
#include <chrono>
#include <system_error>
#include <thread>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// The executor whose job the calling thread runs.
constinit thread_local const SystemExecutor* current = nullptr;

double now()
{
    static const Clock& clock = *Clock::system();
    return clock.monotonicSeconds();
}

} // namespace

SystemExecutor::SystemExecutor()
    : m_width(std::max<std::size_t>(2, std::thread::hardware_concurrency()))
{}

void SystemExecutor::execute(Job& job)
{
    notify([&] {
        const auto lock = std::lock_guard(m_mutex);
        append(job);
        return threadToCall();
    }());
}

void SystemExecutor::executeAt(double deadline, Job& job)
{
    const auto lock = std::lock_guard(m_mutex);
    m_delayed.push_back({deadline, ++m_number, &job});
    std::push_heap(m_delayed.begin(), m_delayed.end(), Later());
    if (m_delayed.front().job != &job)
        return;
    if (m_hasTimekeeper)
        m_time.notify_one();
    else
        callThread();
}

void SystemExecutor::wait(Waiter& waiter, double deadline)
{
    const auto changeRunning = [this](std::ptrdiff_t change) {
        if (current != this)
            return;
        const auto lock = std::lock_guard(m_mutex);
        m_running += static_cast<std::size_t>(change);
        callThread();
    };
    if (waiter.isSignalled())
        return;
    changeRunning(-1);
    while (!waiter.isSignalled()) {
        const auto seconds = deadline - now();
        if (!(seconds > 0))
            break;
        waiter.block(seconds);
    }
    changeRunning(+1);
}

void SystemExecutor::serve() noexcept
{
    current = this;
    auto lock = std::unique_lock(m_mutex);
    for (;;) {
        m_isOneComing = false;
        appendDue();
        if (mayBegin())
            runFirst(lock);
        else
            sleep(lock);
    }
}

void SystemExecutor::append(Job& job) noexcept
{
    job.next = nullptr;
    (m_first ? m_last->next : m_first) = &job;
    m_last = &job;
}

void SystemExecutor::appendDue() noexcept
{
    if (m_delayed.empty())
        return;
    const auto moment = now();
    while (!m_delayed.empty() && m_delayed.front().deadline <= moment) {
        append(*m_delayed.front().job);
        std::pop_heap(m_delayed.begin(), m_delayed.end(), Later());
        m_delayed.pop_back();
    }
}

void SystemExecutor::runFirst(std::unique_lock<std::mutex>& lock) noexcept
{
    auto& job = *m_first;
    m_first = job.next;
    ++m_running;
    callThread();
    lock.unlock();
    job.run();
    lock.lock();
    --m_running;
}

void SystemExecutor::sleep(std::unique_lock<std::mutex>& lock) noexcept
{
    if (!lacksTimekeeper()) {
        ++m_asleep;
        m_work.wait(lock);
        --m_asleep;
        return;
    }
    // A deadline may be infinitely far away, which the arithmetic of clocks does not know.
    constexpr auto longest = 86400.0;
    const auto seconds = std::min(m_delayed.front().deadline - now(), longest);
    m_hasTimekeeper = true;
    m_time.wait_for(lock, std::chrono::duration<double>(seconds));
    m_hasTimekeeper = false;
}

void SystemExecutor::callThread() noexcept { notify(threadToCall()); }

std::condition_variable* SystemExecutor::threadToCall() noexcept
{
    if (m_isOneComing || !(mayBegin() || lacksTimekeeper()))
        return nullptr;
    std::condition_variable* called = nullptr;
    if (m_asleep > 0)
        called = &m_work;
    else if (m_hasTimekeeper)
        called = &m_time;
    else if (m_total == m_width + spareLimit)
        return nullptr;
    else
        try {
            std::thread([this] { serve(); }).detach();
            ++m_total;
        } catch (const std::system_error&) {
            if (m_total == 0)
                fatalError("No thread can be started", "Platform/World/Executor", 144);
            return nullptr; // those that run come back
        }
    m_isOneComing = true;
    return called;
}

void SystemExecutor::notify(std::condition_variable* called) noexcept
{
    if (called)
        called->notify_one();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
