#include "Orrenby/Platform/World/Signal.hpp"

#include "Orrenby/Platform/World/World.hpp"
#include <chrono>
#include <limits>

namespace orrenby::inline ORRENBY_ABI::detail {

void Signal::set() noexcept
{
    // Told with the lock held: who waits could otherwise see the event and be gone before it is told.
    const auto lock = std::lock_guard(m_mutex);
    m_isSet = true;
    m_change.notify_all();
}

void Signal::wait() noexcept
{
    while (!isSignalled())
        World::current().executor().wait(*this, std::numeric_limits<double>::infinity());
}

bool Signal::isSignalled() const noexcept
{
    const auto lock = std::lock_guard(m_mutex);
    return m_isSet;
}

void Signal::block(double seconds) noexcept
{
    constexpr auto longest = 86400.0; // clocks do not know infinity
    auto lock = std::unique_lock(m_mutex);
    if (!m_isSet)
        m_change.wait_for(lock, std::chrono::duration<double>(seconds < longest ? seconds : longest));
}

} // namespace orrenby::detail
