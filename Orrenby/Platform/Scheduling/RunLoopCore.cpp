#include "Orrenby/Platform/Scheduling/RunLoopCore.hpp"

#include "Orrenby/Platform/Scheduling/RunLoopMode.hpp"
#include "Orrenby/Platform/Scheduling/RunLoopRun.hpp"
#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include <algorithm>
#include <iterator>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A block for the common modes, in line with the jobs.
class RunLoopCore::PerformedBlock final : public Job {
public:
    explicit PerformedBlock(UniqueFunction<void()> block) noexcept
        : m_block(std::move(block))
    {}

    void run() noexcept override
    {
        const auto self = std::unique_ptr<PerformedBlock>(this);
        m_block();
    }

    void discard() noexcept override { delete this; }

private:
    UniqueFunction<void()> m_block;
};

RunLoopCore::RunLoopCore(bool isMain)
    : m_isMain(isMain)
    , m_thread(std::this_thread::get_id())
{
    modeNamed(NSDefaultRunLoopMode).isCommon = true;
    modeNamed(UITrackingRunLoopMode).isCommon = true;
}

bool RunLoopCore::isCurrent() const noexcept
{
    return m_isMain ? Thread::isMainThread() : std::this_thread::get_id() == m_thread;
}

void RunLoopCore::execute(Job& job)
{
    // What is handed over may end the loop's thread, whose `close` waits for the lock: ring before it is
    // free.
    const auto lock = std::lock_guard(m_mutex);
    append(job);
    m_alarm.ring();
}

void RunLoopCore::append(Job& job) noexcept
{
    job.next = nullptr;
    (m_firstJob != nullptr ? m_lastJob->next : m_firstJob) = &job;
    m_lastJob = &job;
    ++m_jobsHandedOver;
}

void RunLoopCore::perform(UniqueFunction<void()> block, std::string_view mode)
{
    if (!block)
        return;
    if (mode == NSRunLoopCommonModes) {
        execute(*new PerformedBlock(std::move(block)));
        return;
    }
    const auto lock = std::lock_guard(m_mutex);
    modeNamed(mode).blocks.push_back({m_blocksHandedOver, m_jobsHandedOver, std::move(block)});
    ++m_blocksHandedOver;
    m_alarm.ring();
}

DescriptorWatch RunLoopCore::watch(int descriptor, std::string_view mode, UniqueFunction<void()> onReadable)
{
    const auto entry = std::make_shared<DescriptorEntry>();
    entry->descriptor = descriptor;
    entry->onReadable = std::move(onReadable);
    const auto lock = std::lock_guard(m_mutex);
    entry->modes = modesNamedLocked(mode);
    m_watches.push_back(entry);
    m_alarm.ring();
    return {weak_from_this(), entry};
}

void RunLoopCore::unwatch(DescriptorEntry& entry)
{
    auto function = UniqueFunction<void()>();
    auto self = std::shared_ptr<DescriptorEntry>();
    {
        const auto lock = std::lock_guard(m_mutex);
        entry.isActive = false;
        const auto place = std::find_if(
            m_watches.begin(), m_watches.end(), [&](const auto& each) { return each.get() == &entry; });
        if (place != m_watches.end()) {
            self = std::move(*place);
            m_watches.erase(place);
        }
        // Who calls it releases it afterwards.
        if (!entry.isBeingCalled)
            function = std::move(entry.onReadable);
    }
    m_alarm.ring();
}

bool RunLoopCore::isActive(const DescriptorEntry& entry) const
{
    const auto lock = std::lock_guard(m_mutex);
    return entry.isActive;
}

void RunLoopCore::stop()
{
    const auto lock = std::lock_guard(m_mutex);
    if (m_frame == nullptr)
        return;
    m_frame->isStopped = true;
    m_alarm.ring();
}

std::optional<std::string> RunLoopCore::currentMode() const
{
    const auto lock = std::lock_guard(m_mutex);
    return m_frame != nullptr ? std::optional(m_frame->mode.name) : std::nullopt;
}

std::optional<Date> RunLoopCore::nextFireDate(std::string_view mode) const
{
    auto timer = Ref<Timer>();
    {
        const auto lock = std::lock_guard(m_mutex);
        const auto place = m_modes.find(mode);
        if (place == m_modes.end() || place->second.timers.empty())
            return std::nullopt;
        timer = place->second.timers.begin()->second.timer;
    }
    return timer->fireDate();
}

