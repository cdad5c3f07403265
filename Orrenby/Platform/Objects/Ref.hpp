#pragma once

/// @file
/// How objects are held.

#include "Orrenby/Platform/Export.hpp"
#include <memory>

namespace orrenby::inline ORRENBY_ABI {

/// Shares the ownership of an object. An empty one refers to nothing.
template <class T> using Ref = std::shared_ptr<T>;

/// Refers to an object without keeping it alive.
template <class T> using WeakRef = std::weak_ptr<T>;

namespace detail {

template <class T> inline constexpr bool isRef = false;
template <class T> inline constexpr bool isRef<Ref<T>> = true;

} // namespace detail

/// Whether both refer to the very same object, through whatever interface each of them sees it. Two empty
/// ones are the same.
template <class A, class B> bool isSameObject(const A* first, const B* second) noexcept
{
    return dynamic_cast<const void*>(first) == dynamic_cast<const void*>(second);
}

/// The same for what two references hold.
template <class A, class B> bool isSameObject(const Ref<A>& first, const Ref<B>& second) noexcept
{
    return isSameObject(first.get(), second.get());
}

} // namespace orrenby
