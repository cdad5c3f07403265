#include "Orrenby/Platform/Scheduling/Timer.hpp"

#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/RunLoopCore.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include "Orrenby/Platform/World/World.hpp"
#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <span>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr auto infinity = std::numeric_limits<double>::infinity();

constexpr double shortestInterval = 0.0001;

double monotonicNow() { return World::current().clock().monotonicSeconds(); }

/// Also for what is no number.
double atLeastZero(double seconds) { return seconds > 0 ? seconds : 0; }

} // namespace

Timer::Timer(Key, double seconds, bool repeats, TimerOptions options, Block block)
    : m_interval(seconds > 0 ? seconds : shortestInterval)
    , m_repeats(repeats)
    , m_block(std::move(block))
    , m_userInfo(std::move(options.userInfo))
    , m_anchor(monotonicNow())
    , m_anchorDate(Date::now())
    , m_deadline(m_anchor + m_interval)
    , m_fireDate(m_anchorDate + m_interval)
{
    setTolerance(options.tolerance);
}

Timer::~Timer() = default;

Ref<Timer> Timer::timerWithTimeInterval(double seconds, bool repeats, Block block)
{
    return timerWithTimeInterval(seconds, repeats, {}, std::move(block));
}

Ref<Timer> Timer::timerWithTimeInterval(double seconds, bool repeats, TimerOptions options, Block block)
{
    return std::make_shared<Timer>(Key(), seconds, repeats, std::move(options), std::move(block));
}

Ref<Timer> Timer::scheduledTimerWithTimeInterval(
    double seconds, bool repeats, TimerOptions options, Block block, TraceSite site)
{
    auto timer = timerWithTimeInterval(seconds, repeats, std::move(options), std::move(block));
    RunLoop::current().addTimer(timer, NSDefaultRunLoopMode, site);
    return timer;
}

void Timer::add(const std::shared_ptr<detail::RunLoopCore>& loop, std::string_view mode)
{
    const auto lock = std::lock_guard(m_mutex);
    if (!m_isValid || (!m_modes.empty() && m_loop.lock() != loop))
        return;
    if (m_modes.empty()) {
        m_loop = loop;
        m_sequence = loop->nextSequence();
    }
    for (auto* each : loop->modesNamed(mode))
        if (std::find(m_modes.begin(), m_modes.end(), each) == m_modes.end())
            m_modes.push_back(each);
    if (!m_isFiring && !loop->insert(shared_from_this())) {
        m_modes.clear();
        m_loop.reset();
    }
}

void Timer::fireIfDue(const detail::RunLoopModeState& mode, double now)
{
    {
        const auto lock = std::lock_guard(m_mutex);
        if (!m_isValid || m_isFiring || m_deadline > now
            || std::find(m_modes.begin(), m_modes.end(), &mode) == m_modes.end())
            return;
        beginFiring();
    }
    callBlock();
    finishFiring(true);
}

void Timer::fire()
{
    const auto self = shared_from_this(); // the loop lets go of it meanwhile
    {
        const auto lock = std::lock_guard(m_mutex);
        if (!m_isValid || m_isFiring)
            return;
        beginFiring();
    }
    callBlock();
    finishFiring(false);
}

void Timer::beginFiring()
{
    m_isFiring = true;
    m_wasMoved = false;
    const auto loop = m_loop.lock();
    if (!loop)
        return;
    if (!loop->isCurrent()) {
        m_modesAway = m_modes.size();
        loop->markAway(m_modes, +1);
    }
    loop->remove(*this);
}

void Timer::callBlock() noexcept
{
    if (m_block)
        m_block(*this);
}

void Timer::finishFiring(bool isOnSchedule)
{
    auto block = Block();
    auto userInfo = Any();
    const auto lock = std::lock_guard(m_mutex);
    m_isFiring = false;
    if (!m_repeats)
        m_isValid = false;
    if (m_isValid && isOnSchedule && !m_wasMoved)
        moveOn(monotonicNow());
    const auto loop = m_loop.lock();
    if (m_isValid && !m_modes.empty())
        m_isValid = loop && loop->insert(shared_from_this());
    const auto modesAway = std::exchange(m_modesAway, 0);
    if (loop && modesAway > 0)
        loop->markAway(std::span(m_modes).first(modesAway), -1);
    if (!m_isValid) {
        m_modes.clear();
        block = std::move(m_block);
        userInfo = std::exchange(m_userInfo, Any());
    }
}

void Timer::moveOn(double now)
{
    // Beyond this, moments would no longer be told apart, or there is no number of intervals at all.
    constexpr auto mostMultiples = 1e15;
    auto multiple = m_multiple + 1;
    if (m_anchor + multiple * m_interval <= now) {
        multiple = std::floor((now - m_anchor) / m_interval) + 1;
        // The quotient may have been rounded either way.
        if (multiple - 1 > m_multiple && m_anchor + (multiple - 1) * m_interval > now)
            --multiple;
        if (m_anchor + multiple * m_interval <= now)
            ++multiple;
    }
    if (!(multiple < mostMultiples) || std::isinf(m_anchor)) {
        m_anchor = now;
        m_anchorDate = Date::now();
        multiple = 1;
    }
    m_multiple = multiple;
    m_deadline = std::max(m_anchor + multiple * m_interval, std::nextafter(now, infinity));
    m_fireDate = m_anchorDate + multiple * m_interval;
}

void Timer::invalidate()
{
    const auto self = shared_from_this(); // the loop lets go of it meanwhile
    auto block = Block();
    auto userInfo = Any();
    const auto lock = std::lock_guard(m_mutex);
    if (!m_isValid)
        return;
    m_isValid = false;
    userInfo = std::exchange(m_userInfo, Any());
    // While it fires the loop has let go of it already, and the block is released when it has returned.
    if (m_isFiring)
        return;
    if (const auto loop = m_loop.lock())
        loop->remove(*this);
    m_modes.clear();
    block = std::move(m_block);
}

bool Timer::isValid() const
{
    const auto lock = std::lock_guard(m_mutex);
    return m_isValid;
}

Date Timer::fireDate() const
{
    const auto lock = std::lock_guard(m_mutex);
    return m_fireDate;
}

void Timer::setFireDate(Date date)
{
    const auto seconds = date - Date::now();
    const auto now = monotonicNow();
    change([&] {
        m_anchor = std::isnan(seconds) ? now : now + seconds;
        m_anchorDate = std::isnan(seconds) ? Date::now() : date;
        m_multiple = 0;
        m_deadline = m_anchor;
        m_fireDate = m_anchorDate;
        m_wasMoved = true;
    });
}

double Timer::timeInterval() const noexcept { return m_repeats ? m_interval : 0; }

double Timer::tolerance() const
{
    const auto lock = std::lock_guard(m_mutex);
    return m_tolerance;
}

void Timer::setTolerance(double seconds)
{
    change([&] { m_tolerance = std::min(atLeastZero(seconds), m_repeats ? m_interval : infinity); });
}

template <class F> void Timer::change(F&& assign)
{
    const auto lock = std::lock_guard(m_mutex);
    if (!m_isValid)
        return;
    const auto loop = m_isFiring ? nullptr : m_loop.lock();
    if (!loop) {
        assign();
        return;
    }
    const auto deadline = m_deadline;
    assign();
    loop->move(shared_from_this(), deadline);
}

Any Timer::userInfo() const
{
    const auto lock = std::lock_guard(m_mutex);
    return m_userInfo;
}

} // namespace orrenby
