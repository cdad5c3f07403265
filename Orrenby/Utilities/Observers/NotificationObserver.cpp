#include "Orrenby/Utilities/Observers/NotificationObserver.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

NotificationObserver::NotificationObserver(Ref<NotificationCenter> notificationCenter)
    : m_notificationCenter(std::move(notificationCenter))
{
    if (!m_notificationCenter)
        fatalError("Empty reference in place of a notification center", "Utilities/NotificationObserver", 14);
}

NotificationObserver::~NotificationObserver()
{
    unobserveAll();
    m_notificationCenter.reset();
}

Ref<NotificationToken> NotificationObserver::observe(
    const NotificationOptions& options, NotificationCenter::Callback callback, TraceSite site)
{
    m_observers.push_back(m_notificationCenter->addObserver(options, std::move(callback), site));
    return m_observers.back();
}

void NotificationObserver::unobserve(const Ref<NotificationToken>& token, TraceSite site)
{
    const auto position = std::find(m_observers.begin(), m_observers.end(), token);
    if (position == m_observers.end())
        return;
    const auto removed = std::move(*position);
    m_observers.erase(position);
    m_notificationCenter->removeObserver(removed, site);
}

void NotificationObserver::unobserveAll()
{
    // What a removed callback held may register again when it is let go; that must not outlive this either.
    while (!m_observers.empty())
        for (const auto& token : std::exchange(m_observers, {}))
            m_notificationCenter->removeObserver(token);
}

} // namespace orrenby
