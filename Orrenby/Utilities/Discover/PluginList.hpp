#pragma once

/// @file
/// The products of all enabled plugins.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Utilities/Discover/AbstractOperation.hpp"
#include "Orrenby/Utilities/Discover/Plugin.hpp"
#include <concepts>
#include <optional>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// Names its plugins for a component, and gathers the products of those that are enabled.
///
/// A subclass supplies `plugins`; a call without it ends the process. Nothing is kept between calls: each
/// asks for the plugins once and then every one of them, in order.
///
/// @snippet Tests/Utilities/Discover/PluginListTests.cpp Writing a plugin list
///
/// With `Void` as the state the forms without a state are there too. Products may be move-only. An empty
/// reference among the plugins is a programming error. What an override throws passes through.
///
/// Not synchronised. Use from the main thread.
template <class Component, class Product, class State> class PluginList {
public:
    /// What it offers, in order.
    using Plugins = std::vector<Ref<Plugin<Component, Product, State>>>;

    /// Keeps the component as it is, and asks for no plugin yet.
    explicit PluginList(Component component)
        : m_component(std::move(component))
    {}
    PluginList(const PluginList&) = delete;
    PluginList& operator=(const PluginList&) = delete;
    virtual ~PluginList() = default;

    /// What it was made with.
    const Component& component() const { return m_component; }

    /// To be supplied: the plugins in the order of their products.
    virtual Plugins plugins(const Component&) const { detail::abstractOperation(182); }

    /// The products of the enabled plugins, in the order of the plugins.
    ///
    /// An override hides the form without a state; `using` brings it back.
    virtual std::vector<Product> createAll(const State& state) const
    {
        std::vector<Product> products;
        for (const auto& plugin : plugins(m_component)) {
            if (!plugin)
                detail::emptyPlugin();
            if (auto product = plugin->create(state))
                products.push_back(*std::move(product));
        }
        return products;
    }

    /// The product of the first enabled plugin, or nothing if none is enabled. It costs as much as
    /// `createAll`: all plugins are asked, and all enabled ones build.
    std::optional<Product> create(const State& state) const { return createOptional(state); }

    /// What `create` does, for a subclass that does it in another way.
    virtual std::optional<Product> createOptional(const State& state) const
    {
        auto products = createAll(state);
        if (products.empty())
            return std::nullopt;
        return std::move(products.front());
    }

    /// The same where there is no state.
    std::vector<Product> createAll() const requires std::same_as<State, Void> { return createAll(Void()); }

    /// The same where there is no state.
    std::optional<Product> create() const requires std::same_as<State, Void> { return create(Void()); }

private:
    const Component m_component;
};

} // namespace orrenby
