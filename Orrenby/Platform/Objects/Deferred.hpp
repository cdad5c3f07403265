#pragma once

/// @file
/// Arguments that are made only when they are needed.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include <concepts>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {
/// Converts to `T` and is no callable that gives one.
template <class Value, class Self, class T>
concept ValueFor = OtherThan<Value, Self> && std::convertible_to<Value, T> && !CallableAs<Value, T>;
} // namespace detail

/// A value, or a callable that makes it.
///
/// Meant as a member of an options aggregate, so that a caller writes either `{.criticalWhen = true}` or
/// `{.criticalWhen = [&] { return expensiveTest(); }}`. Without either it is `T {}`.
///
/// @snippet Tests/Platform/Objects/DeferredTests.cpp Deferring an argument
///
/// The callable runs at each `get()`; whoever promises to evaluate at most once calls it at most once. No
/// allocation for callables of up to four words. Not copyable, not synchronised.
template <class T> class Deferred {
public:
    Deferred() = default;

    /// A callable wins where an argument could be read as either: a lambda without captures also converts to
    /// `bool`.
    template <detail::CallableFor<Deferred, T> F>
    Deferred(F&& make)
        : m_make(std::forward<F>(make))
    {}

    /// A value that is known already.
    template <detail::ValueFor<Deferred, T> Value>
    Deferred(Value&& value)
        : m_value(std::forward<Value>(value))
    {}

    /// The value. Evaluates the callable, if there is one.
    T get() const { return m_make ? m_make() : m_value; }
    T operator()() const { return get(); }

private:
    mutable UniqueFunction<T()> m_make; ///< Mutable: calling is not a change of what is deferred.
    T m_value{};
};

} // namespace orrenby
