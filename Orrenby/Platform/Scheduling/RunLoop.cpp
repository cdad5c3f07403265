#include "Orrenby/Platform/Scheduling/RunLoop.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Scheduling/RunLoopCore.hpp"
#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include "Orrenby/Platform/Scheduling/Timer.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <cmath>
#include <limits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

using detail::RunLoopCore;

namespace {

constexpr auto infinity = std::numeric_limits<double>::infinity();

double monotonicMoment(double secondsFromNow)
{
    if (std::isnan(secondsFromNow))
        return -infinity;
    return World::current().clock().monotonicSeconds() + secondsFromNow;
}

/// Outlives the thread's loop, which is destroyed like its other variables.
constinit thread_local bool hasLoopEnded = false;

} // namespace

RunLoop::RunLoop(bool isMain)
    : m_core(std::make_shared<RunLoopCore>(isMain))
{}

RunLoop::~RunLoop() { m_core->close(); }

RunLoop& RunLoop::main()
{
    static auto& loop = *new RunLoop(true);
    return loop;
}

RunLoop& RunLoop::current()
{
    struct End {
        ~End() { hasLoopEnded = true; }
    };
    struct Own {
        End end; // after that of the loop
        RunLoop loop{false};
    };
    if (Thread::isMainThread())
        return main();
    if (hasLoopEnded)
        fatalError("Use of a run loop after the end of its thread", "Platform/Scheduling/RunLoop", 57);
    thread_local Own own;
    return own.loop;
}

bool RunLoop::isCurrent() const noexcept { return m_core->isCurrent(); }

void RunLoop::execute(Job& job) { m_core->execute(job); }

void RunLoop::perform(UniqueFunction<void()> block, std::string_view mode, [[maybe_unused]] TraceSite site)
{
    Trace::report(Trace::Kind::Schedule, "RunLoop", site);
    m_core->perform(std::move(block), mode);
}

void RunLoop::addTimer(const Ref<Timer>& timer, std::string_view mode, [[maybe_unused]] TraceSite site)
{
    Trace::report(Trace::Kind::Schedule, "Timer", site);
    if (timer)
        timer->add(std::shared_ptr(m_core), mode); // a copy: firing it may end the loop's thread
}

DescriptorWatch RunLoop::watch(
    int descriptor, std::string_view mode, UniqueFunction<void()> onReadable, [[maybe_unused]] TraceSite site)
{
    Trace::report(Trace::Kind::Attach, "DescriptorWatch", site);
    return m_core->watch(descriptor, mode, std::move(onReadable));
}

bool RunLoop::run(std::string_view mode, Date until)
{
    requireOwnThread();
    return m_core->run(mode, monotonicMoment(until - Date::now()), RunLoopCore::Until::OneCall);
}

void RunLoop::runUntil(Date until) { runFor(until - Date::now()); }

void RunLoop::runFor(double seconds)
{
    requireOwnThread();
    m_core->run(NSDefaultRunLoopMode, monotonicMoment(seconds), RunLoopCore::Until::TheEnd);
}

void RunLoop::run() { runFor(infinity); }

void RunLoop::stop() { m_core->stop(); }

std::optional<std::string> RunLoop::currentMode() const { return m_core->currentMode(); }

std::optional<Date> RunLoop::nextFireDate(std::string_view mode) const { return m_core->nextFireDate(mode); }

bool RunLoop::turn(std::string_view mode) { return m_core->turn(mode); }
double RunLoop::latestMoment(std::string_view mode) const { return m_core->latestMoment(mode); }
void RunLoop::discardAll() { m_core->discardAll(); }

void RunLoop::requireOwnThread() const
{
    if (!isCurrent())
        fatalError("A run loop runs on its own thread only", "Platform/Scheduling/RunLoop", 112);
}

} // namespace orrenby
