#pragma once

/// @file
/// Which types stand for a shared object instead of being a value.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Utilities/ObjectIdentifier.hpp"
#include <concepts>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// A handle: copies share what it tells the identity of. Handles of the ground floor tell an address.
template <class T>
concept SharesByHandle = requires(const T& handle)
{
    ObjectIdentifier(handle.sharedIdentity());
};

} // namespace detail

/// Copies of a value of this type stand for the same object: references (`Ref<T>`, also to constant objects),
/// and handles, which are classes with a member `ObjectIdentifier sharedIdentity() const`, or one that gives
/// the address of what they share.
///
/// Weak references, raw pointers and optional references are values.
template <class T>
concept ReferenceType = detail::isRef<std::remove_cv_t<T>> || detail::SharesByHandle<T>;

namespace detail {

/// Whether a `U` can stand for the object that a `T` stands for. Handles of two types never do: a subject and
/// its publisher are two things.
template <class T, class U>
concept MayBeSameObject = (isRef<T> && isRef<U>) || (SharesByHandle<T> && std::same_as<T, U>);

template <ReferenceType T> ObjectIdentifier sharedIdentity(const T& reference) noexcept
{
    if constexpr (SharesByHandle<T>)
        return ObjectIdentifier(reference.sharedIdentity());
    else
        return ObjectIdentifier(reference);
}

} // namespace detail

} // namespace orrenby
