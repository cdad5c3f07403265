#pragma once

/// @file
/// A plugin list that always has a product.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/Discover/PluginList.hpp"
#include <concepts>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A plugin list with a default product, which stands before those of the plugins.
///
/// A subclass supplies `plugins` and `default_`; a call of one that it left out ends the process.
///
/// @snippet Tests/Utilities/Discover/PluginListWithDefaultTests.cpp Writing a plugin list with a default
///
/// Deliberately, `createAll` gives the default and the plugins' products, while `create` gives the default
/// whatever is enabled. Seen as a `PluginList`, its `create` gives the default too.
///
/// Not synchronised. Use from the main thread.
template <class Component, class Product, class State>
class PluginListWithDefault : public PluginList<Component, Product, State> {
    using Base = PluginList<Component, Product, State>;

public:
    using Base::Base;

    /// To be supplied: the product that needs no plugin.
    virtual Product default_(const Component&) const { detail::abstractOperation(209); }

    /// The default, which is asked first, and then the products of the enabled plugins in their order.
    std::vector<Product> createAll(const State& state) const override
    {
        std::vector<Product> products;
        products.push_back(default_(this->component()));
        auto others = Base::createAll(state);
        products.insert(
            products.end(), std::make_move_iterator(others.begin()), std::make_move_iterator(others.end()));
        return products;
    }
    using Base::createAll;

    /// The default. No plugin is asked, and the state makes no difference.
    virtual Product create(const State&) const { return default_(this->component()); }

    /// The default, as `create` of the base class gives it.
    std::optional<Product> createOptional(const State&) const override { return default_(this->component()); }

    /// The same where there is no state: always the default.
    Product create() const requires std::same_as<State, Void> { return default_(this->component()); }
};

} // namespace orrenby
