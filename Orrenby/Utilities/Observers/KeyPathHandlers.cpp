#include "Orrenby/Utilities/Observers/KeyPathHandlers.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::string_view source = "Utilities/KeyPathObserver";

template <typename Handlers> auto find(Handlers& handlers, std::string_view keyPath)
{
    return std::find_if(
        handlers.begin(), handlers.end(), [&](const auto& entry) { return entry.first == keyPath; });
}

} // namespace

KeyPathHandlers::KeyPathHandlers(Ref<ObservableObject> object)
    : m_object(std::move(object))
{
    if (m_object == nullptr)
        fatalError("A key-path observer needs an object to observe", source);
}

KeyPathHandlers::KeyPathHandlers()
{
    fatalError("Use of unimplemented initializer 'init()' for class 'Orrenby.KeyPathObserver'", source);
}

Ref<KeyPathHandlers> KeyPathHandlers::self()
{
    auto self = weak_from_this().lock();
    if (self == nullptr)
        fatalError("A key-path observer observes only while a Ref holds it", source);
    return self;
}

void KeyPathHandlers::observe(std::string_view keyPath, Handler handler, TraceSite site)
{
    auto shared = std::make_shared<Handler>(std::move(handler));
    if (const auto known = find(m_handlers, keyPath); known != m_handlers.end())
        known->second.swap(shared);
    else
        m_handlers.emplace_back(keyPath, std::move(shared));
    m_object->addObserver(self(), keyPath, {.new_ = true, .old = true}, site);
}

void KeyPathHandlers::unobserve(std::string_view keyPath, TraceSite site)
{
    m_object->removeObserver(*this, keyPath, site);
    const auto known = find(m_handlers, keyPath);
    if (known == m_handlers.end())
        return;
    // What the handler holds goes away when the list is whole again.
    const auto handler = std::move(known->second);
    m_handlers.erase(known);
}

void KeyPathHandlers::unobserveAll(TraceSite site)
{
    std::vector<std::string> keyPaths;
    for (const auto& [keyPath, handler] : m_handlers)
        keyPaths.push_back(keyPath);
    for (const auto& keyPath : keyPaths)
        unobserve(keyPath, site);
}

void KeyPathHandlers::observeValue(
    const std::string& keyPath, ObservableObject&, const KeyValueChange& change)
{
    const auto known = find(m_handlers, keyPath);
    if (known == m_handlers.end())
        return;
    const auto handler = known->second;
    (*handler)(change);
}

void KeyPathHandlers::release() noexcept
{
    unobserveAll();
    m_handlers.clear();
    m_object.reset();
}

} // namespace orrenby::inline ORRENBY_ABI::detail
