#include "Orrenby/Platform/Engines/Ground/CleanUps.hpp"

#include <mutex>

namespace orrenby::inline ORRENBY_ABI::detail {

void CleanUps::add(const std::weak_ptr<CleanUps>& cleanUps, Action action) noexcept
{
    const auto owned = cleanUps.lock();
    if (!owned || !action)
        return;
    const auto lock = std::lock_guard(owned->m_mutex);
    owned->m_actions.push_back(std::move(action));
}

void CleanUps::run() noexcept
{
    auto actions = [this] {
        const auto lock = std::lock_guard(m_mutex);
        return std::exchange(m_actions, {});
    }();
    for (auto& action : actions)
        action();
}

} // namespace orrenby::detail
