#include "Orrenby/Testing/VirtualClock.hpp"

#include <utility>

namespace orrenby::inline ORRENBY_ABI::testing {

void VirtualClock::addObserver(std::weak_ptr<Observer> observer)
{
    const auto lock = std::lock_guard(m_mutex);
    std::erase_if(m_observers, [](const auto& each) { return each.expired(); });
    m_observers.push_back(std::move(observer));
}

void VirtualClock::moveTo(double elapsed)
{
    if (!(elapsed > m_elapsed))
        return;
    m_elapsed = elapsed;
    auto lock = std::unique_lock(m_mutex);
    const auto observers = m_observers;
    lock.unlock();
    for (const auto& observer : observers)
        if (const auto strong = observer.lock())
            strong->clockDidChange();
}

} // namespace orrenby::testing
