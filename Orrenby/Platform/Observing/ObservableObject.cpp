#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include "Orrenby/Platform/Observing/KeyName.hpp"
#include "Orrenby/Platform/Observing/ObservableKey.hpp"
#include "Orrenby/Platform/Observing/ObservingCore.hpp"
#include "Orrenby/Platform/Observing/PathRegistration.hpp"
#include <memory>

namespace orrenby::inline ORRENBY_ABI {

KeyValueObserver::~KeyValueObserver() = default;

ObservableObject::~ObservableObject()
{
    if (auto* const core = m_core.load(std::memory_order_acquire))
        core->objectEnds();
}

void ObservableObject::addObserver(const Ref<KeyValueObserver>& observer, std::string_view keyPath,
    ObservingOptions options, [[maybe_unused]] TraceSite site)
{
#ifdef ORRENBY_DIAGNOSTICS
    Trace::report(Trace::Kind::Attach, typeName(*this), site);
#endif
    if (observer == nullptr)
        fatalError("There is no observer to register", "Platform/ObservableObject", 28);
    if (detail::keysOfPath(keyPath).empty())
        fatalError("A key path names keys separated by dots", "Platform/ObservableObject", 33);
    const auto core = detail::ObservingCore::of(*this);
    core->add(std::make_shared<detail::PathRegistration>(core, observer, keyPath, options));

    if (!options.initial)
        return;
    const auto tellInitial = [&]() noexcept {
        KeyValueChange change;
        if (options.new_)
            change.newValue = valueForKeyPath(keyPath);
        observer->observeValue(std::string(keyPath), *this, change);
    };
    tellInitial();
}

void ObservableObject::removeObserver(
    const KeyValueObserver& observer, std::string_view keyPath, [[maybe_unused]] TraceSite site)
{
    const auto core = detail::ObservingCore::find(*this);
    if (!core || !core->remove(observer, keyPath))
        return;
#ifdef ORRENBY_DIAGNOSTICS
    Trace::report(Trace::Kind::Detach, typeName(*this), site);
#endif
}

void ObservableObject::willChangeValue(std::string_view key)
{
    const auto observed = m_observedBits.load(std::memory_order_relaxed);
    if (observed == 0 || (observed & detail::keyBit(key)) == 0)
        return;
    if (const auto core = detail::ObservingCore::find(*this))
        core->willChange(key);
}

void ObservableObject::didChangeValue(std::string_view key)
{
    if (const auto core = detail::ObservingCore::find(*this))
        core->didChange(key);
}

std::optional<Any> ObservableObject::valueForKey(std::string_view key) const
{
    if (const auto* const declared = declaredKey(key))
        return declared->anyValue();
    return valueForUndefinedKey(key);
}

std::optional<Any> ObservableObject::valueForKeyPath(std::string_view keyPath) const
{
    const auto keys = detail::keysOfPath(keyPath);
    return keys.empty() ? std::nullopt : detail::valueOfPath(*this, keys);
}

std::size_t ObservableObject::observerCount() const
{
    const auto core = detail::ObservingCore::find(*this);
    return core ? core->observerCount() : 0;
}

std::optional<Any> ObservableObject::valueForUndefinedKey(std::string_view) const { return std::nullopt; }

const detail::ObservableKey* ObservableObject::declaredKey(std::string_view key) const noexcept
{
    const auto* declared = m_keys;
    while (declared != nullptr && declared->key() != key)
        declared = declared->m_earlier;
    return declared;
}

} // namespace orrenby
