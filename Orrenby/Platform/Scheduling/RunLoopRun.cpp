#include "Orrenby/Platform/Scheduling/RunLoopRun.hpp"

#include "Orrenby/Platform/Scheduling/RunLoopMode.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <algorithm>
#include <limits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

double monotonicNow() { return World::current().clock().monotonicSeconds(); }

/// The boundary at which a throw ends the process.
void call(UniqueFunction<void()>& function) noexcept { function(); }

std::vector<pollfd> descriptorsOf(const std::vector<std::shared_ptr<DescriptorEntry>>& watches)
{
    auto descriptors = std::vector<pollfd>();
    descriptors.reserve(watches.size());
    for (const auto& watch : watches)
        descriptors.push_back({watch->descriptor, POLLIN, 0});
    return descriptors;
}

} // namespace

/// Waits for somebody to ring, or for one of the mode's descriptors.
class RunLoopCore::TurnWaiter final : public Waiter {
public:
    TurnWaiter(LoopAlarm& alarm, std::vector<pollfd> watched)
        : m_alarm(alarm)
        , m_descriptors(std::move(watched))
    {
        m_descriptors.insert(m_descriptors.begin(), alarm.descriptor());
    }

    bool isSignalled() const noexcept override
    {
        return m_alarm.hasRung() || markReadable(std::span(m_descriptors).subspan(1)) > 0;
    }

    void block(double seconds) noexcept override { m_alarm.sleep(m_descriptors, seconds); }

    bool isLoop() const noexcept override { return true; }

private:
    LoopAlarm& m_alarm;
    /// The alarm's own is the first. What can be read is noted in them.
    mutable std::vector<pollfd> m_descriptors;
};

bool RunLoopCore::run(std::string_view mode, double until, Until end)
{
    if (mode == NSRunLoopCommonModes)
        return false;
    auto lock = std::unique_lock(m_mutex);
    auto frame = Frame{modeNamed(mode), m_frame};
    if (!hasSomethingToWaitFor(frame.mode))
        return false;
    m_frame = &frame;
    lock.unlock();

    for (;;) {
        m_alarm.reset();
        const auto hasCalled = turn(frame);
        if (frame.isStopped || (hasCalled && end == Until::OneCall) || !(monotonicNow() < until))
            break;
        lock.lock();
        const auto goesOn = hasSomethingToWaitFor(frame.mode);
        lock.unlock();
        if (!goesOn)
            break;
        wait(frame.mode, until);
    }

    leave(frame);
    return true;
}

void RunLoopCore::leave(const Frame& frame)
{
    {
        const auto lock = std::lock_guard(m_mutex);
        m_frame = frame.outer;
    }
    // It may have been waiting, and has to look again at what this run changed and was told.
    if (frame.outer != nullptr)
        m_alarm.ring();
}

bool RunLoopCore::turn(std::string_view mode)
{
    auto lock = std::unique_lock(m_mutex);
    auto frame = Frame{modeNamed(mode), m_frame};
    m_frame = &frame;
    lock.unlock();
    m_alarm.reset();
    const auto hasDueTimers = !timersDue(frame.mode, monotonicNow()).empty();
    const auto hasCalled = turn(frame);
    leave(frame);
    return hasCalled || hasDueTimers;
}

bool RunLoopCore::hasSomethingToWaitFor(const Mode& mode) const
{
    if (mode.isCommon && (m_isMain || m_firstJob != nullptr))
        return true;
    return !mode.timers.empty() || mode.timersAway > 0 || !mode.blocks.empty()
        || std::any_of(m_watches.begin(), m_watches.end(), [&](const auto& watch) {
               return !watch->isBeingCalled
                   && std::find(watch->modes.begin(), watch->modes.end(), &mode) != watch->modes.end();
           });
}

bool RunLoopCore::turn(Frame& frame)
{
    const auto now = monotonicNow();
    const auto timers = timersDue(frame.mode, now);
    auto hasCalled = callHandedOver(frame);
    for (const auto& timer : timers) {
        if (frame.isStopped)
            break;
        timer->fireIfDue(frame.mode, now);
    }
    hasCalled |= callWatches(frame);
    return hasCalled;
}

