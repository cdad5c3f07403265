#pragma once

/// @file
/// Values that are computed from others of their object.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/StaticText.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Observing/KeyName.hpp"
#include "Orrenby/Platform/Observing/ObservableKey.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include <initializer_list>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// The keys that a computed value names. Dotted ones are a programming error.
class ORRENBY_EXPORT DependencyNames {
public:
    explicit DependencyNames(std::initializer_list<StaticText> keys);
    DependencyNames(const DependencyNames&) = delete;
    DependencyNames& operator=(const DependencyNames&) = delete;
    ~DependencyNames();

    std::span<const std::string_view> all() const noexcept;

private:
    std::vector<std::string_view> m_names;
};

} // namespace detail

/// A value that is computed whenever it is read, and changes together with what it is computed from.
///
/// @snippet Tests/Platform/Observing/ComputedTests.cpp Computing a value from others
///
/// Its observers are told of every change of a key that it depends on, directly or through other computed
/// values. These are keys of the same object, not paths; a circle among them does no harm. What nobody names
/// can still be reported with `willChangeValue` and `didChangeValue`.
///
/// Nothing is cached. Not synchronised.
template <typename T, KeyName Name> class Computed final : public detail::ObservableKey {
public:
    /// What it computes.
    using Value = T;

    /// @param compute    Called for each read, also while telling observers; usually captures `this`.
    /// @param dependsOn  The keys whose changes change this value.
    Computed(ObservableObject& owner, UniqueFunction<T()> compute,
        std::initializer_list<StaticText> dependsOn = {})
        : detail::ObservableKey(owner, detail::keyDescription<Name>)
        , m_compute(std::move(compute))
        , m_dependencies(dependsOn)
    {}

    /// Computes the value anew.
    T get() const { return m_compute(); }
    operator T() const { return m_compute(); }

private:
    Any anyValue() const override { return detail::observedValue(m_compute()); }
    Ref<ObservableObject> objectValue() const override { return detail::nextObject(m_compute()); }
    std::span<const std::string_view> dependencies() const noexcept override { return m_dependencies.all(); }

    mutable UniqueFunction<T()> m_compute;
    detail::DependencyNames m_dependencies;
};

} // namespace orrenby
