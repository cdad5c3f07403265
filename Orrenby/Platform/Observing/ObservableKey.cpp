#include "Orrenby/Platform/Observing/ObservableKey.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Observing/Computed.hpp"
#include "Orrenby/Platform/Observing/ObservingCore.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

ObservableKey::ObservableKey(ObservableObject& owner, const KeyDescription& description) noexcept
    : m_owner(owner)
    , m_earlier(std::exchange(owner.m_keys, this))
    , m_description(description)
{}

ObservableKey::~ObservableKey() = default;

Ref<ObservableObject> ObservableKey::objectValue() const { return nullptr; }

std::span<const std::string_view> ObservableKey::dependencies() const noexcept { return {}; }

void ObservableKey::changeWith(void (*store)(void*), void* context)
{
    if (const auto core = ObservingCore::find(m_owner))
        core->change(*this, store, context);
    else
        store(context);
}

DependencyNames::DependencyNames(std::initializer_list<StaticText> keys)
{
    m_names.reserve(keys.size());
    for (const StaticText key : keys) {
        if (key.view().find('.') != std::string_view::npos)
            fatalError("A computed value depends on keys of its own object", "Platform/Computed", 38);
        m_names.push_back(key);
    }
}
DependencyNames::~DependencyNames() = default;

std::span<const std::string_view> DependencyNames::all() const noexcept { return m_names; }

} // namespace orrenby::inline ORRENBY_ABI::detail