bool RunLoopCore::callHandedOver(Frame& frame)
{
    auto& mode = frame.mode;
    auto lock = std::unique_lock(m_mutex);
    const auto jobsBefore = m_jobsHandedOver;
    const auto blocksBefore = m_blocksHandedOver;
    auto hasCalled = false;
    while (!frame.isStopped) {
        const auto* block = mode.blocks.empty() ? nullptr : &mode.blocks.front();
        if (block != nullptr && block->number < blocksBefore
            && (!mode.isCommon || block->jobsBefore <= m_jobsTaken)) {
            auto function = std::move(mode.blocks.front().function);
            mode.blocks.pop_front();
            lock.unlock();
            call(function);
            function = nullptr;
        } else if (mode.isCommon && m_jobsTaken < jobsBefore) {
            auto* job = std::exchange(m_firstJob, m_firstJob->next);
            ++m_jobsTaken;
            lock.unlock();
            job->run();
        } else
            break;
        hasCalled = true;
        lock.lock();
    }
    return hasCalled;
}

std::vector<Ref<Timer>> RunLoopCore::timersDue(Mode& mode, double now)
{
    auto timers = std::vector<Ref<Timer>>();
    const auto lock = std::lock_guard(m_mutex);
    for (const auto& [place, entry] : mode.timers) {
        if (place.deadline > now)
            break;
        timers.push_back(entry.timer);
    }
    return timers;
}

std::vector<std::shared_ptr<DescriptorEntry>> RunLoopCore::watchesIn(Mode& mode) const
{
    auto watches = std::vector<std::shared_ptr<DescriptorEntry>>();
    const auto lock = std::lock_guard(m_mutex);
    for (const auto& watch : m_watches)
        if (!watch->isBeingCalled
            && std::find(watch->modes.begin(), watch->modes.end(), &mode) != watch->modes.end())
            watches.push_back(watch);
    return watches;
}

bool RunLoopCore::callWatches(Frame& frame)
{
    if (frame.isStopped)
        return false;
    const auto watches = watchesIn(frame.mode);
    auto descriptors = descriptorsOf(watches);
    if (markReadable(descriptors) <= 0)
        return false;
    auto hasCalled = false;
    for (std::size_t index = 0; index < watches.size() && !frame.isStopped; ++index) {
        if (descriptors[index].revents == 0)
            continue;
        auto& watch = *watches[index];
        auto lock = std::unique_lock(m_mutex);
        if (!watch.isActive || watch.isBeingCalled)
            continue;
        watch.isBeingCalled = true;
        lock.unlock();
        call(watch.onReadable);
        hasCalled = true;
        auto over = UniqueFunction<void()>();
        lock.lock();
        watch.isBeingCalled = false;
        if (!watch.isActive)
            over = std::move(watch.onReadable);
        lock.unlock();
    }
    return hasCalled;
}

double RunLoopCore::latestMoment(std::string_view mode)
{
    const auto lock = std::lock_guard(m_mutex);
    return latestMomentLocked(modeNamed(mode));
}

double RunLoopCore::latestMomentLocked(const Mode& mode) const
{
    auto latest = std::numeric_limits<double>::infinity();
    for (const auto& [place, entry] : mode.timers) {
        if (place.deadline >= latest)
            break;
        latest = std::min(latest, place.deadline + entry.tolerance);
    }
    return latest;
}

void RunLoopCore::wait(Mode& mode, double until)
{
    {
        const auto lock = std::lock_guard(m_mutex);
        until = std::min(until, latestMomentLocked(mode));
    }
    auto waiter = TurnWaiter(m_alarm, descriptorsOf(watchesIn(mode)));
    // A job that the executor runs meanwhile may run this loop, and wait, again.
    const auto wasWaiting = std::exchange(m_isWaiting, true);
    World::current().executor().wait(waiter, until);
    m_isWaiting = wasWaiting;
}

} // namespace orrenby::detail
