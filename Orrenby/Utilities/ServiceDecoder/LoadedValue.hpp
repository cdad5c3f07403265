#pragma once

/// @file
/// What callables take that wait for a service. Not in the umbrella header: part of the service decoder.

#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

template <class F, class T>
concept CallableWithLoaded = std::invocable<F&, T>;

template <class F> struct OneParameter {};
template <class R, class T> struct OneParameter<R (*)(T)> {
    using type = T;
};
template <class R, class T> struct OneParameter<R (*)(T) noexcept> : OneParameter<R (*)(T)> {};
template <class R, class F, class T> struct OneParameter<R (F::*)(T)> : OneParameter<R (*)(T)> {};
template <class R, class F, class T> struct OneParameter<R (F::*)(T) const> : OneParameter<R (*)(T)> {};
template <class R, class F, class T> struct OneParameter<R (F::*)(T) noexcept> : OneParameter<R (*)(T)> {};
template <class R, class F, class T>
struct OneParameter<R (F::*)(T) const noexcept> : OneParameter<R (*)(T)> {};

/// A function, or an object with one call operator that is no template.
template <class F> struct ParameterOf : OneParameter<F> {};
template <class F>
    requires requires { &F::operator(); }
struct ParameterOf<F> : OneParameter<decltype(&F::operator())> {};

/// What a callable takes that has one parameter, which says what is decoded.
template <class F> using LoadedBy = std::remove_cvref_t<typename ParameterOf<F>::type>;

template <class F>
concept CallableWithOne = requires
{
    typename LoadedBy<F>;
}
&&CallableWithLoaded<F, LoadedBy<F>>;

} // namespace orrenby::inline ORRENBY_ABI::detail