RunLoopCore::Mode& RunLoopCore::modeNamed(std::string_view mode)
{
    if (const auto place = m_modes.find(mode); place != m_modes.end())
        return place->second;
    auto& state = m_modes[std::string(mode)];
    state.name = mode;
    return state;
}

std::vector<RunLoopCore::Mode*> RunLoopCore::modesNamedLocked(std::string_view mode)
{
    if (mode == NSRunLoopCommonModes)
        return {&modeNamed(NSDefaultRunLoopMode), &modeNamed(UITrackingRunLoopMode)};
    return {&modeNamed(mode)};
}

std::vector<RunLoopCore::Mode*> RunLoopCore::modesNamed(std::string_view mode)
{
    const auto lock = std::lock_guard(m_mutex);
    return modesNamedLocked(mode);
}

std::uint64_t RunLoopCore::nextSequence()
{
    const auto lock = std::lock_guard(m_mutex);
    return ++m_lastSequence;
}

bool RunLoopCore::insert(const Ref<Timer>& timer)
{
    {
        const auto lock = std::lock_guard(m_mutex);
        if (m_isClosed)
            return false;
        insertLocked(timer);
    }
    ringForTimers();
    return true;
}

void RunLoopCore::remove(const Timer& timer)
{
    {
        const auto lock = std::lock_guard(m_mutex);
        removeLocked(timer, timer.m_deadline);
    }
    ringForTimers();
}

void RunLoopCore::move(const Ref<Timer>& timer, double from)
{
    {
        const auto lock = std::lock_guard(m_mutex);
        removeLocked(*timer, from);
        if (!m_isClosed)
            insertLocked(timer);
    }
    ringForTimers();
}

void RunLoopCore::markAway(std::span<Mode* const> modes, int change)
{
    {
        const auto lock = std::lock_guard(m_mutex);
        for (auto* mode : modes)
            mode->timersAway += change;
    }
    ringForTimers();
}

void RunLoopCore::insertLocked(const Ref<Timer>& timer)
{
    for (auto* mode : timer->m_modes)
        mode->timers.insert_or_assign(
            {timer->m_deadline, timer->m_sequence}, Mode::TimerEntry{timer, timer->m_tolerance});
}

void RunLoopCore::removeLocked(const Timer& timer, double deadline)
{
    for (auto* mode : timer.m_modes)
        mode->timers.erase({deadline, timer.m_sequence});
}

/// The loop looks at its timers anyway before it waits.
void RunLoopCore::ringForTimers() noexcept
{
    if (!isCurrent() || m_isWaiting)
        m_alarm.ring();
}

void RunLoopCore::close()
{
    auto lock = std::unique_lock(m_mutex);
    m_isClosed = true;
    auto timers = std::vector<Ref<Timer>>();
    auto blocks = std::vector<UniqueFunction<void()>>();
    for (auto& [name, mode] : m_modes) {
        for (auto& [place, entry] : mode.timers)
            timers.push_back(entry.timer);
        for (auto& block : mode.blocks)
            blocks.push_back(std::move(block.function));
        mode.blocks.clear();
    }
    for (const auto& watch : m_watches) {
        watch->isActive = false;
        blocks.push_back(std::move(watch->onReadable));
    }
    m_watches.clear();
    while (m_firstJob != nullptr) {
        auto* job = std::exchange(m_firstJob, m_firstJob->next);
        ++m_jobsTaken;
        lock.unlock();
        if (auto* block = dynamic_cast<PerformedBlock*>(job))
            delete block;
        else
            job->run();
        lock.lock();
    }
    lock.unlock();
    for (const auto& timer : timers)
        timer->invalidate();
}

void RunLoopCore::discardAll()
{
    auto lock = std::unique_lock(m_mutex);
    auto timers = std::vector<Ref<Timer>>();
    auto blocks = std::vector<Mode::Block>();
    for (auto& [name, mode] : m_modes) {
        for (auto& [place, entry] : mode.timers)
            timers.push_back(entry.timer);
        std::move(mode.blocks.begin(), mode.blocks.end(), std::back_inserter(blocks));
        mode.blocks.clear();
    }
    while (m_firstJob != nullptr) {
        auto* job = std::exchange(m_firstJob, m_firstJob->next);
        ++m_jobsTaken;
        lock.unlock();
        job->discard();
        lock.lock();
    }
    lock.unlock();
    for (const auto& timer : timers)
        timer->invalidate();
}

} // namespace orrenby::detail
