#include "Orrenby/Platform/Observing/PathRegistration.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Platform/Observing/ObservingCore.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

std::vector<std::string_view> keysOfPath(std::string_view keyPath)
{
    std::vector<std::string_view> keys;
    for (;;) {
        const std::size_t dot = keyPath.find('.');
        if (dot == 0 || keyPath.empty())
            return {};
        keys.push_back(keyPath.substr(0, dot));
        if (dot == std::string_view::npos)
            return keys;
        keyPath.remove_prefix(dot + 1);
    }
}

std::optional<Any> valueOfPath(const ObservableObject& object, std::span<const std::string_view> keys)
{
    const ObservableObject* current = &object;
    Ref<ObservableObject> holder;
    for (; keys.size() > 1; keys = keys.subspan(1)) {
        holder = ObservingCore::nextObject(*current, keys.front());
        if (!holder)
            return std::nullopt;
        current = holder.get();
    }
    return current->valueForKey(keys.front());
}

PathRegistration::PathRegistration(const Ref<ObservingCore>& root, const Ref<KeyValueObserver>& observer,
    std::string_view keyPath, ObservingOptions options)
    : m_observer(observer)
    , m_identity(observer.get())
    , m_root(root)
    , m_keyPath(keyPath)
    , m_keys(keysOfPath(m_keyPath))
    , m_options(options)
{
    if (m_keys.size() > 1)
        m_linked.resize(m_keys.size() - 1);
}

bool PathRegistration::leadsThrough(std::size_t level, const ObservingCore& core) const
{
    if (level == 0)
        return true;
    const std::lock_guard lock(m_mutex);
    return m_linked[level - 1].get() == &core;
}

void PathRegistration::follow(std::size_t level, ObservableObject& object)
{
    ObservableObject* current = &object;
    // Keeps `current` alive; the object at `level` is kept by the caller.
    Ref<ObservableObject> holder;
    for (; !isEndAt(level); ++level) {
        auto next = current != nullptr ? ObservingCore::nextObject(*current, m_keys[level]) : nullptr;
        if (!install(level + 1, next.get()))
            return;
        current = next.get();
        holder = std::move(next);
    }
}

bool PathRegistration::install(std::size_t level, ObservableObject* object)
{
    auto core = object != nullptr ? ObservingCore::of(*object) : nullptr;
    const std::lock_guard lock(m_mutex);
    if (!isActive())
        return false;
    auto& linked = m_linked[level - 1];
    if (linked != core) {
        if (linked)
            linked->detach(*this, level);
        if (core)
            core->attach(shared_from_this(), level);
        linked = std::move(core);
    }
    return true;
}

void PathRegistration::end()
{
    m_isActive.store(false, std::memory_order_release);
    std::vector<Ref<ObservingCore>> linked;
    {
        // Whoever installs a link now either came before, and its link is found here, or sees the end.
        const std::lock_guard lock(m_mutex);
        linked = std::exchange(m_linked, std::vector<Ref<ObservingCore>>(m_linked.size()));
    }
    for (std::size_t index = 0; index < linked.size(); ++index)
        if (linked[index])
            linked[index]->detach(*this, index + 1);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
