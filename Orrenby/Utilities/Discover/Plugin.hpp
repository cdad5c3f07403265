#pragma once

/// @file
/// A product that is built only where it is enabled.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Utilities/Discover/AbstractOperation.hpp"
#include <concepts>
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Decides from a component and a state whether it is enabled, and builds its product if it is.
///
/// A subclass supplies `isEnabled` and `build`; a call of one that it left out ends the process. A plugin
/// keeps no product: each `create` decides and builds anew. It has no end of its own, so any way of creating
/// it will do, and a `PluginList` takes it as a `Ref`.
///
/// @snippet Tests/Utilities/Discover/PluginTests.cpp Writing a plugin
///
/// `Component` holds what the product needs: a value, or a `Ref` to share it. `State` is `Void` where nothing
/// varies; then the forms without a state are there too. Products may be move-only. Asking changes no
/// plugin, so all operations are `const`. What an override throws passes through.
///
/// Not synchronised. Use from the main thread.
template <class Component, class Product, class State> class Plugin {
public:
    /// Keeps the component as it is.
    explicit Plugin(Component component)
        : m_component(std::move(component))
    {}
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    virtual ~Plugin() = default;

    /// What it was made with.
    const Component& component() const { return m_component; }

    /// To be supplied. An override hides the form without a state; `using` brings it back.
    virtual bool isEnabled(const Component&, const State&) const { detail::abstractOperation(145); }

    /// To be supplied. Called for an enabled plugin only.
    virtual Product build(const Component&) const { detail::abstractOperation(150); }

    /// The product, or nothing while the plugin is not enabled.
    virtual std::optional<Product> create(const State& state) const
    {
        if (!isEnabled(m_component, state))
            return std::nullopt;
        return build(m_component);
    }

    /// The same where there is no state.
    bool isEnabled(const Component& component) const requires std::same_as<State, Void>
    {
        return isEnabled(component, Void());
    }

    /// The same where there is no state.
    std::optional<Product> create() const requires std::same_as<State, Void> { return create(Void()); }

private:
    const Component m_component;
};

} // namespace orrenby
