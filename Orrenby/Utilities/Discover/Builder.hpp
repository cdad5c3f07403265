#pragma once

/// @file
/// Products built on a component that is made for each of them.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/TestAccess.hpp"
#include "Orrenby/Utilities/Discover/AbstractOperation.hpp"
#include <functional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Makes a component from a factory argument and builds a product from it.
///
/// A subclass supplies `buildWithComponent`; a call without it ends the process. A builder keeps neither
/// product nor component: whoever needs the component longer holds it, usually the product.
///
/// @snippet Tests/Utilities/Discover/BuilderTests.cpp Writing a builder
///
/// The dynamic build dependency is what only the caller of `build` knows; either of the last two types is
/// `Void` where there is nothing to say. All four may be move-only. What the factory or an override throws
/// passes through.
///
/// Not synchronised. Use from the main thread.
template <class Component, class Product, class DynamicBuildDependency, class FactoryArgument> class Builder {
public:
    /// Makes the component that a product is built on.
    using ComponentFactory = std::function<Component(FactoryArgument)>;

    /// @param componentFactory  Called once for each product. An empty one is a programming error.
    explicit Builder(ComponentFactory componentFactory)
        : m_componentFactory(std::move(componentFactory))
    {
        if (!m_componentFactory)
            detail::emptyComponentFactory();
    }
    Builder(const Builder&) = delete;
    Builder& operator=(const Builder&) = delete;
    virtual ~Builder() = default;

    /// What it was made with.
    const ComponentFactory& componentFactory() const { return m_componentFactory; }

    /// To be supplied: the product on a component at hand. The name tells it from `build`, whose arguments
    /// can have the same types.
    virtual Product buildWithComponent(const Component&, DynamicBuildDependency) const
    {
        detail::abstractOperation(244);
    }

    /// The product on a new component.
    Product build(DynamicBuildDependency dynamicBuildDependency, FactoryArgument factoryArgument) const
    {
        const Component component = m_componentFactory(std::forward<FactoryArgument>(factoryArgument));
        if constexpr (detail::isRef<Component>)
            m_lastComponent = component;
        return buildWithComponent(component, std::forward<DynamicBuildDependency>(dynamicBuildDependency));
    }

private:
    /// The component made last, while something else keeps it. Always empty if `Component` is a value. What
    /// was made before is no property of the builder, hence mutable.
    mutable WeakRef<const void> m_lastComponent;
    const ComponentFactory m_componentFactory;

    friend struct testing::TestAccess;
};

} // namespace orrenby
